#include "utilities/title_grab.h"

#include "tests/utilities/utility_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

constexpr bool kRedirect = true;

/// Grabs the current directory and returns the list.
std::string Grab(UtilityDesk& desk, GrabFlags flags = {}, bool with_redirect = false)
{
    grab_titles(desk.machine, with_redirect, flags);
    EXPECT_THAT(desk.reporter.shown, IsEmpty());
    EXPECT_FALSE(flags.grab_all);
    EXPECT_FALSE(flags.grab_trimmed);
    return desk.Content("site/grabtitles.txt");
}

/// The title of a page with this content.
std::string TitleOf(const std::string& page)
{
    UtilityDesk desk;
    desk.Put("site/a.htm", page);
    std::string list = Grab(desk);
    const std::string head = "@file = a.htm\r\n@title = ";
    EXPECT_THAT(list, StartsWith(head));
    EXPECT_TRUE(list.ends_with("\r\n\r\n"));
    return list.substr(head.size(), list.size() - head.size() - 4);
}

TEST(TitleGrab, ListsNameAndTitleOfEachPage)
{
    UtilityDesk desk;
    desk.Put("site/two.html", "<html>\r\n<title>Second</title>");
    desk.Put("site/Index.HTM", "<TITLE>Home</TITLE>");
    desk.Put("site/notes.txt", "<title>No page</title>");
    EXPECT_EQ(Grab(desk), "@file = index.htm\r\n@title = Home\r\n\r\n"
                          "@file = two.html\r\n@title = Second\r\n\r\n");
    EXPECT_THAT(desk.reporter.statuses, ElementsAre("Grab titles done"));
    EXPECT_THAT(desk.reporter.steps, ElementsAre(Pair(1, 2), Pair(2, 2)));
    EXPECT_THAT(desk.machine.files.Written(), ElementsAre("C:\\site\\grabtitles.txt"));
}

#ifndef _WIN32 // where no name holds a colon or a backslash
// "b:1.htm" was once looked for on drive B:.
TEST(TitleGrab, AColonInANameIsNoDrive)
{
    UtilityDesk desk;
    desk.Put("site/b:1.htm", "<title>One</title>\n<body>\nText\n</body>");
    EXPECT_EQ(Grab(desk, {.grab_all = true, .grab_trimmed = true}),
              "@file = b:1.htm\r\n@title = One\r\nText\r\n</body>\r\n\r\n");
}

TEST(TitleGrab, APageThatNoPathCanNameIsPassedOver)
{
    UtilityDesk desk;
    desk.Put("site/a.htm", "<title>A</title>");
    desk.Put("site/b\\c.htm", "<title>B</title>");
    GrabFlags flags;
    grab_titles(desk.machine, false, flags);
    EXPECT_EQ(desk.Content("site/grabtitles.txt"), "@file = a.htm\r\n@title = A\r\n\r\n");
    EXPECT_THAT(desk.reporter.shown,
                ElementsAre("Left out because of the backslash in its name: b\\c.htm"));
}
#endif

TEST(TitleGrab, AspPagesFollowAllHtmlPages)
{
    UtilityDesk desk;
    desk.Put("site/a.asp", "<title>A</title>");
    desk.Put("site/z.htm", "<title>Z</title>");
    desk.Put("site/b.aspx", "<title>not taken</title>");
    EXPECT_EQ(Grab(desk), "@file = z.htm\r\n@title = Z\r\n\r\n"
                          "@file = a.asp\r\n@title = A\r\n\r\n");
}

TEST(TitleGrab, PageThatFitsBothPatternsIsListedTwice)
{
    UtilityDesk desk;
    desk.Put("site/x.htm.asp", "<title>X</title>");
    const std::string entry = "@file = x.htm.asp\r\n@title = X\r\n\r\n";
    EXPECT_EQ(Grab(desk), entry + entry);
}

