#include "platform/format.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

constexpr int significantDigits = 15;
constexpr std::uint64_t sixteenDigits = 1000000000000000;  // the smallest number of so many digits
constexpr std::uint64_t fifteenDigits = sixteenDigits / 10;

using Digits = std::array<char, significantDigits>;

/// 10 to the powers that a double holds exactly.
constexpr std::array<double, 23> powersOfTen = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                                1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// A magnitude in 15 significant digits d1d2d3...: the number 0.d1d2d3... times 10 to the point. 0 has only zeros.
struct Decimal {
    std::uint64_t digits = 0;
    int point = 0;

    bool IsZero() const { return digits == 0; }

    /// Rounds half away from zero to count leading digits and returns them as a whole number. A count of 0 or less
    /// gives 0, or 1 when the rounding carries.
    std::uint64_t RoundTo(int count) {
        if (count >= significantDigits) return digits;
        const auto dropped = static_cast<std::size_t>(significantDigits - std::max(count, 0));
        const auto unit = static_cast<std::uint64_t>(powersOfTen[dropped]);
        const std::uint64_t leading = count < 0 ? 0 : (digits + unit / 2) / unit;
        digits = leading * unit;
        if (digits < sixteenDigits) return leading;
        digits = fifteenDigits;
        ++point;
        return leading / 10;
    }

    Digits DigitTexts() const {
        Digits texts;
        texts.fill('0');
        std::to_chars(texts.data(), texts.data() + texts.size(), digits);
        return texts;
    }
};

/// The magnitude times 10 to the places, rounded to a whole number. The product is taken exactly, as a sum of two
/// doubles.
std::uint64_t ExactlyScaled(double magnitude, std::size_t places) {
    const double product = magnitude * powersOfTen[places];
    const double remainder = std::fma(magnitude, powersOfTen[places], -product);
    const double whole = std::floor(product);
    const double fraction = (product - whole) + remainder;
    return static_cast<std::uint64_t>(whole) + (fraction >= 0.5 ? 1 : 0) - (fraction < -0.5 ? 1 : 0);
}

Decimal DecimalByLibrary(double magnitude) {
    std::array<char, 32> text{};  // "d.dddddddddddddde+ddd"
    const char* end = std::to_chars(text.data(), text.data() + text.size(), magnitude, std::chars_format::scientific,
                                    significantDigits - 1)
                          .ptr;
    Decimal decimal;
    for (const char* digit = text.data(); *digit != 'e'; ++digit) {
        if (*digit != '.') decimal.digits = decimal.digits * 10 + static_cast<std::uint64_t>(*digit - '0');
    }
    const char* exponent = text.data() + significantDigits + 2;
    std::from_chars(*exponent == '+' ? exponent + 1 : exponent, end, decimal.point);
    ++decimal.point;
    return decimal;
}

/// The range of measured values. Their digits are found without the library, which is much faster.
bool IsMeasured(double magnitude) {
    return magnitude >= 1e-8 && magnitude < 1e14;
}

/// Digits before the decimal point of a measured value, or one less; zeros right behind the point count as negative.
int PointGuess(double magnitude) {
    const int binaryExponent = static_cast<int>(std::bit_cast<std::uint64_t>(magnitude) >> 52) - 1023;
    // log10(2) is 78913 / 2 to the 18th.
    return ((binaryExponent * 78913) >> 18) + 1;
}

int PointOf(double magnitude) {
    const int point = PointGuess(magnitude);
    const bool reachesNext = point >= 0 ? magnitude >= powersOfTen[static_cast<std::size_t>(point)]
                                        : magnitude * powersOfTen[static_cast<std::size_t>(-point)] >= 1;
    return reachesNext ? point + 1 : point;
}

/// A finite value, not negative, as 15 significant digits.
Decimal DecimalOf(double magnitude) {
    if (!IsMeasured(magnitude)) return DecimalByLibrary(magnitude);
    const int point = PointOf(magnitude);
    const std::uint64_t digits = ExactlyScaled(magnitude, static_cast<std::size_t>(significantDigits - point));
    if (digits < fifteenDigits) return DecimalByLibrary(magnitude);  // at the very edge of a power of ten
    return digits < sixteenDigits ? Decimal{digits, point} : Decimal{fifteenDigits, point + 1};
}

