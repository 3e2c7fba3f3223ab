#include "run/paths.h"

#include "platform/text.h"

namespace bellmark {

Path DriveRoot(const Path& programFolder) {
    return programFolder.has_root_name() ? programFolder.root_path() : programFolder;
}

Path CalibrationsFolder(const Path& programFolder) {
    return DriveRoot(programFolder) / bellmarkName / calibrationsName;
}

Path ActualPath(const FileSystem& files, const Path& path) {
    if (files.IsFile(path)) return path;
    const std::string wanted = PathText(path.filename());
    for (const auto& name : files.FileNames(path.parent_path())) {
        if (EqualIgnoringCase(name, wanted)) return path.parent_path() / PathFromText(name);
    }
    return path;
}

std::string FileNameOf(const std::string& text) {
    std::string name = text;
    for (char& character : name) {
        const bool isControl = static_cast<unsigned char>(character) < ' ';
        if (isControl || std::string_view("\\/:*?\"<>|").find(character) != std::string_view::npos) character = '-';
    }
    return name;
}

}  // namespace bellmark
