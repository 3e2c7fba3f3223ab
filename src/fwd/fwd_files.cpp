#include "fwd/fwd_files.h"

#include <array>

#include "platform/text.h"

namespace bellmark {

namespace {

struct FileType {
    Make make;
    std::string_view extension;  ///< empty: any other
    int number;
};

constexpr std::array fileTypes{
    FileType{Make::Dynatest, "F25", 1}, FileType{Make::Dynatest, "F20", 2}, FileType{Make::Dynatest, "FWD", 2},
    FileType{Make::Dynatest, "", 1},    FileType{Make::CarlBro, "FWD", 3},  FileType{Make::CarlBro, "TXT", 4},
    FileType{Make::CarlBro, "TST", 4},  FileType{Make::CarlBro, "", 3},     FileType{Make::Jils, "DAT", 6},
    FileType{Make::Jils, "PAR", 7},     FileType{Make::Jils, "CFG", 10},    FileType{Make::Jils, "", 6},
    FileType{Make::Kuab, "FWD", 8},     FileType{Make::Kuab, "INI", 9},     FileType{Make::Kuab, "", 8}};

}  // namespace

const char* DropDataFilter(Make make) {
    switch (make) {
        case Make::Dynatest:
            return "F20 or F25 Files|*.F**|PDDX Files|*.ddx|*.*|All Files";
        case Make::Jils:
            return "DAT Files|*.DAT|PDDX Files|*.ddx|*.*|All Files";
        case Make::CarlBro:
        case Make::Kuab:
            break;
    }
    return "FWD File|*.FWD|PDDX Files|*.ddx|*.*|All Files";
}

int FWDFileType(Make make, std::string_view extension) {
    if (EqualIgnoringCase(extension, "DDX")) return 0;
    for (const auto& type : fileTypes) {
        if (type.make == make && (type.extension.empty() || EqualIgnoringCase(type.extension, extension))) {
            return type.number;
        }
    }
    return 0;
}

const char* ConfigurationFilter(Make make) {
    switch (make) {
        case Make::Dynatest:
            return "F20 or F25 Files|*.F**|PDDX Files|*.ddx|All files|*.*";
        case Make::CarlBro:
            return "HW_INI.TXT File|*.TXT|*.TST File|*.TST|PDDX Files|*.ddx|All files|*.*";
        case Make::Jils:
            return "CFG files|*.cfg|SetUp.Par Files|*.Par|DAT files|*.dat|PDDX Files|*.ddx|All files|*.*";
        case Make::Kuab:
            break;
    }
    return "FVO.INI File|*.INI|PDDX Files|*.ddx|All files|*.*";
}

const char* NextJilsFilter(std::string_view lastExtension) {
    if (EqualIgnoringCase(lastExtension, "cfg")) {
        return "SetUp.Par Files|*.Par|DAT files|*.dat|CFG files|*.cfg|PDDX Files|*.ddx|All files|*.*";
    }
    return "DAT files|*.dat|CFG files|*.cfg|SetUp.Par Files|*.Par|PDDX Files|*.ddx|All files|*.*";
}

}  // namespace bellmark
