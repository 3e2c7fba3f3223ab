#include "platform/printed_pages.h"

#include <gtest/gtest.h>

namespace bellmark {
namespace {

TEST(PrintedPages, BreaksPrintedLinesAndPages) {
    const std::vector<std::string> top(8);
    const auto page = [&](std::vector<std::string> lines) {
        lines.insert(lines.begin(), top.begin(), top.end());
        return lines;
    };
    using Pages = std::vector<std::vector<std::string>>;
    const std::string wide(87, 'x');
    const std::string continuation(81, 'x');
    EXPECT_EQ(PrinterPages("one\r\n\r\nthree"), Pages({page({"one", "", "three"})}));
    EXPECT_EQ(PrinterPages("a\fb\r\n\f"), Pages({page({"a"}), page({"b"})}));
    EXPECT_EQ(PrinterPages(""), Pages({page({})}));
    EXPECT_EQ(PrinterPages(wide), Pages({page({wide})}));
    EXPECT_EQ(PrinterPages(wide + "yz"), Pages({page({wide, "      yz"})})) << "no blank to break at";
    EXPECT_EQ(PrinterPages(wide + " end?"), Pages({page({wide, "       end?"})}));
    EXPECT_EQ(PrinterPages("word " + wide),
              Pages({page({"word", "      " + continuation, "      " + std::string(6, 'x')})}));
    const std::string micro = std::string(85, 'x') + " \xC2\xB5m";
    EXPECT_EQ(PrinterPages(micro), Pages({page({std::string(85, 'x'), "      \xC2\xB5m"})}))
        << "88 characters, 89 bytes";
}

}  // namespace
}  // namespace bellmark
