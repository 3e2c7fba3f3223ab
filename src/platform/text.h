#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Text in memory is UTF-8; text in files is Windows-1252. The two meet only here. Nothing in this header
/// depends on the machine's language.
namespace bellmark {

/// A character missing from the files' code page.
class EncodingError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Adds a character in UTF-8; no half of a pair.
void AppendUtf8(std::string& text, char16_t character);

/// Bytes of a Windows-1252 file as UTF-8. The five bytes without a character (81, 8D, 8F, 90, 9D hexadecimal) become
/// the control characters of the same number, so that every byte comes back unchanged from ToWindows1252.
std::string FromWindows1252(std::string_view bytes);

/// UTF-8 text as bytes of a Windows-1252 file. Throws EncodingError when a character is missing from the code page,
/// naming the first, or when the text is not UTF-8.
std::string ToWindows1252(std::string_view text);

/// The same in the text's own memory, for large texts. The text stays as it is when EncodingError is thrown.
void ConvertToWindows1252(std::string& text);

/// Blanks and tabs taken off both ends.
std::string_view Trim(std::string_view text);

/// Comparison and folding by the letters A to Z alone.
bool EqualIgnoringCase(std::string_view a, std::string_view b);
std::string LowerCase(std::string_view text);
std::string UpperCase(std::string_view text);

bool StartsWith(std::string_view text, std::string_view prefix);
bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix);

/// The parts between separators: n separators give n + 1 parts, an empty text one empty part.
std::vector<std::string> Split(std::string_view text, char separator);

/// Lines that end at CR, LF or both. A last line without an ending counts; an ending at the very end adds no line.
std::vector<std::string_view> SplitLines(std::string_view text);

/// Characters (code points), not bytes.
std::size_t CharacterCount(std::string_view text);

/// The first characters of a text, never cut inside one.
std::string FirstCharacters(std::string_view text, std::size_t count);

/// The text after the last point; the whole text when there is none.
std::string FileExtension(std::string_view path);

std::string ZeroIfEmpty(const std::string& text);  ///< "0" for an empty text

/// The field of a comma-separated list, counted from 1, with the blank that stood before it; empty past the end.
std::string GetListField(int index, std::string_view list);

/// Blanks off both ends, and every run of blanks made one.
std::string CompressBlanks(std::string_view text);

}  // namespace bellmark
