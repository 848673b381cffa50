// From an element on a page to the line that has it.
#include "preview/element_source.h"
#include "tests/shell/shell_desk.h"
#include "text/text.h"

namespace kiv {
namespace {

class ElementSources : public ShellTest {
  protected:
    void Build(const std::string& page_list)
    {
        Put("site/_template.txt", "<h1>@TITLE</h1>\r\n<!--BODY HERE-->\r\n"
                                  "<a href=\"@PREV\"><b>back</b></a> <i>@TITLE</i>\r\n");
        Put("site/_html.txt", page_list);
        workspace.switchto("C:\\site");
        page_ = TellPage(workspace, "C:\\site\\a.htm");
        ASSERT_EQ(page_.trouble, "");
    }

    /// The place of the tag that begins so, "_html.txt:4", on the `nth` line that has it.
    std::string PlaceOf(const std::string& tag, int nth = 1) const
    {
        for (std::size_t i = 0; i < page_.lines.size(); ++i) {
            const std::size_t at = page_.lines[i].text.find(tag);
            if (at == npos || --nth > 0)
                continue;
            const std::optional<ToldPlace> place = SourceOfElement(page_, i, at + 1);
            if (!place)
                return "none";
            const std::string last =
                place->last > place->first ? "-" + std::to_string(place->last) : "";
            return place->file.substr(8) + ":" + std::to_string(place->first) + last;
        }
        return "no such tag";
    }

    PageStories page_;
};

TEST_F(ElementSources, LinesOfThePageListAndOfTheTemplate)
{
    Build("@FILE = a\r\n@TITLE = One\r\n<p>text\r\n<em>more</em>\r\n");
    EXPECT_EQ(PlaceOf("<p>"), "_html.txt:3");
    EXPECT_EQ(PlaceOf("<em>"), "_html.txt:4");
    EXPECT_EQ(PlaceOf("<h1>"), "_template.txt:1");
}

TEST_F(ElementSources, ATagWhoseValueWasFilledInStaysWhereItWasWritten)
{
    Build("@FILE = z\r\n@TITLE = Nought\r\nx\r\n@FILE = a\r\n@TITLE = One\r\n<p>text\r\n");
    EXPECT_EQ(PlaceOf("<a href"), "_template.txt:3");
    EXPECT_EQ(PlaceOf("<b>"), "_template.txt:3");
    EXPECT_EQ(PlaceOf("<i>"), "_template.txt:3");
}

TEST_F(ElementSources, WhatAMacroBringsIsInItsDefinition)
{
    Build("!!1 = <em>Mr !1</em>\r\n!!2 = plain !1\r\n@FILE = a\r\n@TITLE = One\r\n"
          "<p>Ask !!1[Ann] and <u>me</u>\r\n<q>!!2[x]</q>\r\n");
    EXPECT_EQ(PlaceOf("<em>"), "_html.txt:1");
    EXPECT_EQ(PlaceOf("<p>"), "_html.txt:5");
    EXPECT_EQ(PlaceOf("<u>"), "_html.txt:5");
    EXPECT_EQ(PlaceOf("<q>"), "_html.txt:6");
}

TEST_F(ElementSources, TagsInATitleAreTheTitles)
{
    Build("@FILE = a\r\n@TITLE = One <s>two</s>\r\n<p>text\r\n");
    EXPECT_EQ(PlaceOf("<s>"), "_html.txt:2");
    EXPECT_EQ(PlaceOf("<h1>"), "_template.txt:1");
}

TEST_F(ElementSources, CellsOfATableAreInTheirOwnLines)
{
    Build("@FILE = a\r\n@TITLE = One\r\n<zutable>\r\nh:Name\tAge\r\nAnn\t31\r\nBob\t^^231\r\n"
          "Ann\t31\r\n\t\r\n</zutable>\r\n<p>after\r\n");
    EXPECT_EQ(PlaceOf("<th"), "_html.txt:4");
    EXPECT_EQ(PlaceOf("<td class=\"r1\">Ann"), "_html.txt:5");
    EXPECT_EQ(PlaceOf("<td class=\"r1\">Bob"), "_html.txt:6");
    EXPECT_EQ(PlaceOf("<td class=\"r1\">Ann", 2), "_html.txt:7");
    EXPECT_EQ(PlaceOf("<table"), "_html.txt:3-9");
    EXPECT_EQ(PlaceOf("<p>after"), "_html.txt:10");
}

TEST_F(ElementSources, ShortWordsOfCellsAreNotTakenForPartsOfTagsOrOptions)
{
    Build("@FILE = a\r\n@TITLE = One\r\n<zutable>\r\nclass:tab\r\na\tb\r\ntab\r\nable\t1\r\n"
          "le\t{{x}}1\r\nclass:tab\r\nc<b>d</b>\tz\r\nu\tt\r\n</zutable>\r\n");
    EXPECT_EQ(PlaceOf("<td class=\"r1\">a<"), "_html.txt:5");
    EXPECT_EQ(PlaceOf("<td class=\"r2\">b<"), "_html.txt:5");
    EXPECT_EQ(PlaceOf("<td class=\"r1\">tab"), "_html.txt:6");
    EXPECT_EQ(PlaceOf("<td class=\"r1\">able"), "_html.txt:7");
    EXPECT_EQ(PlaceOf("<td class=\"r1\">le"), "_html.txt:8");
    EXPECT_EQ(PlaceOf("<td class=\"x\">1"), "_html.txt:8");
    EXPECT_EQ(PlaceOf("<td class=\"r1\">class:tab"), "_html.txt:9");
    EXPECT_EQ(PlaceOf("<b>d"), "_html.txt:10");
    EXPECT_EQ(PlaceOf("<td class=\"r1\">u<"), "_html.txt:11");
}

TEST_F(ElementSources, MacrosInATableAreThere)
{
    Build("!!1 = <em>Mr !1</em>\r\n@FILE = a\r\n@TITLE = One\r\n<zutable>\r\nAnn\t31\r\n"
          "!!1[Bob]\t22\r\n</zutable>\r\n");
    EXPECT_EQ(PlaceOf("<em>"), "_html.txt:1");
    EXPECT_EQ(PlaceOf("<td class=\"r1\"><em>"), "_html.txt:6");
}

TEST_F(ElementSources, IncludedLinesAreInTheirFile)
{
    Put("site/more.txt", "<p>one\r\n<dl>two\r\n");
    Build("@FILE = a\r\n@TITLE = One\r\n++more.txt\r\n");
    EXPECT_EQ(PlaceOf("<dl>"), "more.txt:2");
}

} // namespace
} // namespace kiv