/// The first digits of a number, as a whole number, and the power of ten that the first of them counts.
struct LeadingDigits {
    std::uint64_t digits = 0;
    int exponent = 0;
};

LeadingDigits LeadingDigitsOf(double magnitude, int count) {
    Decimal number = DecimalOf(magnitude);
    const std::uint64_t digits = number.RoundTo(count);
    return {digits, number.IsZero() ? 0 : number.point - 1};
}

bool IsPlace(char character) {
    return character == '0' || character == '#';
}

/// The parts of a number picture.
struct NumberPicture {
    int integerPlaces = 0;
    int firstZeroPlace = -1;  ///< among the integer places, from the left; -1 when all are "#"
    int decimalPlaces = 0;
    int decimalZeroPlaces = 0;  ///< decimal places up to the last "0"
    bool grouped = false;
    bool percent = false;
    std::size_t point = std::string_view::npos;     ///< where the decimal point stands
    std::size_t exponent = std::string_view::npos;  ///< where the "E" stands
    std::size_t exponentEnd = std::string_view::npos;

    int MinimalIntegerDigits() const { return firstZeroPlace < 0 ? 0 : integerPlaces - firstZeroPlace; }
    bool HasExponent() const { return exponent != std::string_view::npos; }
    bool HasPoint() const { return point != std::string_view::npos; }
    bool HasPlaces() const { return integerPlaces + decimalPlaces > 0; }
};

/// Where the exponent that starts at the position ends; the position itself when none starts there.
std::size_t ExponentEnd(std::string_view text, std::size_t position) {
    const bool starts = (text[position] == 'E' || text[position] == 'e') && position + 2 < text.size() &&
                        (text[position + 1] == '+' || text[position + 1] == '-') && IsPlace(text[position + 2]);
    if (!starts) return position;
    return std::min(text.find_first_not_of("0#", position + 2), text.size());
}

NumberPicture ReadPicture(std::string_view text) {
    NumberPicture picture;
    bool commaAfterPlace = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        if (IsPlace(character)) {
            if (picture.HasPoint()) {
                ++picture.decimalPlaces;
                if (character == '0') picture.decimalZeroPlaces = picture.decimalPlaces;
            } else {
                picture.grouped = picture.grouped || commaAfterPlace;
                if (character == '0' && picture.firstZeroPlace < 0) picture.firstZeroPlace = picture.integerPlaces;
                ++picture.integerPlaces;
            }
        } else if (character == '.' && !picture.HasPoint()) {
            picture.point = i;
        } else if (character == ',') {
            commaAfterPlace = picture.integerPlaces > 0;
        } else if (character == '%') {
            picture.percent = true;
        } else if (!picture.HasExponent() && ExponentEnd(text, i) > i) {
            picture.exponent = i;
            picture.exponentEnd = ExponentEnd(text, i);
            i = picture.exponentEnd - 1;
        }
    }
    return picture;
}

/// Fills one number into a picture, from left to right.
class PictureWriter {
  public:
    PictureWriter(std::string& out, std::string_view text, const NumberPicture& picture, const Decimal& number)
        : out_(out), text_(text), picture_(picture), digits_(number.DigitTexts()), digitsBeforePoint_(number.point) {
        const int least = picture.HasExponent() ? picture.integerPlaces : picture.MinimalIntegerDigits();
        integerDigits_ = std::max({least, number.IsZero() ? 0 : number.point, 0});
        decimalDigits_ = picture.decimalPlaces;
        while (decimalDigits_ > picture.decimalZeroPlaces && DigitOf(-decimalDigits_) == '0') --decimalDigits_;
    }

    void Write(int exponent) {
        int integerPlace = 0;
        int decimalPlace = 0;
        for (std::size_t i = 0; i < text_.size(); ++i) {
            const char character = text_[i];
            if (IsPlace(character)) {
                if (i < picture_.point) {
                    WriteIntegerPlace(integerPlace++);
                } else if (++decimalPlace <= decimalDigits_) {
                    out_ += DigitOf(-decimalPlace);
                }
            } else if (i == picture_.point) {
                if (picture_.integerPlaces == 0) WriteIntegerDigits(0);
                out_ += character;
            } else if (i == picture_.exponent) {
                WriteExponent(exponent);
                i = picture_.exponentEnd - 1;
            } else if (character != ',' || !IsGroupingComma(i, integerPlace)) {
                out_ += character;
            }
        }
    }

