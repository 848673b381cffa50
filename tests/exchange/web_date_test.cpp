#include "exchange/web_date.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(WebDate, NewsDates)
{
    EXPECT_EQ(TimeOfNewsDate("January 1, 1970"), 0);
    EXPECT_EQ(TimeOfNewsDate("January 2, 1970"), 86400);
    EXPECT_EQ(TimeOfNewsDate("December 31, 1969"), -86400);
    EXPECT_EQ(TimeOfNewsDate(" march 5, 2004 "), 1078444800);
    for (const char* const text :
         {"", "March 5 2004", "March 5,2004", "March 5, 0", "Marsh 5, 2004", "March 32, 2004",
          "February 30, 2004", "March 5, 20044", "March -5, 2004", "March x, 2004", "5 March, 2004",
          "March 5, 2004 x"})
        EXPECT_FALSE(TimeOfNewsDate(text)) << text;
}

TEST(WebDate, Texts)
{
    EXPECT_EQ(IsoTime(0), "1970-01-01T00:00:00Z");
    EXPECT_EQ(MailTime(0), "Thu, 01 Jan 1970 00:00:00 +0000");
    EXPECT_EQ(IsoTime(1078495629), "2004-03-05T14:07:09Z");
    EXPECT_EQ(MailTime(1078495629), "Fri, 05 Mar 2004 14:07:09 +0000");
    EXPECT_EQ(IsoTime(-1), "1969-12-31T23:59:59Z");
}

} // namespace
} // namespace kiv
