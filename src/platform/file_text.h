#pragma once

#include <string>
#include <string_view>

/// Conversion between the program's texts, UTF-8, and the bytes of its files, Windows-1252.
namespace bellmark {

/// Bytes of a text file as UTF-8. A byte order mark says that they are UTF-16, as some editors and services write their
/// .ini files; all others are Windows-1252. Throws EncodingError for a UTF-16 file with a character that the program's
/// own files could not hold: it would be lost with the next save.
std::string FromFileBytes(std::string_view bytes);

/// A text without the characters missing from the files' code page.
struct StorableText {
    std::string text;
    bool isWhole = true;  ///< nothing had to be left out
};

/// In a line "key=value" the whole value is left out, since part of a path or name would be wrong; in any other line
/// the character becomes "?". This concerns only names of files and folders: typed text is refused when it cannot be
/// stored.
StorableText WithoutUnstorable(std::string_view text);

}  // namespace bellmark
