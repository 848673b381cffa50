#include "blocks/tables.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kOpening = "<table cellspacing=\"0\" cellpadding=\"0\">\r\n";

/// Runs a block whose end tag is added here.
std::string Expand(std::vector<std::string> lines, const std::string& tag_line = "<zutable2>")
{
    lines.emplace_back("</zutable2>");
    BlockDesk desk(std::move(lines));
    std::string line = tag_line;
    zutabtable2(line, desk.context);
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
    EXPECT_THAT(desk.lines.Unread(), IsEmpty());
    EXPECT_EQ(desk.style_sheet, "");
    return line;
}

TEST(IncludedTables, Rows)
{
    const struct {
        std::vector<std::string> lines;
        std::string expanded; // after the opening, up to "</table>"
    } rows[] = {
        {{}, ""},
        {{"a"}, "<tr><td>a</td></tr>\r\n"},
        {{"a\t b \t", "c"},
         "<tr><td>a</td><td>b</td><td>&nbsp;</td></tr>\r\n<tr><td>c</td></tr>\r\n"},
        {{""}, "<tr><td>&nbsp;</td></tr>\r\n"}, // one empty cell
        {{"   "}, "<tr><td></td></tr>\r\n"},
        // Codes are read and dropped.
        {{"^^2a\t++3b\t##ffcc00c"}, "<tr><td>a</td><td>b</td><td>c</td></tr>\r\n"},
        {{"++2^^3##ffcc00 a "}, "<tr><td>a</td></tr>\r\n"},
        {{"++3\t^^\t##12"}, "<tr><td></td><td></td><td></td></tr>\r\n"},
        {{"{{note}}a\t{{b"}, "<tr><td>{{note}}a</td><td>{{b</td></tr>\r\n"}, // no code here
        {{"++2{{n}}a"}, "<tr><td>{{n}}a</td></tr>\r\n"},
        {{" ^^2a"}, "<tr><td>^^2a</td></tr>\r\n"},
        // What is a setting elsewhere, or comes after the first row, is a row.
        {{"class:x"}, "<tr><td>class:x</td></tr>\r\n"},
        {{"width:1"}, "<tr><td>width:1</td></tr>\r\n"},
        {{"H:x"}, "<tr><td>H:x</td></tr>\r\n"},
        {{"Align:left"}, "<tr><td>Align:left</td></tr>\r\n"},
        {{"cols:4"}, "<tr><td>cols:4</td></tr>\r\n"},
        {{"a", "h:x", "align:left", "cols:"},
         "<tr><td>a</td></tr>\r\n<tr><td>h:x</td></tr>\r\n<tr><td>align:left</td></tr>\r\n"
         "<tr><td>cols:</td></tr>\r\n"},
        {{"cols:"}, ""}, // taken, and without effect
        {{"<zutable>"}, "<tr><td><zutable></td></tr>\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Expand(row.lines), kOpening + row.expanded + "</table>");
}

TEST(IncludedTables, TheWholeTagLineIsReplaced)
{
    for (const std::string tag_line :
         {"<zutable>", "<zutable1>", "<zutabs", "before <zutab x> after"})
        EXPECT_EQ(Expand({"a"}, tag_line), kOpening + "<tr><td>a</td></tr>\r\n</table>")
            << tag_line;
}

TEST(IncludedTables, EndLines)
{
    for (const std::string end : {"</zutable>", "</zutable1>", "</zutable2> rest", "</zutable"}) {
        BlockDesk desk({end, "rest"});
        std::string line = "<zutable2>";
        zutabtable2(line, desk.context);
        EXPECT_EQ(line, kOpening + "</table>") << end;
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("rest"));
    }
}

TEST(IncludedTables, Headings)
{
    const struct {
        std::vector<std::string> lines;
        std::string expanded;
    } rows[] = {
        {{"h: Title ", "a\tb", "c"},
         "<tr><td "
         "colspan=2>Title</td></tr><tr><td>a</td><td>b</td></tr>\r\n<tr><td>c</td></tr>\r\n"},
        {{"h:Title"}, "<tr><td colspan=1>Title</td></tr>"}, // no rows count as one column
        {{"h:"}, "<tr><td colspan=1></td></tr>"},
        {{"h:one", "h:two", "a"}, // each leaves its mark, all become the last
         "<tr><td colspan=1>two</td></tr><tr><td colspan=1>two</td></tr><tr><td>a</td></tr>\r\n"},
        {{"h:of %%colcounter%%", "a\tb\tc"}, // the user's marks are hit as well
         "<tr><td colspan=3>of 3</td></tr><tr><td>a</td><td>b</td><td>c</td></tr>\r\n"},
        {{"h:T", "a %%headtext%%"},
         "<tr><td colspan=1>T</td></tr><tr><td>a <tr><td colspan=1>T</td></tr></td></tr>\r\n"},
        {{"h:%%headtext%%"}, "<tr><td colspan=1>%%headtext%%</td></tr>"}, // not searched again
        {{"a %%headtext%% %%colcounter%%"},                               // no heading: they stay
         "<tr><td>a %%headtext%% %%colcounter%%</td></tr>\r\n"},
        {{"h:T", "%%colcounter%%"}, // columns are counted in the heading alone
         "<tr><td colspan=1>T</td></tr><tr><td>%%colcounter%%</td></tr>\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Expand(row.lines), kOpening + row.expanded + "</table>");
}

TEST(IncludedTables, Alignment)
{
    const struct {
        std::vector<std::string> settings;
        std::string cell, end; // of a row "x %%ALIGN%% y%%ALIGN%%"
    } rows[] = {
        {{}, "x y%%ALIGN%%", "</table>"}, // none: the mark goes with its blank
        {{"align:"}, "x y%%ALIGN%%", "</table>"},
        {{"align:  "}, "x y%%ALIGN%%", "</table>"},
        {{"align:left"}, "x align=left hspace=8 yalign=left hspace=8", "</table>\r\n"},
        {{"align: right "}, "x align=right hspace=8 yalign=right hspace=8", "</table>\r\n"},
        {{"align:full"}, "x width=100%  ywidth=100% ", "</table>\r\n"},
        {{"align:center"}, "x  y", "</table>\r\n"},
        {{"align:LEFT"}, "x  y", "</table>\r\n"}, // exact
        {{"align:left", "align:right"},
         "x align=right hspace=8 yalign=right hspace=8",
         "</table>\r\n"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> lines = row.settings;
        lines.emplace_back("x %%ALIGN%% y%%ALIGN%%");
        EXPECT_EQ(Expand(lines), kOpening + "<tr><td>" + row.cell + "</td></tr>\r\n" + row.end);
    }
    EXPECT_EQ(Expand({"%%align%%"}), kOpening + "<tr><td>%%align%%</td></tr>\r\n</table>");
    // The heading comes in afterwards, so its mark stays.
    EXPECT_EQ(Expand({"h:T %%ALIGN%%", "align:left"}),
              kOpening + "<tr><td colspan=1>T %%ALIGN%%</td></tr></table>\r\n");
}

TEST(IncludedTables, OrangeTagsBecomeAFontColour)
{
    EXPECT_EQ(Expand({"h:<zuorange>T</zuorange>", "<zuorange>a</zuorange>\t<ZUORANGE>"}),
              kOpening + "<tr><td colspan=2><font color=\"#FFE4C1\">T</font></td></tr>"
                         "<tr><td><font color=\"#FFE4C1\">a</font></td><td><ZUORANGE></td></tr>\r\n"
                         "</table>");
}

TEST(IncludedTables, AnyAtLineIsAFault)
{
    for (const std::string at : {"@FILE = x", "@@1 = x", "@"}) {
        BlockDesk desk({"a", at, "rest"});
        std::string line = "<zutable2>";
        zutabtable2(line, desk.context);
        EXPECT_EQ(line, at);
        EXPECT_THAT(desk.reporter.shown, ElementsAre("BIG OOPS! zutable!!"));
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("rest"));
    }
}

TEST(IncludedTables, TheEndOfTheSourceIsFatal)
{
    BlockDesk desk({"a"});
    std::string line = "<zutable2>";
    EXPECT_EQ(ErrorOf([&] { zutabtable2(line, desk.context); }), ErrorKind::end_of_file);
}

TEST(Orange, EveryTagIsReplaced)
{
    const struct {
        std::string text, expanded;
    } rows[] = {
        {"", ""},
        {"plain", "plain"},
        {"<zuorange>a</zuorange><zuorange>b",
         "<font color=\"#FFE4C1\">a</font><font color=\"#FFE4C1\">b"},
        {"</zuorange>", "</font>"},
        {"<zuOrange>a</ZUORANGE>", "<zuOrange>a</ZUORANGE>"}, // exact case
    };
    for (const auto& row : rows)
        EXPECT_EQ(zuorange(row.text), row.expanded);
}

} // namespace
} // namespace kiv
