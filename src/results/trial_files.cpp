#include "results/trial_files.h"

#include <charconv>

#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

/// The position of the trial's number in a file's name.
struct NumberInName {
    std::size_t first = 0;
    std::size_t length = 0;
    int number = 0;
};

std::optional<NumberInName> NumberAt(const std::string& name, std::size_t first) {
    NumberInName found{first, 0, 0};
    const char* begin = name.data() + first;
    const auto [end, error] = std::from_chars(begin, name.data() + name.size(), found.number);
    if (error != std::errc() || found.number < 1) return {};
    found.length = static_cast<std::size_t>(end - begin);
    return found;
}

std::optional<NumberInName> NumberOfDropFile(const std::string& name, const TrialFileKind& kind) {
    if (kind.dropPrefix.empty() || !StartsWithIgnoringCase(name, kind.dropPrefix)) return {};
    const auto found = NumberAt(name, kind.dropPrefix.size());
    if (!found) return {};
    const auto behind = std::string_view(name).substr(found->first + found->length);
    return StartsWithIgnoringCase(behind, "-H") ? found : std::nullopt;
}

std::optional<NumberInName> NumberOfReport(const std::string& name, const TrialFileKind& kind) {
    const auto point = name.rfind('.');
    if (point == std::string::npos) return {};
    const auto extension = std::string_view(name).substr(point + 1);
    if (!StartsWithIgnoringCase(extension, kind.reportExtension)) return {};
    if (kind.isNumberBeforeExtension) {
        const auto blank = name.rfind(' ', point);
        if (blank == std::string::npos || extension.size() != kind.reportExtension.size()) return {};
        const auto found = NumberAt(name, blank + 1);
        return found && found->first + found->length == point ? found : std::nullopt;
    }
    const auto found = NumberAt(name, point + 1 + kind.reportExtension.size());
    return found && found->first + found->length == name.size() ? found : std::nullopt;
}

std::optional<NumberInName> TrialNumberIn(const std::string& name, const TrialFileKind& kind) {
    const auto drop = NumberOfDropFile(name, kind);
    return drop ? drop : NumberOfReport(name, kind);
}

bool IsMarked(int trial, const TrialMarks& marks) {
    return trial <= static_cast<int>(marks.size()) && marks[static_cast<std::size_t>(trial - 1)];
}

void CopyAll(FileSystem& files, const Path& from, const Path& to) {
    files.CreateFolder(to);
    for (const auto& name : files.FileNames(from)) {
        files.CopyFile(from / PathFromText(name), to / PathFromText(name));
    }
}

void Renumber(FileSystem& files, const Path& folder, const TrialFileKind& kind, const TrialMarks& deleted, int trial) {
    for (const auto& name : files.FileNames(folder)) {
        const auto found = TrialNumberIn(name, kind);
        if (!found || found->number != trial) continue;
        std::string newName = name;
        newName.replace(found->first, found->length, NumberText(NumberAfterDeletion(trial, deleted)));
        if (newName != name) files.Rename(folder / PathFromText(name), folder / PathFromText(newName));
    }
}

void RemoveAndRenumber(FileSystem& files, const Path& folder, const TrialFileKind& kind, const TrialMarks& deleted) {
    for (const auto& name : files.FileNames(folder)) {
        const auto found = TrialNumberIn(name, kind);
        if (found && IsMarked(found->number, deleted)) files.RemoveFile(folder / PathFromText(name));
    }
    // In ascending order: the number that a trial moves to is free by then.
    for (int trial = 1; trial <= static_cast<int>(maxTrials) + 1; ++trial) {
        if (!IsMarked(trial, deleted)) Renumber(files, folder, kind, deleted, trial);
    }
}

void PutBack(FileSystem& files, const Path& folder, const Path& safeCopy) {
    for (const auto& name : files.FileNames(folder)) {
        if (!files.IsFile(safeCopy / PathFromText(name))) files.RemoveFile(folder / PathFromText(name));
    }
    CopyAll(files, safeCopy, folder);
}

}  // namespace

bool IsDropFile(const std::string& name) {
    return NumberOfDropFile(name, loadCellTrialFiles) || NumberOfDropFile(name, referenceTrialFiles);
}

int NumberAfterDeletion(int trial, const TrialMarks& deleted) {
    int number = trial;
    for (int before = 1; before < trial; ++before) number -= IsMarked(before, deleted) ? 1 : 0;
    return number;
}

void DeleteTrialFiles(FileSystem& files, const Path& folder, const Path& safeCopy, const TrialFileKind& kind,
                      const TrialMarks& deleted) {
    CopyAll(files, folder, safeCopy);
    try {
        RemoveAndRenumber(files, folder, kind, deleted);
    } catch (const FileError&) {
        PutBack(files, folder, safeCopy);
        throw;
    }
}

Path FreeSafeCopy(const FileSystem& files, const Path& folder) {
    const Path wanted = folder.parent_path() / "TempInterimDropData";
    Path free = wanted;
    for (int n = 1; files.IsFolder(free); ++n) free = PathFromText(PathText(wanted) + '-' + NumberText(n));
    return free;
}

}  // namespace bellmark
