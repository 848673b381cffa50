#include "blocks/play_scripts.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kOpening = "<center><table border=0 cellspacing=0 cellpadding=5>";
const std::string kClosing = "</table></center><p>";

TEST(PlayScripts, Blocks)
{
    const struct {
        std::vector<std::string> lines;
        std::string expanded;
    } rows[] = {
        {{"</zuplaywright>"}, kOpening + kClosing},
        {{"HAMLET\tTo be, or not to be", "</zuplaywright>"},
         kOpening +
             "<tr><td align=right valign=top><font face='geneva,arial,helvetica,helv' size=2 "
             "color=#aa0000>HAMLET</font></td><td>To be, or not to be</td></tr>" +
             kClosing},
        {{"Exit ghost", "</zuplaywright>"}, // no tab: across both columns
         kOpening +
             "<tr><td colspan=2><font face='geneva,arial,helvetica,helv' size=2>Exit ghost"
             "</td></tr>" +
             kClosing},
        {{"", "</zuplaywright>"}, // an empty line is a row
         kOpening +
             "<tr><td colspan=2><font face='geneva,arial,helvetica,helv' size=2>"
             "</td></tr>" +
             kClosing},
        {{" A \tb\tc", "\t", "</zuplaywright> rest dropped"}, // the first tab; nothing is trimmed
         kOpening +
             "<tr><td align=right valign=top><font face='geneva,arial,helvetica,helv' size=2 "
             "color=#aa0000> A </font></td><td>b\tc</td></tr>"
             "<tr><td align=right valign=top><font face='geneva,arial,helvetica,helv' size=2 "
             "color=#aa0000></font></td><td></td></tr>" +
             kClosing},
        {{"</zuplaywright", "</ZUPLAYWRIGHT>", "<ZU", " @x", "</zuplaywright>"}, // near misses
         kOpening +
             "<tr><td colspan=2><font face='geneva,arial,helvetica,helv' size=2>"
             "</zuplaywright</td></tr>"
             "<tr><td colspan=2><font face='geneva,arial,helvetica,helv' size=2>"
             "</ZUPLAYWRIGHT></td></tr>"
             "<tr><td colspan=2><font face='geneva,arial,helvetica,helv' size=2><ZU</td></tr>"
             "<tr><td colspan=2><font face='geneva,arial,helvetica,helv' size=2> @x</td></tr>" +
             kClosing},
        {{"a <zutable>", "</zuplaywright>"}, // a tag counts at the start of the line alone
         kOpening +
             "<tr><td colspan=2><font face='geneva,arial,helvetica,helv' size=2>a <zutable>"
             "</td></tr>" +
             kClosing},
    };
    for (const auto& row : rows) {
        BlockDesk desk(row.lines);
        EXPECT_EQ(desk.Expand("before <zuplaywright> after"), row.expanded);
        EXPECT_THAT(desk.reporter.shown, IsEmpty());
        EXPECT_THAT(desk.lines.Unread(), IsEmpty());
    }
}

TEST(PlayScripts, TheNextPageEndsTheBlockWithWhatWasMadeSoFar)
{
    BlockDesk desk({"one", "@FILE = next", "rest"});
    EXPECT_EQ(desk.Expand("<zuplaywright>"), "@FILE = next");
    EXPECT_THAT(desk.reporter.shown,
                ElementsAre("BIG OOPS! Missing close zuplaywright: " + kOpening +
                            "<tr><td colspan=2><font face='geneva,arial,helvetica,helv' size=2>one"
                            "</td></tr>"));
    EXPECT_THAT(desk.lines.Unread(), ElementsAre("rest"));
}

TEST(PlayScripts, ADoubleAtEndsTheBlockToo)
{
    BlockDesk desk({"@@1 = x"});
    EXPECT_EQ(desk.Expand("<zuplaywright>"), "@@1 = x");
    EXPECT_THAT(desk.reporter.shown,
                ElementsAre("BIG OOPS! Missing close zuplaywright: " + kOpening));
}

TEST(PlayScripts, AnotherBlockEndsItAndLosesItsStartTag)
{
    BlockDesk desk({"one", "<zutable>", "a\tb", "</zutable>"});
    EXPECT_EQ(desk.Expand("<zuplaywright>"), "a\tb");
    EXPECT_THAT(desk.reporter.shown, ElementsAre("Oops! zuplaywright error before: a\tb"));
    EXPECT_THAT(desk.lines.Unread(), ElementsAre("</zutable>"));
}

TEST(PlayScripts, TheLineAfterAnotherBlocksTagIsTakenWhateverItIs)
{
    BlockDesk desk({"<zu", "@FILE = next", "rest"});
    EXPECT_EQ(desk.Expand("<zuplaywright>"), "@FILE = next");
    EXPECT_THAT(desk.reporter.shown, ElementsAre("Oops! zuplaywright error before: @FILE = next"));
    EXPECT_THAT(desk.lines.Unread(), ElementsAre("rest"));
}

TEST(PlayScripts, TheEndOfTheSourceIsFatal)
{
    BlockDesk desk({"one"});
    EXPECT_EQ(ErrorOf([&] { desk.Expand("<zuplaywright>"); }), ErrorKind::end_of_file);
    BlockDesk after_tag({"<zutable>"});
    EXPECT_EQ(ErrorOf([&] { after_tag.Expand("<zuplaywright>"); }), ErrorKind::end_of_file);
    EXPECT_THAT(after_tag.reporter.shown, IsEmpty());
}

} // namespace
} // namespace kiv
