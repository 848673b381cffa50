#include "utilities/news_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

struct NameRow {
    std::string text, result;
};

TEST(NewsNames, DateOfName)
{
    const NameRow kRows[] = {
        {"pr040504", "April 5, 2004"},
        {"pr040504b", "April 5, 2004"},
        {"pr040504a", "April 5, 2004"},
        {"pr040504w", "April 5, 2004"},
        {"040504", "April 5, 2004"},
        {"040504c", "April 5, 2004"},
        {"pr040504x", ""},
        {"pr040504B", ""},
        {"pr040504ab", ""},
        {"40504", ""},
        {"40504b", ""},
        {"pr04 504", ""},
        {"pr04050b4", ""},
        {"pr040504\xE4", ""},
        {"", ""},
        {"a", ""},
        {"press", ""},
        // The last six of more digits; no month, no leading "0", and "69" is the last year to come.
        {"12011599", "January 15, 1999"},
        {"x130504", " 5, 2004"},
        {"x000004", " 0, 2004"},
        {"x024504", "February 45, 2004"},
        {"x010169", "January 1, 2069"},
        {"x010170", "January 1, 1970"},
        {"pr123199b", "December 31, 1999"},
    };
    for (const NameRow& row : kRows)
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
    const NameRow kRows[] = {
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
    for (const NameRow& row : kRows)
        EXPECT_EQ(PublicationOfName(row.text, settings), row.result) << row.text;
}

TEST(NewsNames, Today)
{
    EXPECT_EQ(DateCodeOf({.year = 2004, .month = 4, .day = 5}), "040504");
    EXPECT_EQ(DateCodeOf({.year = 1999, .month = 12, .day = 31}), "123199");
}

} // namespace
} // namespace kiv
