#include "blocks/timelines.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kOpening = "<table border=0 cellspacing=0 cellpadding=2 bgcolor=293163><tr><td>"
                             "<table border=0 cellspacing=2 cellpadding=6 bgcolor=white>";
const std::string kClosing = "</table></td></tr></table>";

TEST(Timelines, Blocks)
{
    const struct {
        std::vector<std::string> lines;
        std::string expanded;
    } rows[] = {
        {{"</zutimeline1>"}, kOpening + kClosing}, // the two tables with no rows
        {{"1850|Bridge|opened", "</zutimeline1>"}, // parted at the first bar
         kOpening +
             "<tr><td bgcolor=293163><b><font color=white>1850</td>"
             "<td>Bridge|opened</td></tr>" +
             kClosing},
        {{" 1850 | Bridge ", "|", "a|", "</zutimeline"}, // nothing is trimmed
         kOpening +
             "<tr><td bgcolor=293163><b><font color=white> 1850 </td><td> Bridge </td></tr>"
             "<tr><td bgcolor=293163><b><font color=white></td><td></td></tr>"
             "<tr><td bgcolor=293163><b><font color=white>a</td><td></td></tr>" +
             kClosing},
        {{"</zutimeline9 and more | text"}, kOpening + kClosing}, // the rest of the line is dropped
        {{" @a|b", "a@|b", "</zutimeline1>"}, // "@" counts at the very start alone
         kOpening +
             "<tr><td bgcolor=293163><b><font color=white> @a</td><td>b</td></tr>"
             "<tr><td bgcolor=293163><b><font color=white>a@</td><td>b</td></tr>" +
             kClosing},
        {{"</zuTimeline1>|", "</zutimeline1>"}, // the end tag is exact; this is an event
         kOpening +
             "<tr><td bgcolor=293163><b><font color=white></zuTimeline1></td><td></td></tr>" +
             kClosing},
        {{"<zutable>|x", "</zutimeline1>"}, // another block's tag is text
         kOpening + "<tr><td bgcolor=293163><b><font color=white><zutable></td><td>x</td></tr>" +
             kClosing},
    };
    for (const auto& row : rows) {
        BlockDesk desk(row.lines);
        EXPECT_EQ(desk.Expand("before <zutimeline1> after"), row.expanded);
        EXPECT_THAT(desk.reporter.shown, IsEmpty());
        EXPECT_THAT(desk.lines.Unread(), IsEmpty());
    }
}

TEST(Timelines, FaultsDiscardTheBlockAndKeepTheLine)
{
    const struct {
        std::vector<std::string> lines;
        std::string kept, report;
    } rows[] = {
        {{"a|b", "@FILE = next|x", "rest"}, "@FILE = next|x", "BIG OOPS! zutimeline"},
        {{"@@1 = a|b", "rest"}, "@@1 = a|b", "BIG OOPS! zutimeline"}, // "@@" as well
        {{"a|b", "no bar", "rest"}, "no bar", "Oops! zutimeline"},
        {{"", "rest"}, "", "Oops! zutimeline"},
        {{"</zutable>", "rest"}, "</zutable>", "Oops! zutimeline"},
        {{"a|b", "<zutable>", "rest"}, "<zutable>", "Oops! zutimeline"}, // into another block
    };
    for (const auto& row : rows) {
        BlockDesk desk(row.lines);
        EXPECT_EQ(desk.Expand("<zutimeline1>"), row.kept);
        EXPECT_THAT(desk.reporter.shown, ElementsAre(row.report));
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("rest"));
    }
}

TEST(Timelines, TheEndOfTheSourceIsFatal)
{
    BlockDesk desk({"a|b"});
    EXPECT_EQ(ErrorOf([&] { desk.Expand("<zutimeline1>"); }), ErrorKind::end_of_file);
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
}

} // namespace
} // namespace kiv
