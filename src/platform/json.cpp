#include "platform/json.h"

#include <cmath>
#include <cstddef>

#include "platform/numbers.h"

namespace bellmark {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

unsigned ByteAt(std::string_view text, std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
}

/// Bytes of the UTF-8 character that the text begins with (RFC 3629); 0 when it begins with none.
std::size_t LengthOfCharacter(std::string_view text) {
    const unsigned first = ByteAt(text, 0);
    if (first < 0x80U) return 1;
    const std::size_t length = first < 0xC2U ? 0 : first < 0xE0U ? 2 : first < 0xF0U ? 3 : first < 0xF5U ? 4 : 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((ByteAt(text, i) & 0xC0U) != 0x80U) return 0;
    }
    const unsigned second = ByteAt(text, 1);
    // Longer than needed, half of a pair, or beyond the last character.
    const bool isForbidden = (first == 0xE0U && second < 0xA0U) || (first == 0xEDU && second > 0x9FU) ||
                             (first == 0xF0U && second < 0x90U) || (first == 0xF4U && second > 0x8FU);
    return isForbidden ? 0 : length;
}

void AddEscaped(std::string& out, char c) {
    constexpr const char* digits = "0123456789abcdef";
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
        (out += '\\') += c;
    } else if (c == '\n') {
        out += "\\n";
    } else if (byte < 0x20U) {
        ((out += "\\u00") += digits[byte >> 4U]) += digits[byte & 0xFU];
    } else {
        out += c;
    }
}

std::string Quoted(std::string_view text) {
    std::string out = "\"";
    while (!text.empty()) {
        const std::size_t length = LengthOfCharacter(text);
        if (length == 0) {
            out += replacement;
        } else if (length == 1) {
            AddEscaped(out, text[0]);
        } else {
            out += text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return out + '"';
}

}  // namespace

Json::Json(double number) : scalar_(std::isfinite(number) ? NumberText(number) : "null") {}
Json::Json(int number) : scalar_(NumberText(number)) {}
Json::Json(long long number) : scalar_(NumberText(number)) {}
Json::Json(bool value) : scalar_(value ? "true" : "false") {}
Json::Json(std::string_view text) : scalar_(Quoted(text)) {}

Json Json::Object(Members members) {
    Json object;
    object.kind_ = Kind::Object;
    object.members_ = std::move(members);
    return object;
}

Json Json::Array(std::vector<Json> items) {
    Json array;
    array.kind_ = Kind::Array;
    for (Json& item : items) array.members_.emplace_back(std::string(), std::move(item));
    return array;
}

std::string Json::Text() const {
    std::string text;
    Write(text, 0);
    return text + '\n';
}

void Json::Write(std::string& text, std::size_t level) const {
    if (kind_ == Kind::Scalar) {
        text += scalar_;
        return;
    }
    const bool isObject = kind_ == Kind::Object;
    text += isObject ? '{' : '[';
    const char* separator = "\n";
    for (const auto& [name, value] : members_) {
        text += separator;
        text.append(2 * (level + 1), ' ');
        if (isObject) (text += Quoted(name)) += ": ";
        value.Write(text, level + 1);
        separator = ",\n";
    }
    if (!members_.empty()) {
        text += '\n';
        text.append(2 * level, ' ');
    }
    text += isObject ? '}' : ']';
}

}  // namespace bellmark
