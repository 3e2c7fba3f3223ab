#include <gtest/gtest.h>

#include <QApplication>

#include "screens/look.h"

int main(int count, char** words) {
    testing::InitGoogleTest(&count, words);
    QApplication application(count, words);
    QApplication::setQuitOnLastWindowClosed(false);
    bellmark::ApplyLook();
    return RUN_ALL_TESTS();
}
