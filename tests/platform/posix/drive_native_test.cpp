// Native paths and drive paths of each other.
#include "tests/platform/drive_test.h"

#include <gmock/gmock.h>
#include <unistd.h>

namespace kiv {
namespace {

using DriveNative = DriveTest;

TEST_F(DriveNative, FromOutsideTheLongestDriveFolderWins)
{
    const auto two = MakeDriveFiles({{'C', "/data/c"}, {'d', "/data/c/deep/"}});
    struct Row {
        const char* native;
        const char* drive;
    };
    constexpr Row kRows[] = {
        {"/data/c/site/a.htm", "C:\\site\\a.htm"},
        {"/data/c/deep/a.htm", "D:\\a.htm"},
        {"/data/c/deeper/a.htm", "C:\\deeper\\a.htm"},
        {"/data/c", "C:\\"},
        {"/data/c/", "C:\\"},
        {"/data/cd", "Z:\\data\\cd"},
        {"/data/x/../c/./y//z", "C:\\y\\z"},
        {"/data/c/../../etc", "Z:\\etc"},
        {"/..", "Z:\\"},
        {"/", "Z:\\"},
        {"/data/c/caf\xC3\xA9", "C:\\caf\xE9"},
        {"/data/c/\xE4\xB8\xAD", "C:\\&#20013;"},
        {"c:\\x\\..\\y", "C:\\y"}, // a drive path is taken as it is
        {"q:/x", "Q:\\x"},
        {"\\\\server\\share", ""},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(two->FromNative(row.native), row.drive) << row.native;
    EXPECT_EQ(two->DriveLetters(), "CDZ");
}

TEST_F(DriveNative, ARelativePathBeginsAtTheProcesssDirectory)
{
    const std::filesystem::path before = std::filesystem::current_path();
    PutFolder("site");
    ASSERT_EQ(chdir((root + "/site").c_str()), 0);
    EXPECT_EQ(files->FromNative("."), "C:\\site");
    EXPECT_EQ(files->FromNative(""), "C:\\site");
    EXPECT_EQ(files->FromNative("sub/../a.htm"), "C:\\site\\a.htm");
    EXPECT_EQ(files->FromNative(".."), "C:\\");
    EXPECT_EQ(MakeDriveFiles({{'C', root}})->CurrentDirectory(), "C:\\site");
    ASSERT_EQ(chdir("/"), 0);
    EXPECT_EQ(files->FromNative("etc"), "Z:\\etc");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\"); // the system's own
    std::filesystem::current_path(before);
}

TEST_F(DriveNative, LinksAreNotResolved)
{
    std::filesystem::create_directory_symlink("c", top + "/alias");
    const std::string path = files->FromNative(top + "/alias/a");
    EXPECT_EQ(path.substr(0, 3), "Z:\\");
    EXPECT_EQ(path.substr(path.size() - 8), "\\alias\\a");
}

TEST_F(DriveNative, ToNativeTakesTheSpellingOnTheDisk)
{
    PutFolder("Sub");
    Put("Sub/A.txt");
    EXPECT_EQ(files->ToNative("C:\\"), root);
    EXPECT_EQ(files->ToNative("sub\\a.TXT"), root + "/Sub/A.txt");
    EXPECT_EQ(files->ToNative("sub\\"), root + "/Sub");
    EXPECT_EQ(files->ToNative("sub\\new.txt"), root + "/Sub/new.txt");
    EXPECT_EQ(files->ToNative("no\\caf\xE9.txt"), root + "/no/caf\xC3\xA9.txt");
    EXPECT_EQ(files->ToNative("Z:\\"), "/");
    EXPECT_EQ(files->ToNative("Z:\\etc"), "/etc");
    EXPECT_EQ(files->ToNative("Q:\\x"), "");
}

TEST_F(DriveNative, TheWholeDiskIsDriveZ)
{
    Put("a.txt", "1");
    EXPECT_EQ(files->ReadFile("Z:" + root + "/a.txt"), "1");
    EXPECT_TRUE(files->FolderExists("z:\\"));
    files->ChangeDirectory("Z:\\");
    EXPECT_EQ(files->CurrentDirectory(), "Z:\\");
    EXPECT_TRUE(files->FolderExists("tmp"));
}

} // namespace
} // namespace kiv
