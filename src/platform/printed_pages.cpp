#include "platform/printed_pages.h"

#include <utility>

#include "platform/machine.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr std::size_t printedWidth = 87;
constexpr std::size_t emptyLinesOnTop = 8;
constexpr const char* continuationIndent = "      ";

/// Takes one printed line off the front of a long one: up to the last blank that fits, or as much as fits without one.
std::string TakePrintedLine(std::string& rest) {
    if (CharacterCount(rest) <= printedWidth) return std::exchange(rest, {});
    std::string fitting = FirstCharacters(rest, printedWidth);
    const auto blank = fitting.find_last_of(' ');
    const bool canBreak = blank != std::string::npos && fitting.find_first_not_of(' ') < blank;
    if (canBreak) fitting.resize(blank);
    rest = continuationIndent + rest.substr(fitting.size() + (canBreak ? 1 : 0));
    return fitting;
}

}  // namespace

std::vector<std::vector<std::string>> PrinterPages(std::string_view text) {
    std::vector<std::vector<std::string>> pages;
    for (const auto& pageText : Split(text, '\f')) {
        std::vector<std::string> page(emptyLinesOnTop);
        for (const auto line : SplitLines(pageText)) {
            std::string rest(line);
            do page.push_back(TakePrintedLine(rest));
            while (!rest.empty());
        }
        pages.push_back(std::move(page));
    }
    // A form feed at the end of the text starts no further page.
    if (pages.size() > 1 && pages.back().size() == emptyLinesOnTop) pages.pop_back();
    return pages;
}

void PrintTextFile(const FileSystem& files, Printer& printer, const Path& file) {
    printer.Print(PathText(file.filename()), PrinterPages(ReadTextFile(files, file)));
}

}  // namespace bellmark
