#include "setup/folder_tree.h"

#include <array>
#include <string_view>

#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr std::size_t longestName = 120;

/// Names of the parent, grandparent and great-grandparent, up to the drive's root, which has none.
std::array<std::string, 3> NamesAbove(const Path& driveRoot, Path folder) {
    std::array<std::string, 3> names;
    for (auto& name : names) {
        folder = folder.parent_path();
        if (folder == driveRoot || folder == folder.parent_path()) break;
        name = PathText(folder.filename());
    }
    return names;
}

bool IsReserved(const std::string& name) {
    constexpr std::array<std::string_view, 6> devices{"CON", "PRN", "AUX", "NUL", "COM", "LPT"};
    const std::string stem = UpperCase(name.substr(0, name.find('.')));
    for (const auto device : devices) {
        const bool numbered = device == "COM" || device == "LPT";
        if (!numbered && stem == device) return true;
        if (numbered && stem.size() == 4 && StartsWith(stem, device) && stem[3] >= '1' && stem[3] <= '9') return true;
    }
    return false;
}

}  // namespace

FolderLevel LevelOf(const Path& driveRoot, const Path& folder) {
    const auto [parent, grandparent, greatGrandparent] = NamesAbove(driveRoot, folder);
    if (folder == driveRoot || (parent.empty() && grandparent.empty())) return FolderLevel::Improper;
    // The owner's test comes last: where both hold, in a tree within the tree, the deeper level counts.
    if (EqualIgnoringCase(grandparent, calibrationsName) || EqualIgnoringCase(greatGrandparent, bellmarkName)) {
        return FolderLevel::FWD;
    }
    if (EqualIgnoringCase(parent, calibrationsName) || EqualIgnoringCase(grandparent, bellmarkName)) {
        return FolderLevel::Owner;
    }
    return FolderLevel::Other;
}

std::string FolderNameProblem(const std::string& name) {
    if (name.empty() || name == "." || name == "..") return "it is not a name";
    if (name.front() == ' ' || name.back() == ' ') return "it begins or ends with a blank";
    if (name.back() == '.') return "it ends with a point";
    if (CharacterCount(name) > longestName) return "it is longer than " + NumberText(longestName) + " characters";
    if (const auto bad = name.find_first_of("\\/:*?\"<>|"); bad != std::string::npos) {
        return std::string("it holds the character ") + name[bad];
    }
    for (const char c : name) {
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') return "it holds a control character";
    }
    if (IsReserved(name)) return "it is the name of a device";
    return UnstorableCharacter(name);
}

std::string UnstorableCharacter(const std::string& text) {
    try {
        ToWindows1252(text);
        return {};
    } catch (const EncodingError&) {
        return "it holds a character that the program's files cannot hold";
    }
}

Path ExistingSubfolder(const FileSystem& files, const Path& folder, const std::string& name) {
    for (const auto& existing : files.FolderNames(folder)) {
        if (EqualIgnoringCase(existing, name)) return folder / PathFromText(existing);
    }
    return {};
}

}  // namespace bellmark
