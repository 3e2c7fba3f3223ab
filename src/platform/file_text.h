#pragma once

#include <string>
#include <string_view>

/// What stands between the program's texts, UTF-8, and the bytes of its files, Windows-1252.
namespace bellmark {

/// Bytes of a text file as UTF-8. A byte order mark says that they are UTF-16, as some editors and services write their
/// .ini files; all others are Windows-1252. Throws EncodingError for a UTF-16 file with a character that the program's
/// own files could not hold: it would be lost with the next save.
std::string FromFileBytes(std::string_view bytes);

/// A text without what the files' code page lacks.
struct StorableText {
    std::string text;
    bool isWhole = true;  ///< nothing had to be left out
};

/// In a line "key=value" the whole value is left out, since half a path or name is a wrong one; in any other line the
/// character becomes "?". Only names of files and folders come here: what is typed is refused when it cannot be stored.
StorableText WithoutUnstorable(std::string_view text);

}  // namespace bellmark