TEST(TitleGrab, NamesAreInTheOrderOfTheListingAndInLowerCase)
{
    UtilityDesk desk;
    desk.Put("site/b.htm", "");
    desk.Put("site/A.htm", "");
    desk.Put("site/\xC3\x84.htm", ""); // a native name is UTF-8
    EXPECT_EQ(Grab(desk), "@file = a.htm\r\n@title = Untitled\r\n\r\n"
                          "@file = b.htm\r\n@title = Untitled\r\n\r\n"
                          "@file = \xE4.htm\r\n@title = Untitled\r\n\r\n");
}

TEST(TitleGrab, Titles)
{
    struct Row {
        std::string page, title;
    };
    const Row kRows[] = {
        {"<title>A Title</title>", "A Title"},
        {"<head><TiTLe>Mixed Case</tItlE></head>", "Mixed Case"},
        {"<title> untrimmed \t</title>", " untrimmed \t"},
        {"<title>a\tb  c</title>", "a\tb  c"}, // only copied lines lose tabs and blanks
        {"<title></title>", ""},
        {"<title>\r\n</title>", " "},
        {"<title>one\r\ntwo\r\nthree</title>", "one two three"},
        {"x<title>one\n\nthree</title>y", "one  three"},
        {"<title>one\r\n  two</title>", "one   two"},
        {"<title>a</ti\r\ntle>b</title>", "a</ti tle>b"}, // a join makes no tag
        {"<title>first</title>\r\n<title>second</title>", "first"},
        {"<title lang=\"en\">no</title>\r\n<title>yes</title>", "yes"},
        {"<title lang=\"en\">no</title>", "Untitled"},
        {"no title at all", "Untitled"},
        {"", "Untitled"},
        {"<title>never closed\r\nat all", "Untitled"},
        {"</title>\r\n<title>own line</title>", "own line"}, // the end tag stands a line above
        {"<title>a\rb</title>", "a\rb"},                     // a lone CR ends no line
        {"<title>caf\xE9</title>", "caf\xE9"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(TitleOf(row.page), row.title) << row.page;
}

TEST(TitleGrab, TitleThatEndsBeforeItBeginsIsFatal)
{
    UtilityDesk desk;
    desk.Put("site/a.htm", "</title><title>x</title>");
    desk.Put("site/grabtitles.txt", "old");
    GrabFlags flags{.grab_all = true};
    try {
        grab_titles(desk.machine, false, flags);
        FAIL();
    } catch (const RunError& error) {
        EXPECT_EQ(error.kind, ErrorKind::invalid_argument);
        EXPECT_EQ(error.where.Text(), "C:\\site\\a.htm");
    }
    EXPECT_EQ(desk.Content("site/grabtitles.txt"), "old");
    EXPECT_TRUE(flags.grab_all); // nothing was written yet
    EXPECT_THAT(desk.reporter.statuses, IsEmpty());
}

TEST(TitleGrab, RedirectLine)
{
    UtilityDesk desk;
    desk.Put("site/A.htm", "<title>T</title>");
    EXPECT_EQ(Grab(desk, {}, kRedirect),
              "@file = a.htm\r\n@title = T\r\n@redirect|..\\a.htm\r\n\r\n");
    // Two ampersands: this is no menu caption.
    EXPECT_THAT(desk.reporter.statuses, ElementsAre("Grab titles && redirect done"));
}

TEST(TitleGrab, GrabAllCopiesEveryLine)
{
    UtilityDesk desk;
    desk.Put("site/a.htm", "<title>T</title>\r\n\r\n\t a\t\tb   c \r\n<BODY>\nlast");
    EXPECT_EQ(Grab(desk, {.grab_all = true}), "@file = a.htm\r\n@title = T\r\n"
                                              "<title>T</title>\r\n\r\n a b c \r\n<BODY>\r\n"
                                              "last\r\n\r\n");
    EXPECT_THAT(desk.reporter.statuses, ElementsAre("Grab titles done"));
}

TEST(TitleGrab, RedirectLineStandsBeforeTheCopiedLines)
{
    UtilityDesk desk;
    desk.Put("site/a.htm", "x");
    EXPECT_EQ(Grab(desk, {.grab_all = true}, kRedirect),
              "@file = a.htm\r\n@title = Untitled\r\n@redirect|..\\a.htm\r\nx\r\n\r\n");
}

TEST(TitleGrab, TrimmedCopies)
{
    struct Row {
        std::string page, copied;
    };
    const Row kRows[] = {
        // Without the line of "<body", with the line of "</body".
        {"head\n<body>\na\n</body>\nfoot", "a\r\n</body>\r\n"},
        {"<body>a</body>\nb", ""},  // both on a line: nothing
        {"<BODY>\na\n</BODY>", ""}, // case counts
        {"<body>\na\n</BODY>\nb", "a\r\n</BODY>\r\nb\r\n"},
        {"<body>\na\n</body>\nb\n<body class=x>\nc", "a\r\n</body>\r\nc\r\n"},
        {"<body>\n</body><body>\nc", "</body><body>\r\n"}, // "</body" is tested last
        {"<body>\nx<body>y\nz", "x<body>y\r\nz\r\n"},
        {"<bo\tdy>\na", ""},
        {"</body>\na", ""},
        {"<bodyguard>\na", "a\r\n"},
        {"", ""},
    };
    for (const Row& row : kRows) {
        UtilityDesk desk;
        desk.Put("site/a.htm", row.page);
        EXPECT_EQ(Grab(desk, {.grab_all = true, .grab_trimmed = true}),
                  "@file = a.htm\r\n@title = Untitled\r\n" + row.copied + "\r\n")
            << row.page;
    }
}

TEST(TitleGrab, TrimmedAloneCopiesNothing)
{
    UtilityDesk desk;
    desk.Put("site/a.htm", "<body>\na");
    EXPECT_EQ(Grab(desk, {.grab_trimmed = true}), "@file = a.htm\r\n@title = Untitled\r\n\r\n");
}

TEST(TitleGrab, EmptyDirectoryKeepsFlagsAndOldList)
{
    UtilityDesk desk;
    desk.Put("site/grabtitles.txt", "old");
    GrabFlags flags{.grab_all = true, .grab_trimmed = true};
    grab_titles(desk.machine, kRedirect, flags);
    EXPECT_THAT(desk.reporter.shown, ElementsAre("Empty directory!"));
    EXPECT_TRUE(flags.grab_all && flags.grab_trimmed);
    EXPECT_THAT(desk.reporter.statuses, IsEmpty());
    EXPECT_THAT(desk.machine.files.Written(), IsEmpty());
    EXPECT_EQ(desk.Content("site/grabtitles.txt"), "old");
}

TEST(TitleGrab, FlagsAreClearedWhenTheWritingFails)
{
    UtilityDesk desk;
    desk.Put("site/a.htm", "x");
    desk.PutFolder("site/grabtitles.txt");
    GrabFlags flags{.grab_all = true, .grab_trimmed = true};
    EXPECT_EQ(KindOf([&] { grab_titles(desk.machine, false, flags); }), "file");
    EXPECT_FALSE(flags.grab_all || flags.grab_trimmed);
}

TEST(TitleGrab, AThousandPagesAndNoMore)
{
    UtilityDesk desk;
    for (int n = 0; n < 999; ++n)
        desk.Put("site/p" + std::to_string(n) + ".htm", "");
    desk.Put("site/last.asp", "<title>The last</title>");
    EXPECT_TRUE(Grab(desk).ends_with("@file = last.asp\r\n@title = The last\r\n\r\n"));

    desk.Put("site/more.asp", "");
    desk.Put("site/grabtitles.txt", "old");
    GrabFlags flags;
    EXPECT_EQ(KindOf([&] { grab_titles(desk.machine, false, flags); }), "subscript");
    EXPECT_EQ(desk.Content("site/grabtitles.txt"), "old");
}

TEST(TitleGrab, LongUnclosedTitleTakesNoLongerThanItsLength)
{
    std::string page = "<title>";
    for (int n = 0; n < 50'000; ++n)
        page += "a line of it\n";
    EXPECT_EQ(TitleOf(page), "Untitled");
    EXPECT_EQ(TitleOf(page + "</title>").size(), 50'000U * 13);
}

} // namespace
} // namespace kiv
