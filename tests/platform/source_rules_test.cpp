#include <gtest/gtest.h>

#include <fstream>
#include <regex>

#include "platform/files.h"
#include "platform/text.h"

namespace bellmark {
namespace {

// Under a foreign locale these read and write other numbers. The desktop's screens may use their toolkit's ways.
TEST(SourceRules, NothingInTheLogicDependsOnTheLocale) {
    const std::regex forbidden(
        R"(\b(strtod|strtof|strtold|stod|stof|stold|atof|setlocale|setprecision|tolower|toupper)\s*\(|)"
        R"(\bis(alnum|alpha|blank|digit|lower|upper|punct|space|xdigit)\s*\(|)"
        R"(\bto_string\s*\(|#include <locale>|#include <clocale>|"[^"]*%[-+ #0-9.*]*l?[aAeEfFgG]\b)");
    const Path sources = Path(BELLMARK_SOURCE_FOLDER) / "src";
    int filesSeen = 0;
    for (auto entry = std::filesystem::recursive_directory_iterator(sources);
         entry != std::filesystem::recursive_directory_iterator(); ++entry) {
        if (entry->path() == sources / "screens") entry.disable_recursion_pending();
        const Path extension = entry->path().extension();
        if (!entry->is_regular_file() || (extension != ".cpp" && extension != ".h")) continue;
        ++filesSeen;
        std::ifstream file(entry->path());
        int number = 0;
        for (std::string line; std::getline(file, line);) {
            ++number;
            const std::string code = line.substr(0, line.find("//"));
            EXPECT_FALSE(std::regex_search(code, forbidden))
                << PathText(entry->path()) << ':' << number << ": " << line;
        }
    }
    EXPECT_GT(filesSeen, 10);
}

}  // namespace
}  // namespace bellmark
