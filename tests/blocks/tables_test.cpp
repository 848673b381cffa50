#include "blocks/tables.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

/// The style text of a class, with `columns` column lines.
std::string Style(const std::string& css_class, const std::string& font, int columns)
{
    const std::string selector = "   ." + css_class + " ";
    std::string style =
        "<style>\r\n" + selector + "{border-collapse:collapse;font:" + font +
        " arial,sans-serif;}\r\n" + selector +
        "th {border:1px black solid;background-color:#eee;font-weight:bold;text-align:center;"
        "vertical-align: top;}\r\n" +
        selector + "td {border:1px black solid;padding:2px 4px;vertical-align: top;}\r\n";
    for (int n = 1; n <= columns; ++n)
        style += selector + "td.r" + std::to_string(n) + " {padding:2px 4px;text-align:left;}\r\n";
    return style + "</style>\r\n";
}

std::string Small(int columns)
{
    return Style("zutable", "9pt/11pt", columns);
}

std::string Expand(const std::vector<std::string>& lines, const std::string& tag = "<zutable>")
{
    BlockDesk desk(lines);
    std::string table = desk.Expand(tag);
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
    EXPECT_THAT(desk.lines.Unread(), IsEmpty());
    EXPECT_EQ(desk.style_sheet, "");
    return table;
}

/// What stands between "<table …>" and "</table>" for these lines.
std::string Rows(std::vector<std::string> lines)
{
    lines.emplace_back("</zutable>");
    const std::string table = Expand(lines);
    const std::string opening = "<table class=\"zutable\">\r\n";
    const std::string closing = "</table>\r\n";
    EXPECT_THAT(table, EndsWith(closing));
    const std::size_t start = table.find(opening) + opening.size();
    return table.substr(start, table.size() - closing.size() - start);
}

TEST(Tables, OneWholeTableByTheByte)
{
    EXPECT_EQ(Expand({"h:Name\tAge", "Ann\t^^2##ffcc0031", "Bob", "</zutable>"}),
              "<style>\r\n"
              "   .zutable {border-collapse:collapse;font:9pt/11pt arial,sans-serif;}\r\n"
              "   .zutable th {border:1px black solid;background-color:#eee;font-weight:bold;"
              "text-align:center;vertical-align: top;}\r\n"
              "   .zutable td {border:1px black solid;padding:2px 4px;vertical-align: top;}\r\n"
              "   .zutable td.r1 {padding:2px 4px;text-align:left;}\r\n"
              "   .zutable td.r2 {padding:2px 4px;text-align:left;}\r\n"
              "</style>\r\n"
              "<table class=\"zutable\">\r\n"
              "<tr><th class=\"r1\">Name</th><th class=\"r2\">Age</th></tr>\r\n"
              "<tr><td class=\"r1\">Ann</td>"
              "<td rowspan=2 style=\"background-color:#ffcc00;\"  class=\"r2\">31</td></tr>\r\n"
              "<tr><td class=\"r1\">Bob</td></tr>\r\n"
              "</table>\r\n");
}

TEST(Tables, KindsDifferInClassAndFont)
{
    EXPECT_EQ(Expand({"</zutable1>"}, "<zutable1>"),
              Style("zutable1", "10pt/12pt", 1) + "<table class=\"zutable1\">\r\n</table>\r\n");
    // Without rows there is one column line all the same.
    EXPECT_EQ(Expand({"</zutable>"}), Small(1) + "<table class=\"zutable\">\r\n</table>\r\n");
}

TEST(Tables, TheRestOfTheTagLinesIsDropped)
{
    EXPECT_EQ(Expand({"</zutable> after"}, "ASP:before <zutable> after"),
              Small(1) + "<table class=\"zutable\">\r\n</table>\r\n");
}

TEST(Tables, EndLines)
{
    for (const std::string end : {"</zutable>", "</zutable1>", "</zutable2>", "</zutable",
                                  "</zutablex", "h:</zutable>"}) // "h:" goes before the test
        EXPECT_EQ(Expand({end}), Small(1) + "<table class=\"zutable\">\r\n</table>\r\n") << end;
}

