#include "platform/date_time.h"

#include <gtest/gtest.h>

namespace bellmark {
namespace {

TEST(DateTime, ReadsWhatIsWrittenAndTyped) {
    const DateTime day = MakeDateTime(2012, 3, 9);
    const DateTime moment = MakeDateTime(2012, 3, 9, 14, 5, 9);
    const DateTime time = MakeDateTime(1899, 12, 30, 14, 5);
    const struct {
        std::string_view text;
        std::optional<DateTime> value;
    } cases[] = {
        {"09-Mar-2012", day},
        {" 9-march-2012 ", day},
        {"03-09-2012", day},
        {"3/9/2012", day},
        {"2012-03-09", day},
        {"09-Mar-2012 14:05:09", moment},
        {"09-Mar-2012, 14:05:09", moment},
        {"03-09-2012 2:05:09 PM", moment},
        {"2012-03-09 2:05:09pm", moment},
        {"14:05", time},
        {"2:05 PM", time},
        {"12:00:00 AM", ZeroDate()},
        {"12:00 PM", MakeDateTime(1899, 12, 30, 12)},
        {"0", ZeroDate()},
        {"40977", day},  // 9 March 2012 is 40977 days after 30 December 1899
        {"40977.5", MakeDateTime(2012, 3, 9, 12)},
        {"29-Feb-2012", MakeDateTime(2012, 2, 29)},
        {"29-Feb-2011", std::nullopt},
        {"13-09-2012", std::nullopt},
        {"03-09/2012", std::nullopt},
        {"09-Mar-12", std::nullopt},
        {"09-Mar-20123", std::nullopt},
        {"09-Mrz-2012", std::nullopt},
        {"09-Mar-2012x", std::nullopt},
        {"09-Mar-2012 24:00", std::nullopt},
        {"14:60", std::nullopt},
        {"14:05:", std::nullopt},
        {"14:05 PM", std::nullopt},
        {"0:05 AM", std::nullopt},
        {"", std::nullopt},
        {"today", std::nullopt},
        {"1e300", std::nullopt},
    };
    for (const auto& date : cases) EXPECT_EQ(ReadDateTime(date.text), date.value) << date.text;
}

TEST(DateTime, TakesDayAndTimeApartBeforeTheZeroDateToo) {
    const DateTime moment = MakeDateTime(1850, 7, 1, 23, 59, 59) + std::chrono::milliseconds(7);
    EXPECT_EQ(DayOf(moment), MakeDateTime(1850, 7, 1));
    EXPECT_EQ(TimeOfDay(moment), std::chrono::milliseconds(86399007));
}

}  // namespace
}  // namespace bellmark
