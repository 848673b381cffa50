#include "utilities/news_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

struct Row {
    std::string text, result;
};

TEST(NewsNames, PartsOfADate)
{
    EXPECT_EQ(yr("69"), "2069");
    EXPECT_EQ(yr("70"), "1970");
    EXPECT_EQ(yr("00"), "2000");
    EXPECT_EQ(yr("99"), "1999");
    EXPECT_EQ(da("05"), "5");
    EXPECT_EQ(da("15"), "15");
    EXPECT_EQ(da("50"), "50");
    EXPECT_EQ(da("00"), "0");
    const char* kMonths[] = {"January", "February", "March",     "April",   "May",      "June",
                             "July",    "August",   "September", "October", "November", "December"};
    for (int month = 1; month <= 12; ++month)
        EXPECT_EQ(mo((month < 10 ? "0" : "") + std::to_string(month)), kMonths[month - 1]);
    EXPECT_EQ(mo("00"), "");
    EXPECT_EQ(mo("13"), "");
}

TEST(NewsNames, DateCode)
{
    const Row kRows[] = {
        {"pr040504", "040504"},
        {"pr040504b", "040504"},
        {"pr040504a", "040504"},
        {"pr040504w", "040504"},
        {"pr040504x", ""},
        {"pr040504B", ""},
        {"pr040504ab", ""},
        {"040504", "040504"},
        {"040504c", "040504"},
        {"12345678", "345678"},
        {"40504", ""},
        {"40504b", ""},
        {"pr04 504", ""},
        {"pr04050b4", ""},
        {"", ""},
        {"a", ""},
        {"press", ""},
        {"pr040504\xE4", ""},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(DateCode(row.text), row.result) << row.text;
}

TEST(NewsNames, DateOfName)
{
    const Row kRows[] = {
        {"pr040504", "April 5, 2004"},    {"pr123199b", "December 31, 1999"},
        {"x010169", "January 1, 2069"},   {"x010170", "January 1, 1970"},
        {"x130504", " 5, 2004"},          {"x000004", " 0, 2004"},
        {"x024504", "February 45, 2004"}, {"press", ""},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(DateOfName(row.text), row.result) << row.text;
}

TEST(NewsNames, Publication)
{
    NewsSettings settings;
    settings.publications = {{"pr", "Press Release"},
                             {"proc", "Proclamation"},
                             {"Gaz", "The Gazette"},
                             {"PR", "never reached"},
                             {"\xE4", "Umlaut"}};
    const Row kRows[] = {
        {"pr040504", "Press Release"},
        {"proc040504", "Proclamation"},
        {"PR040504b", "Press Release"},
        {"gaz040504", "The Gazette"},
        {"\xC4"
         "040504",
         "Umlaut"},
        {"prx040504", ""},
        {"p040504", ""},
        {"040504", ""},
        {"pr", ""},
        {"pr0405041", ""}, // the code is the last six: the prefix is "pr0"
    };
    for (const Row& row : kRows)
        EXPECT_EQ(PublicationOfName(row.text, settings), row.result) << row.text;
}

TEST(NewsNames, Today)
{
    EXPECT_EQ(DateCodeOf({.year = 2004, .month = 4, .day = 5}), "040504");
    EXPECT_EQ(DateCodeOf({.year = 1999, .month = 12, .day = 31}), "123199");
}

} // namespace
} // namespace kiv
