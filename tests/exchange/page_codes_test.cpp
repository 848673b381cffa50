// Lines of a page told in variables.
#include "exchange/page_codes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::Contains;
using testing::ElementsAre;

CodeValues Values()
{
    CodeValues values;
    values[Code::title] = "Bread";
    values[Code::prev] = "flour.htm";
    values[Code::prev_title] = "Flour";
    values[Code::file] = "bread.htm";
    values[Code::stem] = "bread";
    values[Code::number] = "2";
    values[Code::count] = "12";
    return values;
}

std::vector<std::string> SourcesOf(std::string_view line)
{
    std::vector<std::string> sources;
    for (const CodedLine& way : WaysToTell(line, Values())) {
        EXPECT_EQ(way.On(Values()), line);
        sources.push_back(way.Source().value_or("none"));
    }
    return sources;
}

TEST(PageCodes, StandForTitlesFilesAndPlaces)
{
    EXPECT_EQ(SourcesOf("<title>Bread - The mill</title>").back(),
              "@@8<title>@TITLE - The mill</title>");
    EXPECT_EQ(SourcesOf("<a href=\"flour.htm\" title=\"Flour\">")[1],
              "<a href=\"@PREV\" title=\"@PREVTITLE\">");
    EXPECT_THAT(SourcesOf("src/bread.txt of bread.htm"), Contains("src/@FILE.txt of @THIS"));
    EXPECT_EQ(SourcesOf("Page 2 of 12").back(), "Page @XOFY_X of @XOFY_Y");
}

TEST(PageCodes, StandForWholeWordsOnly)
{
    EXPECT_THAT(SourcesOf("Breadth and 2 loaves of 12"), ElementsAre("Breadth and 2 loaves of 12"));
}

TEST(PageCodes, AreLeftWhereABuildWouldReadAnother)
{
    // "@PREV" before "TITLE" is "@PREVTITLE".
    EXPECT_THAT(SourcesOf("{}Bread"), ElementsAre("none"));
    CodeValues values;
    values[Code::prev] = "a.";
    EXPECT_EQ(WaysToTell("a.TITLE", values).size(), 1U);
}

TEST(PageCodes, AreUnknownWithoutAValue)
{
    CodedLine line;
    line.AddCode(Code::next);
    EXPECT_EQ(line.On(Values()), std::nullopt);
}

} // namespace
} // namespace kiv
