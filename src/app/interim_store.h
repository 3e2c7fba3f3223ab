#pragma once

#include <string>
#include <vector>

#include "platform/files.h"

/// The run on disk, so that it can go on after a restart: one file in the program folder, and a copy in its data
/// folder.
namespace bellmark {

class Program;

/// Writes the run in hand. Each of the two files is replaced in one step. A failure is shown in a box and leaves the
/// old file and the run in memory as they are; then it returns false. Without a name of the store nothing is written.
bool SaveInterimCalibration(Program& program);

/// Loads the run from its file in place of the record in hand: first the center's configuration of a review, then the
/// FWD, then the run itself. The caller then updates the screens. False, with a box that says why, when the file cannot
/// be read; the record is then a fresh one.
bool LoadInterimCalibration(Program& program);

/// Moves the file and the data folder of the run in hand to the removed runs. Each is moved if possible: a locked file
/// prevents neither moving the other nor ending the program. Failures are logged.
void RemoveInterimCalibration(Program& program);

/// What a list shows of an interim calibration.
struct InterimCalibration {
    std::string fileName;
    std::string endDate;  ///< empty: it cannot be opened
    std::string owner;
    std::string serialNumber;
    bool fromCopy = false;    ///< its file is gone or damaged; all this comes from the whole copy in its data folder
    std::string fileEndDate;  ///< of the file itself, damaged or not; empty: it cannot be opened
    std::string trials;       ///< counted ones: "2 load cell, 1 reference"; "none"
    std::string lastChange;   ///< day and time of the last save
};

InterimCalibration ReadInterim(const FileSystem& files, const Path& programFolder, const std::string& fileName);

/// All interim calibrations of the program folder, including those of which only the copy is left.
std::vector<InterimCalibration> InterimCalibrations(const FileSystem& files, const Path& programFolder);

/// Puts the copy in the data folder in place of the file. Throws FileError.
void RestoreInterimFromCopy(FileSystem& files, const Path& programFolder, const std::string& fileName);

/// The name without its extension of four characters.
std::string InterimFolderOf(const std::string& fileName);

}  // namespace bellmark
