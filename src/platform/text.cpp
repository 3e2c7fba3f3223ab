#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <optional>

namespace bellmark {

namespace {

/// The characters of the bytes 80 to 9F hexadecimal; the code page has the rest in common with Unicode. Bytes without a
/// character stand for the control character of the same number.
constexpr std::array<char16_t, 32> upperControlRange = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                        0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

char LowerLetter(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

char UpperLetter(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

struct Decoded {
    std::uint32_t character;
    std::size_t length;  ///< bytes
};

/// The character at the start of a text that is not empty; nothing when the bytes are no UTF-8.
std::optional<Decoded> DecodeFirst(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    if (lead < 0x80) return Decoded{lead, 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length) return std::nullopt;
    std::uint32_t character = lead & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!IsContinuation(text[i])) return std::nullopt;
        character = (character << 6) | (static_cast<unsigned char>(text[i]) & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> smallestOfLength = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
    if (character < smallestOfLength[length] || character > 0x10FFFF || surrogate) return std::nullopt;
    return Decoded{character, length};
}

std::optional<unsigned char> CodePageByte(std::uint32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<unsigned char>(character);
    const auto found = std::find(upperControlRange.begin(), upperControlRange.end(), character);
    if (found == upperControlRange.end()) return std::nullopt;
    return static_cast<unsigned char>(0x80 + (found - upperControlRange.begin()));
}

[[noreturn]] void RefuseCharacter(std::uint32_t character, std::string_view itself) {
    std::array<char, 8> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), character, 16).ptr;
    const std::string number = UpperCase({digits.data(), static_cast<std::size_t>(end - digits.data())});
    const std::string padding(number.size() < 4 ? 4 - number.size() : 0, '0');
    throw EncodingError("The character \"" + std::string(itself) + "\" (U+" + padding + number +
                        ") cannot be stored: the files' code page, Windows-1252, lacks it");
}

/// Characters at the front that are the same in both codes; looks at 64 at once, then at each.
std::size_t AsciiLength(std::string_view text) {
    constexpr std::uint64_t topBits = 0x8080808080808080;
    std::size_t length = 0;
    for (std::array<std::uint64_t, 8> words; length + sizeof(words) <= text.size(); length += sizeof(words)) {
        std::memcpy(words.data(), text.data() + length, sizeof(words));
        std::uint64_t all = 0;
        for (const std::uint64_t word : words) all |= word;
        if ((all & topBits) != 0) break;
    }
    while (length < text.size() && static_cast<unsigned char>(text[length]) < 0x80) ++length;
    return length;
}

/// Moves those characters, nearly all of every file, at once.
void MoveAscii(std::string& to, std::string_view& from) {
    const std::size_t count = AsciiLength(from);
    to.append(from.substr(0, count));
    from.remove_prefix(count);
}

/// Throws EncodingError for the first character that is no UTF-8 or is missing from the code page.
void RequireStorable(std::string_view text) {
    for (text.remove_prefix(AsciiLength(text)); !text.empty(); text.remove_prefix(AsciiLength(text))) {
        const auto first = DecodeFirst(text);
        if (!first) throw EncodingError("The text is not valid UTF-8");
        if (!CodePageByte(first->character)) RefuseCharacter(first->character, text.substr(0, first->length));
        text.remove_prefix(first->length);
    }
}

}  // namespace

void AppendUtf8(std::string& text, char16_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        text += static_cast<char>(0x80 | (character & 0x3F));
    } else {
        text += static_cast<char>(0xE0 | (character >> 12));
        text += static_cast<char>(0x80 | ((character >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
}

std::string FromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    while (!bytes.empty()) {
        MoveAscii(text, bytes);
        if (bytes.empty()) break;
        const auto number = static_cast<unsigned char>(bytes.front());
        AppendUtf8(text, number < 0xA0 ? upperControlRange[number - 0x80U] : static_cast<char16_t>(number));
        bytes.remove_prefix(1);
    }
    return text;
}

std::string ToWindows1252(std::string_view text) {
    std::string bytes(text);
    ConvertToWindows1252(bytes);
    return bytes;
}

void ConvertToWindows1252(std::string& text) {
    RequireStorable(text);
    std::string_view rest = text;
    char* to = text.data();
    while (!rest.empty()) {
        const std::size_t count = AsciiLength(rest);
        if (to != rest.data()) std::memmove(to, rest.data(), count);
        to += count;
        rest.remove_prefix(count);
        if (rest.empty()) break;
        const auto first = DecodeFirst(rest);
        *to++ = static_cast<char>(*CodePageByte(first->character));
        rest.remove_prefix(first->length);
    }
    text.resize(static_cast<std::size_t>(to - text.data()));
}

std::string_view Trim(std::string_view text) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerLetter(x) == LowerLetter(y); });
}

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerLetter);
    return lower;
}

std::string UpperCase(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperLetter);
    return upper;
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix) {
    return EqualIgnoringCase(text.substr(0, prefix.size()), prefix);
}

std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    std::size_t end = text.find(separator);
    while (end != std::string_view::npos) {
        parts.emplace_back(text.substr(0, end));
        text.remove_prefix(end + 1);
        end = text.find(separator);
    }
    parts.emplace_back(text);
    return parts;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        lines.push_back(text.substr(0, end));
        const bool both = StartsWith(text.substr(end), "\r\n");
        text.remove_prefix(std::min(end + (both ? 2 : 1), text.size()));
    }
    return lines;
}

std::size_t CharacterCount(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !IsContinuation(byte); }));
}

std::string FirstCharacters(std::string_view text, std::size_t count) {
    if (text.size() <= count) return std::string(text);  // a character has at least one byte
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsContinuation(text[i])) continue;
        if (characters == count) return std::string(text.substr(0, i));
        ++characters;
    }
    return std::string(text);
}

std::string FileExtension(std::string_view path) {
    return std::string(path.substr(path.rfind('.') + 1));
}

std::string ZeroIfEmpty(const std::string& text) {
    return text.empty() ? "0" : text;
}

std::string GetListField(int index, std::string_view list) {
    const auto fields = Split(CompressBlanks(list), ',');
    return index >= 1 && index <= static_cast<int>(fields.size()) ? fields[static_cast<std::size_t>(index - 1)] : "";
}

std::string CompressBlanks(std::string_view text) {
    std::string compressed;
    for (const char c : text) {
        const bool repeated = c == ' ' && (compressed.empty() || compressed.back() == ' ');
        if (!repeated) compressed += c;
    }
    if (!compressed.empty() && compressed.back() == ' ') compressed.pop_back();
    return compressed;
}

}  // namespace bellmark
