#include <gtest/gtest.h>

#include <QApplication>

#include "screens/look.h"

/// The C library keeps its list of locale folders until exit when LOCPATH is set and a library asks for one category of
/// the language. That is not a leak of the screens. The function has leading underscores only where the library's debug
/// symbols are installed.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:__argz_add_sep\nleak:argz_add_sep\n";
}

int main(int count, char** words) {
    testing::InitGoogleTest(&count, words);
    QApplication application(count, words);
    QApplication::setQuitOnLastWindowClosed(false);
    const bellmark::Look look;
    return RUN_ALL_TESTS();
}
