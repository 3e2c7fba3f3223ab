#pragma once

#include <string>
#include <string_view>

#include "platform/date_time.h"

/// Values as text by a picture string.
namespace bellmark {

/// Number picture: "0" digit always shown, "#" digit shown when needed, "," grouping by three, "%" times 100,
/// "E+00"/"e+00" exponent, "Percent" for "0.00%". The value is taken as 15 significant digits, which are rounded half
/// away from zero to the picture's places: Format(1.005, "0.00") is "1.01". Other characters stand for themselves.
/// The sign of a negative number stands in front of everything, and not at all when only zeros are shown. A comma
/// groups between integer places only. Infinity and no number appear as "inf", "-inf", "nan"; an empty picture is
/// NumberText.
std::string Format(double value, std::string_view picture);

/// The same at the end of a text.
void AppendFormat(std::string& out, double value, std::string_view picture);

/// The same as by the picture "0.0000E+00" with so many decimals, 1 to 14, written from a place on that has room for
/// exponentFormRoom characters. Returns where it ends. For the many numbers of a drop file.
char* WriteExponentForm(char* to, double value, int decimals);
inline constexpr std::size_t exponentFormRoom = 22;

/// Date picture: "dd" "d" day, "mmm" "mm" "m" month, "yyyy" "yy" year, "hh" "h" hour of 24, "nn" "n" minute, "mm"
/// directly after "h" or "hh" and a separator minute too, "ss" second rounded half up with carry, "ttttt" time as
/// "2:05:09 PM". A picture without seconds shows the minute and the day as they run, not rounded.
std::string Format(DateTime moment, std::string_view picture);

/// Text picture: every "@" a place, filled from the right, blank where the text is shorter. A longer text appears
/// whole. What stands behind a ";" is the answer for an empty text.
std::string FormatText(std::string_view text, std::string_view picture);

}  // namespace bellmark
