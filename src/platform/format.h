#pragma once

#include <string>
#include <string_view>

#include "platform/date_time.h"

/// Values as text by a picture string.
namespace bellmark {

/// Number picture: "0" digit always shown, "#" digit shown when needed, "," grouping by three, "%" times 100,
/// "E+00"/"e+00" exponent, "Percent" for "0.00%". Other characters stand for themselves. The value is taken as 15
/// significant digits, which are rounded half away from zero to the picture's places: Format(1.005, "0.00") is "1.01".
/// The sign of a negative number comes first and is left out when only zeros are shown. A comma groups between integer
/// places only. Infinity and NaN appear as "inf", "-inf", "nan"; an empty picture is NumberText.
std::string Format(double value, std::string_view picture);

/// The same, appended to a text.
void AppendFormat(std::string& out, double value, std::string_view picture);

/// The same as by the picture "0.0000E+00", with 1 to 14 decimals. Writes to a place with room for exponentFormRoom
/// characters and returns the end of the text. Made for drop files, which hold many numbers.
char* WriteExponentForm(char* to, double value, int decimals);
inline constexpr std::size_t exponentFormRoom = 22;

/// Date picture: "dd" "d" day, "mmm" "mm" "m" month, "yyyy" "yy" year, "hh" "h" hour of 24, "nn" "n" minute, "mm"
/// directly after "h" or "hh" and a separator minute too, "ss" second rounded half up with carry, "ttttt" time as
/// "2:05:09 PM". A picture without seconds shows the current minute and day, not rounded.
std::string Format(DateTime moment, std::string_view picture);

/// Text picture: every "@" is a place, filled from the right, blank where the text is shorter. A longer text appears
/// whole. The part after a ";" is the result for an empty text.
std::string FormatText(std::string_view text, std::string_view picture);

}  // namespace bellmark
