#include "platform/drive_path.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(AbsolutePath, FollowsTheText)
{
    struct Row {
        std::string_view path;
        std::string_view current;
        std::string_view absolute;
    };
    constexpr Row kRows[] = {
        {"a.htm", "C:\\site", "C:\\site\\a.htm"},
        {"a.htm", "C:\\", "C:\\a.htm"},
        {"sub/a.htm", "C:\\site", "C:\\site\\sub\\a.htm"},
        {"c:\\x", "Z:\\tmp", "C:\\x"},
        {"c:/x/y/", "Z:\\tmp", "C:\\x\\y"},
        {".\\a", "C:\\site", "C:\\site\\a"},
        {"a\\.\\\\b", "C:\\site", "C:\\site\\a\\b"},
        {"..\\b", "C:\\site", "C:\\b"},
        {"..\\..\\..\\b", "C:\\site", "C:\\b"}, // ".." stays put at the root
        {"a\\..\\..", "C:\\site", "C:\\"},
        {"C:\\..", "C:\\site", "C:\\"},
        {"...", "C:\\site", "C:\\site\\..."},
        {"\\x", "Z:\\tmp", "Z:\\x"},
        {"/x", "Z:\\tmp", "Z:\\x"},
        {"C:x", "C:\\site", "C:\\site\\x"},
        {"c:x", "C:\\site", "C:\\site\\x"},
        {"C:x", "Z:\\tmp", "C:\\x"}, // another drive has no current directory
        {"C:", "C:\\site", "C:\\site"},
        {"C:", "Z:\\tmp", "C:\\"},
        {"", "C:\\site", "C:\\site"},
        {".", "C:\\site", "C:\\site"},
        {"\\\\server\\share", "C:\\site", ""}, // no place
        {"//server/share", "C:\\site", ""},
        {"x\\\\y", "C:\\", "C:\\x\\y"},
        {" a .htm ", "C:\\site", "C:\\site\\ a .htm "}, // names are not trimmed
        {"ab:c", "C:\\site", "C:\\site\\ab:c"},
        {"1:x", "C:\\site", "C:\\site\\1:x"}, // a drive is a letter
        {"Caf\xE9", "C:\\SITE", "C:\\SITE\\Caf\xE9"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(AbsolutePath(row.path, row.current), row.absolute) << row.path;
}

TEST(FolderAndName, PartAtTheLastSeparator)
{
    EXPECT_EQ(FolderOf("C:\\site\\a.htm"), "C:\\site");
    EXPECT_EQ(NameOf("C:\\site\\a.htm"), "a.htm");
    EXPECT_EQ(FolderOf("C:\\a.htm"), "C:\\");
    EXPECT_EQ(NameOf("C:\\a.htm"), "a.htm");
    EXPECT_EQ(FolderOf("C:\\"), "C:\\");
    EXPECT_EQ(NameOf("C:\\"), "");
}

TEST(WithSeparator, LeavesOneAtTheEnd)
{
    EXPECT_EQ(WithSeparator("C:\\site"), "C:\\site\\");
    EXPECT_EQ(WithSeparator("C:\\site\\"), "C:\\site\\");
    EXPECT_EQ(WithSeparator("C:\\site/"), "C:\\site\\");
    EXPECT_EQ(WithSeparator("C:\\"), "C:\\");
}

TEST(FitsPattern, KnowsStarAndQuestionMark)
{
    struct Row {
        std::string_view name;
        std::string_view pattern;
        bool fits;
    };
    constexpr Row kRows[] = {
        {"readme", "*.*", true}, // fits a name without a dot, too
        {"a.htm", "*.*", true},
        {"readme", "*.", false},
        {"a.HTM", "*.htm", true},
        {"a.html", "*.htm", false},
        {"a.html", "*.htm*", true},
        {"a.htm.bak", "*.htm*", true},
        {"a.aspx", "*.asp", false}, // there is no second, short name
        {"a.jpeg", "*.jpg", false},
        {"a.jpg", "?.jpg", true},
        {"ab.jpg", "?.jpg", false},
        {".jpg", "?.jpg", false},
        {"CAF\xC9.txt", "caf\xE9.*", true},
        {"aXbXc", "a*x*c", true},
        {"aXbXd", "a*x*c", false},
        {"abcabd", "*abd", true}, // the star tries again
        {"abc", "", false},
        {"", "", true},
        {"", "*", true},
        {"a[1].gif", "a[1].gif", true},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(FitsPattern(row.name, row.pattern), row.fits) << row.name << " " << row.pattern;
}

TEST(ThisDirName, IsTheLastPartOfAPath)
{
    const char* const kRows[][2] = {{"C:\\temp\\frog", "frog"},
                                    {"C:\\temp\\frog\\", "frog"},
                                    {"C:\\temp/Frog Pond", "Frog Pond"},
                                    {"C:\\", ""},
                                    {"C:", ""},
                                    {"\\", ""},
                                    {"", ""}};
    for (const auto& row : kRows)
        EXPECT_EQ(ThisDirNameOf(row[0]), row[1]) << row[0];
}

TEST(FitsPattern, IsQuickWithManyStars)
{
    const std::string name(5000, 'a');
    EXPECT_FALSE(FitsPattern(name, "*a*a*a*a*a*a*a*a*a*a*b"));
}

} // namespace
} // namespace kiv
