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

/// Fills the document from a file, key by key: what the document's template and the counts of test locations, drops and
/// calibrations do not name stays unread. A value is cut at 254 characters.
///
/// keepExisting false: a key that the file lacks becomes empty, and locations, drops and history entries get the
/// numbers that they have in the file. keepExisting true: it keeps its value, and locations, drops and history entries
/// are appended behind those of the document, the counts of which rise with them.
///
/// Never fails: what cannot be read is empty, and callers judge the values. Entries that a count announces and the file
/// does not hold come out empty, but no more of them than the file holds entries and 1000 besides, so that a damaged
/// count costs neither time nor memory.
PDDXReadResult ReadPDDXFile(const FileSystem& files, const Path& path, PDDXFile& document, bool keepExisting);

/// The same from what was read already.
PDDXReadResult ReadPDDX(const ProfileStrings& strings, PDDXFile& document, bool keepExisting);

/// Reads one element by its handle and that of its section. With keepExisting a key that the file lacks leaves the
/// value, and the three counts are left alone, since appending counts them up.
void ReadPDDXElement(const ProfileStrings& strings, PDDXElement& element, bool keepExisting);

}  // namespace bellmark
