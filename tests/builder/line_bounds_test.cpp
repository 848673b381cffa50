// Lines that were made to grow or to take for ever. What is tested is how they end; that each ends
// in a moment is seen by the time that the whole test takes.
#include "tests/builder/build_desk.h"

#include <string>

namespace kiv {
namespace {

std::string Times(int count, const std::string& text)
{
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

/// "@@1 = @@2@@2…" up to the ninth, each `count` times the next.
std::string Chain(const std::string& mark, int count, const std::string& last, const char* end = "")
{
    std::string list;
    for (char digit = '1'; digit < '9'; ++digit) {
        const std::string next = mark + static_cast<char>(digit + 1) + end;
        list.append(mark).append(1, digit).append(" = ").append(Times(count, next)).append("\n");
    }
    return list + mark + "9 = " + last + "\n";
}

std::string Page(const std::string& line)
{
    return "@FILE = p\n@TITLE = P\n" + line + "\n";
}

/// The page's text, or the kind of the fatal error.
std::string Built(const std::string& list)
{
    BuildDesk desk;
    desk.Put("site/_html.txt", list);
    const std::string error = desk.Build();
    return error.empty() ? desk.Content("site/p.htm") : error;
}

TEST(LineBounds, GrowthOverAllDigitsIsOne)
{
    EXPECT_EQ(Built(Chain("@@", 12, "xx") + Page("@@1")), "overflow");
    EXPECT_EQ(Built(Chain("%%", 12, "") + Page("%%1")), "overflow");
    EXPECT_EQ(Built(Chain("$$", 12, "xx", "[]") + Page("$$1[]")), "overflow");
    EXPECT_EQ(Built(Chain("??", 12, "x|", "[p]") + Page("??1[p]")), "invalid-argument");
    EXPECT_EQ(Built(Chain("@@", 4, "xy") + Page("@@1")), Times(65536, "xy") + "\r\n");
}

TEST(LineBounds, GrowthOverAllStepsIsOne)
{
    const std::string list =
        Chain("$$", 4, "@@1", "[]") + Chain("@@", 4, "%%1") + Chain("%%", 4, "x") + Page("$$1[]");
    EXPECT_EQ(Built(list), "overflow");
    EXPECT_EQ(
        Built(Chain("$$", 3, "@@1", "[]") + Chain("@@", 2, "%%1") + "%%1 = z\n" + Page("$$1[]")),
        "overflow"); // 6561 times 256
    EXPECT_EQ(Built(Chain("$$", 2, "@@1", "[]") + Chain("@@", 2, "z") + Page("$$1[]")),
              Times(65536, "z") + "\r\n");
}

TEST(LineBounds, WrappersAndTitlesAreInIt)
{
    EXPECT_EQ(Built("[[1 = [[2|b\n[[2 = @@1@@1|b\n" + Chain("@@", 12, "xx") + Page("[[1")),
              "overflow");
    EXPECT_EQ(Built(Chain("@@", 12, "xx") + "@FILE = p\n@TITLE = @@1\nx\n"), "overflow");
}

TEST(LineBounds, AtVariablesThatHoldEachOtherAreInIt)
{
    const std::string page = "@FILE = p\n@TITLE =" + Times(16, "@KEYWORDS") +
                             "\n@VAR1 =" + Times(20, "@VAR2") + "\n@VAR2 =" + Times(20, "@TITLE") +
                             "\n";
    EXPECT_EQ(Built(page + Times(20, "@VAR1") + "\n"), "overflow");
}

TEST(LineBounds, UsesInUsesComeToAnEnd)
{
    const std::string end = Times(1500, "</b>") + "\r\n";
    EXPECT_EQ(Built("!!1 = <b>!1</b>\n" + Page(Times(1500, "!!1[") + "x" + Times(1500, "]"))),
              Times(1500, "<b>") + "x" + end);
    EXPECT_EQ(Built("$$1 = <b>!1</b>\n" + Page(Times(1500, "$$1[") + "x" + Times(1500, "]"))),
              Times(1500, "<b>") + "x" + end);
}

TEST(LineBounds, LongLinesWithManyMarksComeToAnEnd)
{
    EXPECT_EQ(Built("@@1 = yy\n" + Page(Times(100'000, "@@1"))), Times(100'000, "yy") + "\r\n");
    EXPECT_EQ(Built("!!1 = <b>!1</b>\n" + Page(Times(50'000, "!!1[x]"))),
              Times(50'000, "<b>x</b>") + "\r\n");
    // A value that is put in far from the popup that comes with each.
    const std::string popup = "<a href=\"u\" onClick=\"n=window.open('', 'n','resizable=yes,"
                              "scrollbars=yes,status=yes,width=1,height=2');n.focus()\" "
                              "target=\"n\">";
    EXPECT_EQ(Built("!!1 = !!pop[!1|u|1|2]\n@@1 = y\n" +
                    Page(Times(500, "@@1") + "-" + Times(500, "!!1[n]"))),
              Times(500, "y") + "-" + Times(500, popup) + "\r\n");
    EXPECT_EQ(Built("@@1 = !!pop[n|u|1|2]\n" + Page(Times(2000, "@@1"))),
              Times(2000, popup) + "\r\n");
}

TEST(LineBounds, FieldsThatVanishCostWork)
{
    const std::string doubling = "[!9!9!9!9!9!9!9!9!9!9|" + Times(90, "!1") + "|" +
                                 Times(90, "!2") + "|" + Times(90, "!3") + "]";
    EXPECT_EQ(Built("!!1 = !4\n" + Page(Times(3, "!!1" + doubling))), "overflow");
}

TEST(LineBounds, ServerScriptsAreInIt)
{
    EXPECT_EQ(Built(Chain("$$", 3, "||", "[]") + Page("@FORMREAD:" + Times(20, "$$1[]"))),
              "overflow");
    // From the list alone a script may be of any length.
    EXPECT_NE(Built(Page("@FORMREAD:" + Times(20'000, "|"))), "overflow");
}

TEST(LineBounds, TablesDoNotMultiply)
{
    const std::string wide = Times(10'000, "\t") + "\n</zutable>\n";
    EXPECT_EQ(Built(Page("<zutable>\nclass:" + Times(10'000, "c") + "\n" + wide)), "overflow");
    EXPECT_NE(Built(Page("<zutable>\nclass:c\n" + wide)), "overflow");
    BuildDesk desk;
    desk.Put("site/_html.txt", Page("++t.txt"));
    desk.Put("site/t.txt",
             "<zutab>\n" + Times(20'000, "h:\n") + "h:" + Times(20'000, "z") + "\n</zutable>\n");
    EXPECT_EQ(desk.Build(), "overflow");
}

TEST(LineBounds, AFatalErrorHasItsLine)
{
    BuildDesk desk;
    desk.Put("site/_html.txt", Chain("@@", 12, "xx") + Page("@@1"));
    EXPECT_EQ(desk.Build(), "overflow");
    EXPECT_EQ(desk.place, "C:\\site\\_html.txt, line 12, page p.htm");
}

} // namespace
} // namespace kiv
