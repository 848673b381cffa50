#include "blocks/equations.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A whole table from its three rows.
std::string Table(const std::string& top, const std::string& bar, const std::string& bottom)
{
    return "\r\n<table border=0 cellpadding=0 cellspacing=2><tr align=center>" + top +
           "</tr><tr align=center>\r\n" + bar + "</tr><tr align=center>\r\n" + bottom +
           "</tr></table>\r\n";
}

std::string Spacer(const std::string& text)
{
    return "<td rowspan=\"3\"><font face=\"Verdana,geneva,Arial,Helvetica,sans-serif\" size=2 "
           "color=aa0000>&nbsp;" +
           text + "&nbsp;</font></td>\r\n";
}

std::string Numerator(const std::string& text)
{
    return "<td><font face=\"Verdana,geneva,Arial,Helvetica,sans-serif\" size=2 color=aa0000>" +
           text + "</font></td>\r\n";
}

std::string Denominator(const std::string& text)
{
    return "<td><font face=\"Verdana,geneva,Arial,Helvetica,sans-serif\" size=\"2\" color=aa0000>" +
           text + "</font></td>\r\n";
}

const std::string kLeftBracket = "<img src=\"../images/equation/lbracket.gif\">";
const std::string kRightBracket = "<img src=\"../images/equation/rbracket.gif\">";
const std::string kLeftParen = "<img src=\"../images/equation/lparen.gif\">";
const std::string kRightParen = "<img src=\"../images/equation/rparen.gif\">";
const std::string kLeftBrace = "<img src=\"../images/equation/lcbracket.gif\">";
const std::string kRightBrace = "<img src=\"../images/equation/rcbracket.gif\">";
const std::string kRootImage = "<img src=\"../images/equation/sqrt.gif\">";

const std::string kBar = "<td bgcolor=\"#000000\"><img src=\"../images/zbar.gif\" width=\"1\" "
                         "height=\"1\" border=\"0\"></td>\r\n";
const std::string kRoot =
    "<td rowspan=3 valign=top><img src=\"../images/equation/sqrt.gif\" width=10 height=40></td>";

TEST(Equations, OneWholeTableByTheByte)
{
    BlockDesk desk;
    EXPECT_EQ(desk.Expand("Half: <zuequation>x =|1\\2</zuequation> done"),
              "Half: \r\n<table border=0 cellpadding=0 cellspacing=2><tr align=center>"
              "<td rowspan=\"3\"><font face=\"Verdana,geneva,Arial,Helvetica,sans-serif\" size=2 "
              "color=aa0000>&nbsp;x =&nbsp;</font></td>\r\n"
              "<td><font face=\"Verdana,geneva,Arial,Helvetica,sans-serif\" size=2 color=aa0000>1"
              "</font></td>\r\n"
              "</tr><tr align=center>\r\n"
              "<td bgcolor=\"#000000\"><img src=\"../images/zbar.gif\" width=\"1\" height=\"1\" "
              "border=\"0\"></td>\r\n"
              "</tr><tr align=center>\r\n"
              "<td><font face=\"Verdana,geneva,Arial,Helvetica,sans-serif\" size=\"2\" "
              "color=aa0000>2</font></td>\r\n"
              "</tr></table>\r\n done");
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
}

