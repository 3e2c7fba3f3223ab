#include "platform/file_text.h"

#include <algorithm>

#include "platform/text.h"

namespace bellmark {

namespace {

constexpr std::string_view littleEndianMark = "\xFF\xFE";
constexpr std::string_view bigEndianMark = "\xFE\xFF";
constexpr char16_t noCharacter = 0xFFFD;

void AppendUnit(std::string& text, char16_t unit) {
    // Surrogate pairs make characters that the files cannot hold anyway.
    const bool isHalf = unit >= 0xD800 && unit <= 0xDFFF;
    AppendUtf8(text, isHalf ? noCharacter : unit);
}

/// bytes: after the mark. An odd byte at the end is ignored.
std::string FromUtf16(std::string_view bytes, bool isBigEndian) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        AppendUnit(text, static_cast<char16_t>(isBigEndian ? first << 8 | second : second << 8 | first));
    }
    return text;
}

bool IsStorable(std::string_view text) {
    try {
        ToWindows1252(text);
        return true;
    } catch (const EncodingError&) {
        return false;
    }
}

std::string WithQuestionMarks(std::string_view line) {
    std::string text;
    while (!line.empty()) {
        const std::string character = FirstCharacters(line, 1);
        text += IsStorable(character) ? character : "?";
        line.remove_prefix(character.size());
    }
    return text;
}

/// The line up to its equal sign and the blanks after it. A line without a storable key is kept whole, with "?" for
/// each character that cannot be stored.
std::string StorablePart(std::string_view line) {
    const auto equal = line.find('=');
    if (equal == std::string_view::npos || !IsStorable(line.substr(0, equal))) return WithQuestionMarks(line);
    const auto value = std::min(line.find_first_not_of(' ', equal + 1), line.size());
    return std::string(line.substr(0, value));
}

}  // namespace

std::string FromFileBytes(std::string_view bytes) {
    const bool isLittleEndian = StartsWith(bytes, littleEndianMark);
    const bool isBigEndian = StartsWith(bytes, bigEndianMark);
    if (!isLittleEndian && !isBigEndian) return FromWindows1252(bytes);
    std::string text = FromUtf16(bytes.substr(littleEndianMark.size()), isBigEndian);
    ToWindows1252(text);
    return text;
}

StorableText WithoutUnstorable(std::string_view text) {
    if (IsStorable(text)) return {std::string(text), true};
    StorableText storable{{}, false};
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::size_t next = std::min(text.find_first_not_of("\r\n", end), text.size());
        const std::string_view line = text.substr(0, end);
        storable.text += IsStorable(line) ? std::string(line) : StorablePart(line);
        storable.text += text.substr(end, next - end);
        text.remove_prefix(next);
    }
    return storable;
}

}  // namespace bellmark