TEST(Tables, RowsAndCells)
{
    const struct {
        std::vector<std::string> lines;
        std::string rows;
    } rows[] = {
        {{"a"}, "<tr><td class=\"r1\">a</td></tr>\r\n"},
        {{"a\tb", "c"},
         "<tr><td class=\"r1\">a</td><td class=\"r2\">b</td></tr>\r\n"
         "<tr><td class=\"r1\">c</td></tr>\r\n"},
        {{""}, "<tr><td class=\"r1\">&nbsp;</td></tr>\r\n"}, // one empty cell
        {{"a\t\tb\t"},
         "<tr><td class=\"r1\">a</td><td class=\"r2\">&nbsp;</td><td class=\"r3\">b</td>"
         "<td class=\"r4\">&nbsp;</td></tr>\r\n"},
        {{"\t"}, "<tr><td class=\"r1\">&nbsp;</td><td class=\"r2\">&nbsp;</td></tr>\r\n"},
        {{"  a b  \t   "}, // blanks alone are not an empty cell, and are trimmed to nothing
         "<tr><td class=\"r1\">a b</td><td class=\"r2\"></td></tr>\r\n"},
        {{"x", "h:A\tB", "y"}, // a header row anywhere
         "<tr><td class=\"r1\">x</td></tr>\r\n"
         "<tr><th class=\"r1\">A</th><th class=\"r2\">B</th></tr>\r\n"
         "<tr><td class=\"r1\">y</td></tr>\r\n"},
        {{"h:"}, "<tr><th class=\"r1\">&nbsp;</th></tr>\r\n"},
        {{"H:A"}, "<tr><td class=\"r1\">H:A</td></tr>\r\n"}, // exact case
        {{"a\th:b"}, "<tr><td class=\"r1\">a</td><td class=\"r2\">h:b</td></tr>\r\n"},
        {{"h:h:A"}, "<tr><th class=\"r1\">h:A</th></tr>\r\n"},
        {{"@@1 = x"}, "<tr><td class=\"r1\">@@1 = x</td></tr>\r\n"},
        {{"@@"}, "<tr><td class=\"r1\">@@</td></tr>\r\n"},
        {{"h:@TITLE = x"}, "<tr><th class=\"r1\">@TITLE = x</th></tr>\r\n"},
        {{" @x"}, "<tr><td class=\"r1\">@x</td></tr>\r\n"},
        {{"</ZUTABLE>", " </zutable>"}, // the end line is exact
         "<tr><td class=\"r1\"></ZUTABLE></td></tr>\r\n"
         "<tr><td class=\"r1\"></zutable></td></tr>\r\n"},
        {{"<zutable>"}, "<tr><td class=\"r1\"><zutable></td></tr>\r\n"}, // another block's tag
        {{"; a comment"}, "<tr><td class=\"r1\">; a comment</td></tr>\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Rows(row.lines), row.rows) << row.lines.front();
}

TEST(Tables, CodesHoldForTheirCellAlone)
{
    EXPECT_EQ(Rows({"^^2##ffcc00{{n}}a\tb", "c"}),
              "<tr><td rowspan=2 style=\"background-color:#ffcc00;\"  class=\"n\">a</td>"
              "<td class=\"r2\">b</td></tr>\r\n"
              "<tr><td class=\"r1\">c</td></tr>\r\n");
    EXPECT_EQ(Rows({"h:++2a"}), "<tr><th colspan=2 class=\"r1\">a</th></tr>\r\n");
}

TEST(Tables, TheWidestRowCountsTheColumnStyles)
{
    EXPECT_EQ(
        Expand({"a", "a\tb\tc", "a\tb", "</zutable>"}),
        Small(3) +
            "<table class=\"zutable\">\r\n"
            "<tr><td class=\"r1\">a</td></tr>\r\n"
            "<tr><td class=\"r1\">a</td><td class=\"r2\">b</td><td class=\"r3\">c</td></tr>\r\n"
            "<tr><td class=\"r1\">a</td><td class=\"r2\">b</td></tr>\r\n"
            "</table>\r\n");
}

TEST(Tables, SettingsBeforeTheFirstRow)
{
    const struct {
        std::vector<std::string> lines;
        std::string tag;
    } rows[] = {
        {{"width:100%"}, "<table class=\"zutable\" width=\"100%\">"},
        {{"WIDTH:  50 "}, "<table class=\"zutable\" width=\"50\">"}, // any case, trimmed
        {{"width:"}, "<table class=\"zutable\" width=\"\">"},
        {{"width:10", "width:20"}, "<table class=\"zutable\" width=\"20\">"},
        {{"h:width:10"}, "<table class=\"zutable\" width=\"10\">"}, // "h:" goes before the test
        {{"cols:"}, "<table class=\"zutable\">"},                   // taken, and without effect
        {{"h:cols:"}, "<table class=\"zutable\">"},
        {{"cols:", "Width:7", "cols:"}, "<table class=\"zutable\" width=\"7\">"},
        {{"class:zutable"}, "<table class=\"zutable\">"},
    };
    for (const auto& row : rows) {
        std::vector<std::string> lines = row.lines;
        lines.emplace_back("</zutable>");
        EXPECT_EQ(Expand(lines), Small(1) + row.tag + "\r\n</table>\r\n") << row.lines.front();
    }
}

TEST(Tables, NoSettings)
{
    const struct {
        std::vector<std::string> lines;
        std::string rows;
    } rows[] = {
        {{"cols:4"}, "<tr><td class=\"r1\">cols:4</td></tr>\r\n"}, // a bare "cols:" alone is one
        {{"cols: "}, "<tr><td class=\"r1\">cols:</td></tr>\r\n"},
        {{"Cols:"}, "<tr><td class=\"r1\">Cols:</td></tr>\r\n"}, // exact case
        {{" class:x"}, "<tr><td class=\"r1\">class:x</td></tr>\r\n"},
        {{"class x"}, "<tr><td class=\"r1\">class x</td></tr>\r\n"},
        {{"a", "class:x", "width:1", "cols:"}, // after the first row all are rows
         "<tr><td class=\"r1\">a</td></tr>\r\n<tr><td class=\"r1\">class:x</td></tr>\r\n"
         "<tr><td class=\"r1\">width:1</td></tr>\r\n<tr><td class=\"r1\">cols:</td></tr>\r\n"},
        {{"", "class:x"}, // an empty line is a row
         "<tr><td class=\"r1\">&nbsp;</td></tr>\r\n<tr><td class=\"r1\">class:x</td></tr>\r\n"},
        {{"h:A", "class:x"}, // and so is a header
         "<tr><th class=\"r1\">A</th></tr>\r\n<tr><td class=\"r1\">class:x</td></tr>\r\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Rows(row.lines), row.rows) << row.lines.front();
}

TEST(Tables, AClassOfTheUsersOwnMovesItsStyles)
{
    const struct {
        std::string setting, css_class;
    } rows[] = {
        {"Class: fancy", "fancy"},
        {"class:fancy", "fancy"},
        {"CLASS: two words ", "two words"},
        {"class:", ""},
        {"class:   ", ""},
        {"class:Zutable", "Zutable"}, // exact
        {"class:zutabl", "zutabl"},
        {"class:my zutable", "my zutable"},
        {"h:class: x", "x"},
    };
    for (const auto& row : rows) {
        BlockDesk desk({row.setting, "a\tb", "</zutable>"});
        EXPECT_EQ(desk.Expand("<zutable>"),
                  "<table class=\"" + row.css_class +
                      "\">\r\n"
                      "<tr><td class=\"r1\">a</td><td class=\"r2\">b</td></tr>\r\n</table>\r\n");
        EXPECT_EQ(desk.style_sheet, Style(row.css_class, "9pt/11pt", 2)) << row.setting;
    }
}

TEST(Tables, AClassThatBeginsWithZutableStaysInline)
{
    EXPECT_EQ(Expand({"class: zutablex", "</zutable>"}),
              Style("zutablex", "9pt/11pt", 1) + "<table class=\"zutablex\">\r\n</table>\r\n");
    EXPECT_EQ(Expand({"class:zutable9", "width: 9", "</zutable>"}, "<zutable1>"),
              Style("zutable9", "10pt/12pt", 1) +
                  "<table class=\"zutable9\" width=\"9\">\r\n</table>\r\n");
}

TEST(Tables, TheStyleSheetGrowsWithEveryTable)
{
    BlockDesk desk(
        {"class:a", "</zutable>", "class:a", "x\ty", "</zutable>", "class:b", "</zutable>"});
    desk.Expand("<zutable>");
    desk.Expand("<zutable>");
    desk.Expand("<zutable1>");
    EXPECT_EQ(desk.style_sheet,
              Style("a", "9pt/11pt", 1) + Style("a", "9pt/11pt", 2) + Style("b", "10pt/12pt", 1));
}

TEST(Tables, ADirectiveMeansTheEndTagWasForgotten)
{
    for (const std::string directive : {"@TITLE = x", "@", "@ x", "@x@@"}) {
        BlockDesk desk({"class:fancy", "a", directive, "rest"});
        EXPECT_EQ(desk.Expand("<zutable>"), directive);
        EXPECT_THAT(desk.reporter.shown,
                    ElementsAre(directive + "\r\nForgot to close your zutable!"));
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("rest"));
        EXPECT_EQ(desk.style_sheet, ""); // the table is discarded, styles and all
    }
}

TEST(Tables, TheEndOfTheSourceIsFatal)
{
    BlockDesk desk({"a", "<zutimeline1>"});
    EXPECT_EQ(ErrorOf([&] { desk.Expand("<zutable>"); }), ErrorKind::end_of_file);
    EXPECT_EQ(desk.style_sheet, "");
    BlockDesk at_once;
    EXPECT_EQ(ErrorOf([&] { at_once.Expand("<zutable>"); }), ErrorKind::end_of_file);
}

} // namespace
} // namespace kiv
