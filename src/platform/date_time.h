#pragma once

#include <chrono>
#include <optional>
#include <string_view>

/// Local date and time of day, to the millisecond, as a wall clock shows it.
namespace bellmark {

using DateTime = std::chrono::local_time<std::chrono::milliseconds>;

DateTime MakeDateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

/// 30 December 1899: the value of a missing date.
DateTime ZeroDate();

/// Midnight of the day, and the time since it.
DateTime DayOf(DateTime moment);
std::chrono::milliseconds TimeOfDay(DateTime moment);

/// Reads what the program writes and what an operator types: "09-Mar-2012", "03-09-2012" (month first), "3/9/2012",
/// "2012-03-09", each alone or followed by a time of day; a time of day alone ("14:05", "14:05:09", "2:05:09 PM"),
/// which is that time on the zero date; and the number of days since the zero date ("0"). Nothing for anything else.
std::optional<DateTime> ReadDateTime(std::string_view text);

}  // namespace bellmark
