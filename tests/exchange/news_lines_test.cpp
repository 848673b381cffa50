#include "exchange/news_lines.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(NewsLines, SixValues)
{
    const auto news =
        ReadNewsLine("!!1[March 5, 2004|pr030504|New wing|By Ann|Press Release|Soon]");
    ASSERT_TRUE(news);
    EXPECT_EQ(news->time, 1078444800);
    EXPECT_EQ(news->file, "pr030504");
    EXPECT_EQ(news->title, "New wing");
    EXPECT_EQ(news->byline, "By Ann");
    EXPECT_EQ(news->newspaper, "Press Release");
    EXPECT_EQ(news->subhead, "Soon");
}

TEST(NewsLines, EmptyValues)
{
    const auto news = ReadNewsLine("!!1[March 5, 2004|pr030504||||]");
    ASSERT_TRUE(news);
    EXPECT_EQ(news->title, "");
    EXPECT_EQ(news->subhead, "");
}

TEST(NewsLines, OtherLines)
{
    for (const char* const line :
         {"", "!!1[", "!!1[]", "!!2[March 5, 2004|a|b|c|d|e]", "!!1[cat.jpg|1|2|A cat|cat||]",
          "!!1[March 5, 2004|a|b|c|d]", "!!1[March 5, 2004|a|b|c|d|e|f]",
          "!!1[March 5, 2004||b|c|d|e]", "!!1[March 5, 2004|a|b|c|d|e] and more"})
        EXPECT_FALSE(ReadNewsLine(line)) << line;
}

} // namespace
} // namespace kiv
