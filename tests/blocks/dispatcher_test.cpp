#include "blocks/dispatcher.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

TEST(Dispatcher, EveryTagFindsItsExpander)
{
    const struct {
        std::string line;
        std::vector<std::string> further;
        std::string start;
    } rows[] = {
        {"<zuequation>x</zuequation>", {}, "\r\n<table border=0 cellpadding=0 cellspacing=2>"},
        {"<zuplaywright>",
         {"</zuplaywright>"},
         "<center><table border=0 cellspacing=0 cellpadding=5>"},
        {"<zuquiz1>", {"</zuquiz1>"}, "<SCRIPT LANGUAGE=\"JavaScript\">\r\n"},
        // the plain style
        {"<zuquiz2>",
         {"</zuquiz2>"},
         "<table width=\"100%\" border=0 cellspacing=0 cellpadding=0 border=0>"},
        {"<zusidebar1>", {}, "<table cellspacing=0 cellpadding=6 align=left width=150 border=0"},
        {"<zusidebar2>", {}, "<table cellspacing=0 cellpadding=6 align=right width=150 border=0"},
        {"<zusidebar3>", {}, "<table cellspacing=0 cellpadding=6 align=left width=200 border=0"},
        {"<zusidebar4>", {}, "<table cellspacing=0 cellpadding=6 align=right width=200 border=0"},
        {"<zusidebar5>", {}, "<table cellspacing=0 cellpadding=6 align=left width=250 border=0"},
        {"<zusidebar6>", {}, "<table cellspacing=0 cellpadding=6 align=right width=250 border=0"},
        {"<zutable>",
         {"</zutable>"},
         "<style>\r\n   .zutable {border-collapse:collapse;font:9pt/11pt "},
        {"<zutable1>",
         {"</zutable1>"},
         "<style>\r\n   .zutable1 {border-collapse:collapse;font:10pt/12pt "},
        {"<zutimeline1>",
         {"</zutimeline1>"},
         "<table border=0 cellspacing=0 cellpadding=2 bgcolor=293163>"},
    };
    for (const auto& row : rows) {
        BlockDesk desk(row.further);
        EXPECT_THAT(desk.Expand(row.line), StartsWith(row.start)) << row.line;
        EXPECT_THAT(desk.lines.Unread(), IsEmpty()) << row.line;
        EXPECT_THAT(desk.reporter.shown, IsEmpty()) << row.line;
    }
}

TEST(Dispatcher, LettersAfterTheZuMayBeUpperCase)
{
    BlockDesk table({"</zutable>"});
    EXPECT_THAT(table.Expand("<zuTable>"), StartsWith("<style>\r\n   .zutable {"));
    BlockDesk timeline({"</zutimeline1>"});
    EXPECT_THAT(timeline.Expand("<zuTIMELINE1>"), StartsWith("<table border=0 "));
}

TEST(Dispatcher, LinesThatStayAsWrittenWithoutAReport)
{
    const std::string rows[] = {
        "",           "no tag at all",
        "<ZUTABLE>", // the search wants a lower-case "<zu"
        "<Zutable>",  "<zUtable>",
        "</zutable>", // an end tag is no start tag
        "< zutable>",
    };
    for (const std::string& row : rows) {
        BlockDesk desk({"next"});
        EXPECT_EQ(desk.Expand(row), row);
        EXPECT_THAT(desk.reporter.shown, IsEmpty()) << row;
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("next")) << row;
    }
}

TEST(Dispatcher, AnUpperCaseTagBeforeOneIsPassedOver)
{
    BlockDesk desk;
    EXPECT_THAT(desk.Expand("<ZUTABLE><zusidebar1>"),
                StartsWith("<ZUTABLE><table cellspacing=0 cellpadding=6 align=left width=150 "));
}

