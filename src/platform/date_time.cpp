#include "platform/date_time.h"

#include <array>
#include <charconv>

#include "platform/numbers.h"
#include "platform/text.h"

namespace bellmark {

namespace {

using std::chrono::milliseconds;

constexpr std::array<std::string_view, 12> monthNames = {"January",   "February", "March",    "April",
                                                         "May",       "June",     "July",     "August",
                                                         "September", "October",  "November", "December"};

bool IsDigit(char character) {
    return character >= '0' && character <= '9';
}
bool IsLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

/// Takes one piece after the other off the front of a text.
class Pieces {
  public:
    explicit Pieces(std::string_view text) : rest_(text) {}

    bool AtEnd() const { return rest_.empty(); }

    bool Take(char expected) {
        if (rest_.empty() || rest_.front() != expected) return false;
        rest_.remove_prefix(1);
        return true;
    }

    bool TakeWord(std::string_view expected) {
        if (!StartsWithIgnoringCase(rest_, expected)) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    void SkipBlanks() {
        while (Take(' ') || Take('\t')) {
        }
    }

    /// A whole run of digits, if its length fits.
    std::optional<int> TakeNumber(std::size_t shortest, std::size_t longest) {
        const std::string_view digits = Run(IsDigit);
        if (digits.size() < shortest || digits.size() > longest) return std::nullopt;
        int number = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
        rest_.remove_prefix(digits.size());
        return number;
    }

    /// A month by its English name or the name's first three letters: 1 to 12.
    std::optional<int> TakeMonthName() {
        const std::string_view word = Run(IsLetter);
        for (std::size_t i = 0; i < monthNames.size(); ++i) {
            if (EqualIgnoringCase(word, monthNames[i]) || EqualIgnoringCase(word, monthNames[i].substr(0, 3))) {
                rest_.remove_prefix(word.size());
                return static_cast<int>(i) + 1;
            }
        }
        return std::nullopt;
    }

  private:
    std::string_view Run(bool (*belongs)(char)) const {
        std::size_t length = 0;
        while (length < rest_.size() && belongs(rest_[length])) ++length;
        return rest_.substr(0, length);
    }

    std::string_view rest_;
};

std::optional<DateTime> Midnight(std::optional<int> year, std::optional<int> month, std::optional<int> day) {
    if (!year || !month || !day) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    if (!date.ok()) return std::nullopt;
    return DateTime(std::chrono::local_days(date));
}

std::optional<DateTime> YearFirstDate(Pieces& pieces) {
    const auto year = pieces.TakeNumber(4, 4);
    if (!pieces.Take('-')) return std::nullopt;
    const auto month = pieces.TakeNumber(1, 2);
    if (!pieces.Take('-')) return std::nullopt;
    return Midnight(year, month, pieces.TakeNumber(1, 2));
}

std::optional<DateTime> MonthNameDate(Pieces& pieces) {
    const auto day = pieces.TakeNumber(1, 2);
    if (!pieces.Take('-')) return std::nullopt;
    const auto month = pieces.TakeMonthName();
    if (!pieces.Take('-')) return std::nullopt;
    return Midnight(pieces.TakeNumber(4, 4), month, day);
}

std::optional<DateTime> MonthFirstDate(Pieces& pieces) {
    const auto month = pieces.TakeNumber(1, 2);
    const char separator = pieces.Take('/') ? '/' : '-';
    if (separator == '-' && !pieces.Take('-')) return std::nullopt;
    const auto day = pieces.TakeNumber(1, 2);
    if (!pieces.Take(separator)) return std::nullopt;
    return Midnight(pieces.TakeNumber(4, 4), month, day);
}

/// The date at the start of the text, if there is one; it is then removed from the text.
std::optional<DateTime> TakeDate(Pieces& pieces) {
    for (const auto read : {YearFirstDate, MonthNameDate, MonthFirstDate}) {
        Pieces attempt = pieces;
        if (const auto date = read(attempt)) {
            pieces = attempt;
            return date;
        }
    }
    return std::nullopt;
}

std::optional<milliseconds> TakeTime(Pieces& pieces) {
    auto hour = pieces.TakeNumber(1, 2);
    if (!hour || !pieces.Take(':')) return std::nullopt;
    const auto minute = pieces.TakeNumber(1, 2);
    const auto second = pieces.Take(':') ? pieces.TakeNumber(1, 2) : std::optional<int>(0);
    pieces.SkipBlanks();
    const bool morning = pieces.TakeWord("AM");
    const bool afternoon = !morning && pieces.TakeWord("PM");
    if (morning || afternoon) {
        if (*hour < 1 || *hour > 12) return std::nullopt;
        hour = *hour % 12 + (afternoon ? 12 : 0);
    }
    if (*hour > 23 || !minute || *minute > 59 || !second || *second > 59) return std::nullopt;
    return std::chrono::hours(*hour) + std::chrono::minutes(*minute) + std::chrono::seconds(*second);
}

std::optional<DateTime> FromDayNumber(double days) {
    constexpr double firstDay = -657434;    // 1 January 100
    constexpr double behindLast = 2958466;  // 1 January 10000
    if (!(days >= firstDay && days < behindLast)) return std::nullopt;
    constexpr double millisecondsOfDay = 86400000;
    return ZeroDate() + milliseconds(RoundToWhole(days * millisecondsOfDay));
}

}  // namespace

DateTime MakeDateTime(int year, int month, int day, int hour, int minute, int second) {
    const auto date = std::chrono::year(year) / month / day;
    return std::chrono::local_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           std::chrono::seconds(second);
}

DateTime ZeroDate() {
    return MakeDateTime(1899, 12, 30);
}

DateTime DayOf(DateTime moment) {
    return std::chrono::floor<std::chrono::days>(moment);
}

milliseconds TimeOfDay(DateTime moment) {
    return moment - DayOf(moment);
}

std::optional<DateTime> ReadDateTime(std::string_view text) {
    const std::string_view trimmed = Trim(text);
    if (const auto days = NumberIn(trimmed)) return FromDayNumber(*days);
    Pieces pieces(trimmed);
    const auto date = TakeDate(pieces);
    if (date) {
        pieces.Take(',');
        if (pieces.AtEnd()) return *date;
        pieces.SkipBlanks();
    }
    const auto time = TakeTime(pieces);
    if (!time || !pieces.AtEnd()) return std::nullopt;
    return date.value_or(ZeroDate()) + *time;
}

}  // namespace bellmark
