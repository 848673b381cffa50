// The quick reference.
#include "shell/help_text.h"
#include "text/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace kiv {
namespace {

using testing::Contains;
using testing::MatchesRegex;

std::vector<std::string_view> LinesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty())
        lines.push_back(TakeLine(text));
    return lines;
}

struct SectionRow {
    const char* caption;
    const char* heading;
    std::size_t lines;
    const char* first;
    const char* last;
};

TEST(HelpTexts, Sections)
{
    const std::vector<SectionRow> rows = {
        {"at's", "At's", 36, "@printclose = flush right print | close",
         "@PF ... puts in Printer Friendly title & filename"},
        {"bangs", "Bangs", 11,
         "!!FLV[server_abbr|filename|width|height] server_abbr can be kel or mor filename "
         "chicks/mychicks",
         "!!mailto[someone@example.com!] returns sniffer safe <a href=mailto...>...</a>"},
        {"Top Matter", "_html.txt TOP MATTER", 35, "@file = filename   ... or   filename.html",
         "~~ is replaced by \"<>\" for asp statements"},
        {"Misc...", "Misc", 36, "@SENDEMAIL:Subject|email|someone@example.com|messageout",
         "++images/_pichtml.txt"},
    };
    ASSERT_EQ(HelpSections().size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string text = HelpSections()[i].text();
        const std::vector<std::string_view> lines = LinesOf(text);
        EXPECT_EQ(HelpSections()[i].caption, rows[i].caption);
        ASSERT_EQ(lines.size(), rows[i].lines + 2) << rows[i].heading;
        EXPECT_EQ(lines[0], ""); // the line break before the heading
        EXPECT_EQ(lines[1], rows[i].heading);
        EXPECT_EQ(lines[2], rows[i].first);
        EXPECT_EQ(lines.back(), rows[i].last);
        EXPECT_TRUE(text.ends_with("\r\n"));
        EXPECT_EQ(HelpSections()[i].text(), text); // again: the same and no more
    }
}

TEST(HelpTexts, OddLinesStandAsTheyAre)
{
    const std::string all = show1() + show2() + show3() + show4();
    for (const char* line : {
             "@@stop  will stop reading file until...",
             "@@EOY toggles, use \"New Year on\" (Utils menu)",
             "@thisdir ... for c:\\temp\\frog ... provides 'frog'",
             "   or SIMPLE: !!pop[dog.htm] for 800x600 full    ",
             "    This swaps two images with mouseover and mouseoff",
             "!!showhide[sh2|More info...] requires </div> after the text to be shown/hid",
             "  use ??1[ID:indexdog|START]",
             "on template, you can use \"0_1_3*\" to match group's stem",
             "@@1 (or %%1) = whatever  (through @@9) used elsewhere in html.txt]",
             "[[2",
             "middle stuff",
             "]]",
             "   subject|from|to|message ... each can be text or variable",
             "<ZU... stuff",
             "zuequation , zuplaywright, zuquiz1, zuquiz2, ",
             "zusidebar, zusidebar2, zusidebar3, zusidebar4,",
             "zutable is enhanced; if you give a \"class:\" line, that's your stylesheet name,",
             "++filename, if first line in _template.txt, calls external file instead    ",
             "  to deploy use @file = singlehtml, with a '++_singlehtml.txt' line",
             "!!1 = <a href=\"!6.htm\"><img src=\"images/!1\" width=!2 height=!3 alt=\"!4\"></a>",
         })
        EXPECT_THAT(LinesOf(all), Contains(line));
}

TEST(HelpTexts, ExamplesOfAddresses)
{
    const std::string bangs = show2();
    EXPECT_TRUE(std::regex_match(
        std::string(LinesOf(bangs)[4]),
        std::regex("   example: !!POP.bio.http://[a-z./]*.400.400.Biography</a>")));
    EXPECT_TRUE(std::regex_match(
        std::string(LinesOf(bangs)[5]),
        std::regex("   example: !!POP.bio.http://[a-z./]*.400.400.full.Biography</a>")));
    EXPECT_TRUE(LinesOf(bangs)[11].ends_with("returns sniffer safe <a href=mailto...>    "));
    const std::string head = show3();
    EXPECT_THAT(LinesOf(head)[17], MatchesRegex("@DIR1 = \\\\\\\\.* in head of _html.txt sets up "
                                                "primary output directory"));
    EXPECT_THAT(LinesOf(head)[18],
                MatchesRegex("@ASP = \\\\\\\\.* in head  of _html.txt sets up asp directory"));
    EXPECT_THAT(LinesOf(head)[19],
                MatchesRegex("@HTM = \\\\\\\\.* in head  of _html.txt sets up htm directory"));
}

TEST(HelpTexts, HeadsAndLines)
{
    HelpText help;
    help.addline("a");
    help.addhead("H");
    help.addline("");
    EXPECT_EQ(help.Text(), "a\r\n\r\nH\r\n\r\n");
}

} // namespace
} // namespace kiv