TEST(Dispatcher, UnknownTagsAreReportedAndKept)
{
    const struct {
        std::string line;
        std::string tag;
    } rows[] = {
        {"<zutable class=x>", "<zutable class=x>"}, // an attribute makes a tag unknown
        {"<zutable >", "<zutable >"},
        {"<zutable2>", "<zutable2>"}, // known in included files alone
        {"<zutables>", "<zutables>"},
        {"<zutimeline>", "<zutimeline>"},
        {"<zusidebar>", "<zusidebar>"},
        {"<zusidebar7>", "<zusidebar7>"},
        {"<zuquiz3>", "<zuquiz3>"},
        {"<zu>", "<zu>"},
        {"a <zuFoo> b", "<zuFoo>"},          // named as written
        {"x <zu a <b> y>", "<zu a <b>"},     // to the first ">", another "<" or not
        {"> <zufoo>", "<zufoo>"},            // a ">" before the tag closes nothing
        {"<zufoo> <zusidebar1>", "<zufoo>"}, // the first tag alone counts
        {"<zufoo> <zutable>", "<zufoo>"},
    };
    for (const auto& row : rows) {
        BlockDesk desk({"next"});
        EXPECT_EQ(desk.Expand(row.line), row.line);
        EXPECT_THAT(desk.reporter.shown, ElementsAre(row.tag + " is unknown!"));
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("next")) << row.line;
    }
}

TEST(Dispatcher, ARunOfEqualUnknownTagsIsReportedOnce)
{
    BlockDesk desk;
    desk.Expand("<zuone> first");
    desk.Expand("second <zuone>");
    EXPECT_THAT(desk.reporter.shown, ElementsAre("<zuone> is unknown!"));
    desk.Expand("<zuOne>"); // another case is another tag
    desk.Expand("<zuone>");
    EXPECT_THAT(desk.reporter.shown,
                ElementsAre("<zuone> is unknown!", "<zuOne> is unknown!", "<zuone> is unknown!"));
}

TEST(Dispatcher, TheLastUnknownTagOutlivesKnownTagsAndFaults)
{
    BlockDesk desk;
    desk.Expand("<zuone>");
    desk.Expand("<zusidebar1>");
    desk.Expand("no tag");
    desk.Expand("<zu");
    desk.Expand("<zuone>");
    EXPECT_THAT(desk.reporter.shown,
                ElementsAre("<zuone> is unknown!", "Oops! Missing close '>' in: <zu"));
}

TEST(Dispatcher, TheMemoryIsTheCallersAndOutlivesABuild)
{
    BlockMemory memory;
    BlockDesk first;
    BlockDesk second;
    BlockContext first_build{first.lines, first.files, first.reporter, first.style_sheet, memory};
    BlockContext second_build{second.lines, second.files, second.reporter, second.style_sheet,
                              memory};
    std::string line = "<zuone>";
    zuloop(line, 1, first_build);
    zuloop(line, 1, second_build);
    EXPECT_THAT(first.reporter.shown, ElementsAre("<zuone> is unknown!"));
    EXPECT_THAT(second.reporter.shown, IsEmpty());
}

TEST(Dispatcher, ATagWithoutCloseIsReportedEachTime)
{
    BlockDesk desk;
    EXPECT_EQ(desk.Expand("<zu"), "<zu");
    EXPECT_EQ(desk.Expand("> a <zutable"), "> a <zutable");
    EXPECT_EQ(desk.Expand("<zu"), "<zu");
    EXPECT_THAT(desk.reporter.shown, ElementsAre("Oops! Missing close '>' in: <zu",
                                                 "Oops! Missing close '>' in: > a <zutable",
                                                 "Oops! Missing close '>' in: <zu"));
}

TEST(Dispatcher, OnlyTheFirstTagOfALineIsExpanded)
{
    BlockDesk desk;
    EXPECT_EQ(desk.Expand("<zusidebar1>a</zusidebar1> <zusidebar2>b</zusidebar2>"),
              "<table cellspacing=0 cellpadding=6 align=left width=150 border=0 "
              "bgcolor=\"#ffeecc\" hspace=7><TR><TD>"
              "<font face='verdana,geneva,arial,helvetica,helv' size=2>a</td></tr></table> "
              "<zusidebar2>b</zusidebar2>");
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
}

TEST(Dispatcher, ATagInTheTextOfABlockIsNotExpandedAfterwards)
{
    BlockDesk desk({"1850|<zusidebar1>Bridge", "</zutimeline1>", "next"});
    EXPECT_EQ(
        desk.Expand("<zutimeline1>"),
        "<table border=0 cellspacing=0 cellpadding=2 bgcolor=293163><tr><td>"
        "<table border=0 cellspacing=2 cellpadding=6 bgcolor=white>"
        "<tr><td bgcolor=293163><b><font color=white>1850</td><td><zusidebar1>Bridge</td></tr>"
        "</table></td></tr></table>");
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
    EXPECT_THAT(desk.lines.Unread(), ElementsAre("next"));
}

} // namespace
} // namespace kiv
