#include "platform/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <system_error>

#include "platform/text.h"

namespace bellmark {

namespace {

struct LeadingNumber {
    double value;
    std::size_t length;  ///< characters that belong to it
};

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}

/// A number at the very start of the text; nothing when there is none or a double cannot hold it.
std::optional<LeadingNumber> NumberAtStart(std::string_view text) {
    const std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    // std::from_chars refuses "+", and would take "inf" and "nan", which are no decimal numbers.
    const std::string_view unsignedText = text.substr(sign);
    if (unsignedText.empty() || !(IsDigit(unsignedText[0]) || unsignedText[0] == '.')) return std::nullopt;
    double value = 0;
    const char* begin = unsignedText.data();
    const auto [end, error] = std::from_chars(begin, begin + unsignedText.size(), value);
    if (error != std::errc{}) return std::nullopt;
    return LeadingNumber{text[0] == '-' ? -value : value, sign + static_cast<std::size_t>(end - begin)};
}

template <typename Number>
std::string ShortestText(Number value) {
    if (std::isnan(value)) return "nan";
    if (value == 0) return "0";  // without the sign of a negative zero
    const Number magnitude = std::abs(value);
    const bool exponentForm = magnitude >= Number(1e15) || magnitude < Number(1e-4);
    std::array<char, 40> buffer{};
    const auto format = exponentForm ? std::chars_format::scientific : std::chars_format::fixed;
    char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format).ptr;
    std::string text(buffer.data(), end);
    if (std::isfinite(value)) std::replace(text.begin(), text.end(), 'e', 'E');
    return text;
}

/// 10 to the places, which are not negative: exact up to 22.
double PowerOfTen(int places) {
    double power = 1;
    for (int i = 0; i < places; ++i) power *= 10;
    return power;
}

}  // namespace

double ReadNumber(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return 0;
    const auto number = NumberAtStart(text.substr(first));
    return number ? number->value : 0;
}

std::optional<double> NumberIn(std::string_view text) {
    const std::string_view trimmed = Trim(text);
    const auto number = NumberAtStart(trimmed);
    if (!number || number->length != trimmed.size()) return std::nullopt;
    return number->value;
}

std::string NumberText(double value) {
    return ShortestText(value);
}
std::string NumberText(float value) {
    return ShortestText(value);
}

std::string NumberText(long long value) {
    std::array<char, 24> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

double Round(double value, int places) {
    const double power = PowerOfTen(std::abs(places));
    const double scaled = places >= 0 ? value * power : value / power;
    if (!std::isfinite(scaled)) return value;  // too large to have such places
    const double whole = std::nearbyint(scaled);
    return places >= 0 ? whole / power : whole * power;
}

long long RoundToWhole(double value) {
    constexpr double limit = 9223372036854775808.0;  // 2 to the 63rd
    const double whole = std::nearbyint(value);
    if (!(whole >= -limit && whole < limit)) {
        throw std::range_error("The value " + NumberText(value) + " is no whole number that can be held");
    }
    return static_cast<long long>(whole);
}

}  // namespace bellmark
