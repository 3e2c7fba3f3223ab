#pragma once

#include <optional>

#include "pddx/pddx_file.h"
#include "platform/files.h"

namespace bellmark {

class ProfileStrings;

struct PDDXReadResult {
    /// False when the file cannot be opened; the document was then read as from an empty file.
    bool readable = false;
    /// "NumberOfDeflectionSensors" of the document after reading, when it is a number above 0.
    std::optional<int> numberOfSensors;
};

/// Fills the document from a file, key by key. Only keys named by the document's template and by the counts of test
/// locations, drops and calibrations are read. A value is cut at 254 characters.
///
/// keepExisting false: a key missing from the file becomes empty, and locations, drops and history entries get the
/// numbers that they have in the file. keepExisting true: a missing key keeps its value, and locations, drops and
/// history entries are appended after those of the document, whose counts rise.
///
/// Never fails: what cannot be read is empty, and callers judge the values. Entries that a count announces but the file
/// does not hold come out empty. Their number is limited to the entries in the file plus 1000, so that a damaged count
/// costs neither time nor memory.
PDDXReadResult ReadPDDXFile(const FileSystem& files, const Path& path, PDDXFile& document, bool keepExisting);

/// The same from strings already read.
PDDXReadResult ReadPDDX(const ProfileStrings& strings, PDDXFile& document, bool keepExisting);

/// Reads one element by its handle and that of its section. With keepExisting a key missing from the file leaves the
/// value unchanged, and the three counts are not read, since appending raises them.
void ReadPDDXElement(const ProfileStrings& strings, PDDXElement& element, bool keepExisting);

}  // namespace bellmark
