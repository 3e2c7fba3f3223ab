#pragma once

#include <string>

#include "platform/files.h"
#include "run/paths.h"

/// The tree of owners and FWDs, in which every calibration's results end up. Folder names are the owners' and FWDs'
/// identities.
namespace bellmark {

enum class FolderLevel { Improper, Other, Owner, FWD };

/// The level of a folder, by the names of the folders above it. Improper: the root of the drive, or directly below it.
FolderLevel LevelOf(const Path& driveRoot, const Path& folder);

/// Why a name cannot be a folder's name, in words; empty when it can. The rules are the strictest of all systems, since
/// the tree is carried from one system to another.
std::string FolderNameProblem(const std::string& name);

/// The same for a text that only has to be stored: a folder made by someone else.
std::string UnstorableCharacter(const std::string& text);

/// The existing subfolder of that name without regard to case, or an empty path.
Path ExistingSubfolder(const FileSystem& files, const Path& folder, const std::string& name);

}  // namespace bellmark
