#include "platform/clock.h"

#include <ctime>
#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(Clock, NamesTheMonths)
{
    const char* const kNames[] = {"January",   "February", "March",    "April",
                                  "May",       "June",     "July",     "August",
                                  "September", "October",  "November", "December"};
    for (int month = 1; month <= 12; ++month)
        EXPECT_EQ(MonthName(month), kNames[month - 1]);
}

TEST(SystemClock, TellsTheLocalTime)
{
    SystemClock clock;
    const std::time_t before = std::time(nullptr);
    const DateTime now = clock.Now();
    const std::time_t after = std::time(nullptr);
    std::tm fields{};
    fields.tm_year = now.year - 1900;
    fields.tm_mon = now.month - 1;
    fields.tm_mday = now.day;
    fields.tm_hour = now.hour;
    fields.tm_min = now.minute;
    fields.tm_sec = now.second;
    fields.tm_isdst = -1;
    const std::time_t told = std::mktime(&fields);
    EXPECT_GE(told, before);
    EXPECT_LE(told, after);
}

TEST(FrozenClock, StandsStill)
{
    FrozenClock clock({2004, 3, 5, 14, 7, 9});
    EXPECT_EQ(clock.Now(), (DateTime{2004, 3, 5, 14, 7, 9}));
    EXPECT_EQ(clock.Now(), (DateTime{2004, 3, 5, 14, 7, 9}));
}

} // namespace
} // namespace kiv
