#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Numbers as text and rounding, independent of the machine's language.
namespace bellmark {

/// The longest leading part that is a decimal number, after blanks; 0 when there is none ("12.5abc" is 12.5, "abc" is
/// 0).
double ReadNumber(std::string_view text);

/// The number when the whole text, blanks around it aside, is one; otherwise nothing.
std::optional<double> NumberIn(std::string_view text);

/// The shortest text that reads back to the same double; exponent form from 1E+15 up and below 1E-04 ("1.5E-07").
std::string NumberText(double value);
std::string NumberText(float value);
std::string NumberText(long long value);
inline std::string NumberText(int value) {
    return NumberText(static_cast<long long>(value));
}
inline std::string NumberText(std::size_t value) {
    return NumberText(static_cast<long long>(value));
}

/// Rounding of results: value times 10 to the places, to the nearest whole number with ties to even, divided again.
double Round(double value, int places);

/// Nearest whole number, ties to even. A value beyond the range of long long, or NaN, throws std::range_error.
long long RoundToWhole(double value);

}  // namespace bellmark