  private:
    /// The digit that counts 10 to the power.
    char DigitOf(int power) const {
        const int index = digitsBeforePoint_ - 1 - power;
        return index >= 0 && index < significantDigits ? digits_[static_cast<std::size_t>(index)] : '0';
    }

    bool IsGroupingComma(std::size_t position, int integerPlacesBefore) const {
        return position < picture_.point && integerPlacesBefore > 0 && integerPlacesBefore < picture_.integerPlaces;
    }

    /// The first place takes all digits that do not fit into the places after it.
    void WriteIntegerPlace(int place) {
        const int placesBehind = picture_.integerPlaces - 1 - place;
        if (place > 0 && placesBehind >= integerDigits_) return;
        WriteIntegerDigits(placesBehind);
    }

    /// Writes the remaining integer digits down to the one that counts 10 to lastPower.
    void WriteIntegerDigits(int lastPower) {
        for (; integerDigits_ > lastPower; --integerDigits_) {
            const int power = integerDigits_ - 1;
            out_ += DigitOf(power);
            if (picture_.grouped && power > 0 && power % 3 == 0) out_ += ',';
        }
    }

    void WriteExponent(int exponent) {
        out_ += text_[picture_.exponent];
        const bool signAlways = text_[picture_.exponent + 1] == '+';
        if (exponent < 0) {
            out_ += '-';
        } else if (signAlways) {
            out_ += '+';
        }
        const std::size_t width = picture_.exponentEnd - picture_.exponent - 2;
        std::array<char, 8> digits{};
        const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), std::abs(exponent)).ptr;
        const auto length = static_cast<std::size_t>(end - digits.data());
        if (length < width) out_.append(width - length, '0');
        out_.append(digits.data(), length);
    }

    std::string& out_;
    std::string_view text_;
    const NumberPicture& picture_;
    Digits digits_;
    int digitsBeforePoint_;
    int integerDigits_;  ///< still to be written
    int decimalDigits_;
};

/// Rounds to the picture's places. Returns the power of ten that an exponent picture shows, its mantissa in the number.
int RoundToPicture(Decimal& number, const NumberPicture& picture) {
    if (!picture.HasExponent()) {
        number.RoundTo(number.point + picture.decimalPlaces);
        return 0;
    }
    if (number.IsZero()) return 0;
    number.RoundTo(picture.integerPlaces + picture.decimalPlaces);
    const int exponent = number.point - picture.integerPlaces;
    number.point = picture.integerPlaces;
    return exponent;
}

/// Whether a picture is "0.00E+00" with any decimals that the digits can fill.
bool IsPlainExponentPicture(std::string_view picture) {
    constexpr std::string_view mostDecimals = "0.00000000000000";
    constexpr std::string_view exponent = "E+00";
    if (picture.size() < 7 || picture.size() > mostDecimals.size() + exponent.size()) return false;
    const std::size_t mantissa = picture.size() - exponent.size();
    return picture.substr(mantissa) == exponent && StartsWith(mostDecimals, picture.substr(0, mantissa));
}

constexpr std::array<std::string_view, 12> monthAbbreviations = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

void AppendPadded(std::string& out, long long number, std::size_t width) {
    const std::string digits = NumberText(number);
    if (digits.size() < width) out.append(width - digits.size(), '0');
    out += digits;
}

/// A moment taken apart.
struct Calendar {
    explicit Calendar(DateTime moment)
        : date(std::chrono::floor<std::chrono::days>(moment)),
          time(std::chrono::floor<std::chrono::seconds>(TimeOfDay(moment))) {}

    long long Hour() const { return time.hours().count(); }
    long long Minute() const { return time.minutes().count(); }
    long long Second() const { return time.seconds().count(); }

    std::chrono::year_month_day date;
    std::chrono::hh_mm_ss<std::chrono::seconds> time;
};

constexpr std::array<std::string_view, 14> dateFields = {"ttttt", "yyyy", "mmm", "yy", "mm", "dd", "hh",
                                                         "nn",    "ss",   "m",   "d",  "h",  "n",  "s"};

/// The field at the start of a picture, empty when there is none.
std::string_view FirstField(std::string_view picture) {
    for (const std::string_view field : dateFields) {
        if (StartsWith(picture, field)) return field;
    }
    return {};
}