TEST(Equations, Formulas)
{
    const struct {
        std::string formula, table;
    } rows[] = {
        {"", Table("", "", "")}, // no terms
        {"a", Table(Spacer("a"), "", "")},
        {" a ", Table(Spacer(" a "), "", "")}, // nothing is trimmed
        {"a|b", Table(Spacer("a") + Spacer("b"), "", "")},
        {"a||b", Table(Spacer("a") + Spacer("") + Spacer("b"), "", "")}, // an empty term is a cell
        {"|", Table(Spacer("") + Spacer(""), "", "")},
        {"a\\b", Table(Numerator("a"), kBar, Denominator("b"))},
        {"\\", Table(Numerator(""), kBar, Denominator(""))},
        {"a\\b\\c", Table(Numerator("a"), kBar, Denominator("b\\c"))}, // the first backslash parts
        {"a\\b|+|c\\d", Table(Numerator("a") + Spacer("+") + Numerator("c"), kBar + kBar,
                              Denominator("b") + Denominator("d"))},
        {"sqrt", Table(kRoot, "", "")},
        {"sqrtx", Table(kRoot + Spacer("x"), "", "")},
        {"xsqrt", Table(Spacer("x") + kRoot, "", "")},
        {"2 sqrt x sqrt y",
         Table(Spacer("2 ") + kRoot + Spacer(" x ") + kRoot + Spacer(" y"), "", "")},
        {"sqrtsqrt", Table(kRoot + kRoot, "", "")},
        {"SQRT Sqrt", Table(Spacer("SQRT Sqrt"), "", "")}, // exact case
        {"s sq sqr", Table(Spacer("s sq sqr"), "", "")},
        {"[](){}", Table(Spacer(kLeftBracket + kRightBracket + kLeftParen + kRightParen +
                                kLeftBrace + kRightBrace),
                         "", "")},
        {"f(x) sqrt [y]", Table(Spacer("f" + kLeftParen + "x" + kRightParen + " ") + kRoot +
                                    Spacer(" " + kLeftBracket + "y" + kRightBracket),
                                "", "")},
        // A root cell cannot stand in a fraction, so the root is an image there.
        {"(sqrt2)\\{sqrt3}", Table(Numerator(kLeftParen + kRootImage + "2" + kRightParen), kBar,
                                   Denominator(kLeftBrace + kRootImage + "3" + kRightBrace))},
        {"a < b & \"c\"", Table(Spacer("a < b & \"c\""), "", "")}, // other text stays
        {"<zuequation>", Table(Spacer("<zuequation>"), "", "")},
    };
    for (const auto& row : rows) {
        BlockDesk desk;
        EXPECT_EQ(desk.Expand("<zuequation>" + row.formula + "</zuequation>"), row.table)
            << row.formula;
        EXPECT_THAT(desk.reporter.shown, IsEmpty()) << row.formula;
    }
}

TEST(Equations, WhatStandsAroundTheTagsStays)
{
    const struct {
        std::string line, expanded;
    } rows[] = {
        {"ASP:a|b <zuEQUATION>x</zuequation>\\(c)",
         "ASP:a|b " + Table(Spacer("x"), "", "") + "\\(c)"},
        {"<zuequation>x</zuequation>y</zuequation>",
         Table(Spacer("x"), "", "") + "y</zuequation>"}, // the first end tag
        {"</zuequation><zuequation>x</zuequation>",
         "</zuequation>" + Table(Spacer("x"), "", "")}, // one before the start tag does not count
        {"<zuEquation>a<zuequation>b</zuequation>",     // from the dispatched tag on
         Table(Spacer("a<zuequation>b"), "", "")},
    };
    for (const auto& row : rows) {
        BlockDesk desk;
        EXPECT_EQ(desk.Expand(row.line), row.expanded) << row.line;
        EXPECT_THAT(desk.reporter.shown, IsEmpty()) << row.line;
    }
}

TEST(Equations, AMissingEndTagLosesTheTextBeforeTheStartTag)
{
    const struct {
        std::string line, kept;
    } rows[] = {
        {"head <zuequation>a\\b", "a\\b"},
        {"head <zuequation>", ""},
        {"<zuequation>a</zuEquation>b", "a</zuEquation>b"}, // the end tag is exact
        {"</zuequation> <zuequation>a", "a"},
    };
    for (const auto& row : rows) {
        BlockDesk desk({"</zuequation>"});
        EXPECT_EQ(desk.Expand(row.line), row.kept) << row.line;
        EXPECT_THAT(desk.reporter.shown, ElementsAre("Oops! Missing zuequation close!"));
        EXPECT_THAT(desk.lines.Unread(), ElementsAre("</zuequation>")) << row.line;
    }
}

} // namespace
} // namespace kiv
