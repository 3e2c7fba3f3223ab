#include <gtest/gtest.h>

#include <QApplication>

#include "screens/look.h"

/// The C library keeps its list of places where locales lie for good when LOCPATH is set and a library asks for one
/// category of the language; a leak checker must not hold that against the screens. The
/// function has the underscores in front only where the library's debug symbols are installed.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:__argz_add_sep\nleak:argz_add_sep\n";
}

int main(int count, char** words) {
    testing::InitGoogleTest(&count, words);
    QApplication application(count, words);
    QApplication::setQuitOnLastWindowClosed(false);
    bellmark::ApplyLook();
    return RUN_ALL_TESTS();
}