void AppendFullTime(std::string& out, const Calendar& calendar) {
    out += NumberText((calendar.Hour() + 11) % 12 + 1) + ":";
    AppendPadded(out, calendar.Minute(), 2);
    out += ":";
    AppendPadded(out, calendar.Second(), 2);
    out += calendar.Hour() < 12 ? " AM" : " PM";
}

void AppendField(std::string& out, const Calendar& calendar, std::string_view field, bool hourBefore) {
    const unsigned month = static_cast<unsigned>(calendar.date.month());
    const int year = static_cast<int>(calendar.date.year());
    if (field == "ttttt") return AppendFullTime(out, calendar);
    if (field == "mmm") {
        out += monthAbbreviations[month - 1];
        return;
    }
    if (field == "yy") return AppendPadded(out, year % 100, 2);
    switch (field[0]) {
        case 'y':
            return AppendPadded(out, year, 4);
        case 'd':
            return AppendPadded(out, static_cast<unsigned>(calendar.date.day()), field.size());
        case 'h':
            return AppendPadded(out, calendar.Hour(), field.size());
        case 'n':
            return AppendPadded(out, calendar.Minute(), field.size());
        case 's':
            return AppendPadded(out, calendar.Second(), field.size());
        default:
            return AppendPadded(out, hourBefore ? calendar.Minute() : month, field.size());
    }
}

/// Seconds are rounded half up with carry. A picture without seconds keeps the current minute and date.
DateTime RoundedForPicture(DateTime moment, std::string_view picture) {
    const bool showsSeconds =
        picture.find('s') != std::string_view::npos || picture.find("ttttt") != std::string_view::npos;
    if (!showsSeconds) return moment;
    return std::chrono::floor<std::chrono::seconds>(moment + std::chrono::milliseconds(500));
}

}  // namespace

namespace {

/// The powers of ten that scale a measured value to up to 9 digits. Those below 1 are rounded.
constexpr int leastScale = -14;
constexpr auto scales = [] {
    std::array<double, 32> powers{};
    for (std::size_t i = 0; i < powers.size(); ++i) {
        const int power = static_cast<int>(i) + leastScale;
        powers[i] = power < 0 ? 1 / powersOfTen[static_cast<std::size_t>(-power)]
                              : powersOfTen[static_cast<std::size_t>(power)];
    }
    return powers;
}();

double PowerOfTen(int power) {
    return scales[static_cast<std::size_t>(power - leastScale)];
}

/// "00" to "99": two digits at a time.
constexpr auto pairsOfDigits = [] {
    std::array<std::array<char, 2>, 100> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = {static_cast<char>('0' + i / 10), static_cast<char>('0' + i % 10)};
    return pairs;
}();

/// The exponents of measured values: "E-09" to "E+14".
constexpr int leastExponent = -9;
constexpr auto exponentTexts = [] {
    std::array<std::array<char, 4>, 24> texts{};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const int exponent = static_cast<int>(i) + leastExponent;
        const auto digits = pairsOfDigits[static_cast<std::size_t>(exponent < 0 ? -exponent : exponent)];
        texts[i] = {'E', exponent < 0 ? '-' : '+', digits[0], digits[1]};
    }
    return texts;
}();

/// "1.2345" of the digits 12345.
template <class Number>
void WriteMantissa(char* to, Number digits, int decimals) {
    int place = decimals;
    for (; place >= 2; place -= 2, digits /= 100)
        std::memcpy(to + place, pairsOfDigits[static_cast<std::size_t>(digits % 100)].data(), 2);
    if (place == 1) {
        to[2] = static_cast<char>('0' + digits % 10);
        digits /= 10;
    }
    to[0] = static_cast<char>('0' + digits);
    to[1] = '.';
}

/// Writes a measured value with digits from one multiplication, and moves the place behind it. Where its error or the
/// limit to 15 significant digits could change the rounding, for one of 50000 numbers, and for other values returns
/// false. No branch depends on the digits: a processor could not foresee it.
template <int decimals>
bool WriteMeasured(char*& to, double value) {
    static_assert(decimals <= 8);
    constexpr double margin = 1e-5;  // ten times the possible error in the ninth digit
    constexpr auto least = static_cast<std::int32_t>(powersOfTen[decimals]);
    const double magnitude = std::abs(value);
    if (!IsMeasured(magnitude)) return false;
    // Next to a power of ten the point may be wrong by one, which shows in the digits.
    const int guess = PointGuess(magnitude);
    const int exponent = guess - (magnitude >= PowerOfTen(guess) ? 0 : 1);
    const double scaled = magnitude * PowerOfTen(decimals - exponent);
    constexpr double half = 0.5;
    const auto digits = static_cast<std::int32_t>(scaled + half);
    const bool isSure = std::abs(scaled - digits) < half - margin;
    if (!isSure || digits < least || digits >= 10 * std::int64_t{least}) return false;
    *to = '-';
    to += value < 0 ? 1 : 0;
    WriteMantissa(to, static_cast<std::uint32_t>(digits), decimals);
    to += decimals + 2;
    std::memcpy(to, exponentTexts[static_cast<std::size_t>(exponent - leastExponent)].data(), 4);
    to += 4;
    return true;
}

char* WriteExponent(char* to, int exponent) {
    *to++ = 'E';
    *to++ = exponent < 0 ? '-' : '+';
    const int size = std::abs(exponent);
    if (size >= 100) *to++ = static_cast<char>('0' + size / 100);
    return std::copy_n(pairsOfDigits[static_cast<std::size_t>(size % 100)].data(), 2, to);
}

}  // namespace

char* WriteExponentForm(char* to, double value, int decimals) {
    // The numbers of digits in drop files.
    if (decimals == 4 && WriteMeasured<4>(to, value)) return to;
    if (decimals == 7 && WriteMeasured<7>(to, value)) return to;
    if (!std::isfinite(value)) {
        const std::string text = NumberText(value);
        return std::copy(text.begin(), text.end(), to);
    }
    const auto [digits, exponent] = LeadingDigitsOf(std::abs(value), decimals + 1);
    if (value < 0) *to++ = '-';
    WriteMantissa(to, digits, decimals);
    return WriteExponent(to + decimals + 2, exponent);
}

void AppendFormat(std::string& out, double value, std::string_view picture) {
    if (!std::isfinite(value) || picture.empty()) {
        out += NumberText(value);
        return;
    }
    if (IsPlainExponentPicture(picture)) {
        std::array<char, exponentFormRoom> text;
        out.append(text.data(), WriteExponentForm(text.data(), value, static_cast<int>(picture.size()) - 6));
        return;
    }
    const std::string_view text = EqualIgnoringCase(picture, "Percent") ? "0.00%" : picture;
    const NumberPicture read = ReadPicture(text);
    Decimal number = DecimalOf(std::abs(value));
    if (read.percent) number.point += 2;
    const int exponent = RoundToPicture(number, read);
    if (value < 0 && read.HasPlaces() && !number.IsZero()) out += '-';
    PictureWriter(out, text, read, number).Write(exponent);
}

std::string Format(double value, std::string_view picture) {
    std::string text;
    AppendFormat(text, value, picture);
    return text;
}

std::string Format(DateTime moment, std::string_view picture) {
    const Calendar calendar(RoundedForPicture(moment, picture));
    std::string text;
    bool hourBefore = false;
    while (!picture.empty()) {
        const std::string_view field = FirstField(picture);
        if (field.empty()) {
            text += picture.front();
            picture.remove_prefix(1);
        } else {
            AppendField(text, calendar, field, hourBefore);
            hourBefore = field[0] == 'h';
            picture.remove_prefix(field.size());
        }
    }
    return text;
}

std::string FormatText(std::string_view text, std::string_view picture) {
    const std::size_t sectionEnd = std::min(picture.find(';'), picture.size());
    if (text.empty() && sectionEnd < picture.size()) return std::string(picture.substr(sectionEnd + 1));
    const std::string_view section = picture.substr(0, sectionEnd);
    std::size_t places = static_cast<std::size_t>(std::count(section.begin(), section.end(), '@'));
    if (places == 0) return std::string(text);
    std::size_t characters = CharacterCount(text);
    std::string filled;
    for (const char character : section) {
        if (character != '@') {
            filled += character;
            continue;
        }
        --places;
        if (characters <= places) {
            filled += ' ';
            continue;
        }
        // The first place takes all characters that do not fit into the places after it.
        const std::string part = FirstCharacters(text, characters - places);
        filled += part;
        text.remove_prefix(part.size());
        characters = places;
    }
    return filled;
}

}  // namespace bellmark
