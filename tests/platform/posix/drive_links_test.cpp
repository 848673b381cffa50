// Links and pipes: Windows makes links for administrators alone, and has no pipes in folders.
#include "tests/platform/drive_test.h"

#include <atomic>
#include <chrono>
#include <gmock/gmock.h>
#include <thread>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

using DriveLinks = DriveTest;

TEST_F(DriveLinks, TwoWaysToOneFolderShareWhatWasWritten)
{
    PutFolder("real");
    std::filesystem::create_directory_symlink("real", root + "/alias");
    EXPECT_FALSE(files->FileExists("alias\\A.htm"));
    EXPECT_FALSE(files->FileExists("real\\A.htm"));
    files->WriteFile("real\\a.htm", "1");
    EXPECT_TRUE(files->FileExists("alias\\A.htm"));
}

TEST_F(DriveLinks, ARunSharesTheLockOfAFolderByWhateverPath)
{
    PutFolder("real");
    std::filesystem::create_directory_symlink("real", root + "/alias");
    const auto other = MakeDriveFiles({{'C', root}});
    auto lock = files->LockFolder("C:\\real");
    auto same = files->LockFolder("C:/ALIAS/");
    auto once_more = files->LockFolder("Z:" + root + "/real");
    lock.reset();
    std::atomic<bool> is_free = false;
    std::thread waiting([&] {
        const auto second = other->LockFolder("C:\\real");
        EXPECT_TRUE(is_free);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    same.reset();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    is_free = true;
    once_more.reset();
    waiting.join();
}

TEST_F(DriveLinks, OnePlaceByWhateverPath)
{
    PutFolder("Real");
    Put("Real/a.htm");
    PutFolder("other");
    Put("other/a.htm");
    std::filesystem::create_directory_symlink("Real", root + "/alias");
    std::filesystem::create_symlink("alias/a.htm", root + "/b.htm");
    const auto place = [&](const std::string& path) { return files->PlaceOf(files->Open(path)); };
    const std::string wanted = place("C:\\Real\\a.htm");
    EXPECT_NE(wanted, "");
    for (const std::string& path : {std::string("real/A.HTM"), std::string("alias\\a.htm"),
                                    std::string("B.htm"), "Z:" + root + "/Real/a.htm"})
        EXPECT_EQ(place(path), wanted) << path;
    for (const char* const path : {"other\\a.htm", "Real\\new.htm", "a.htm"})
        EXPECT_NE(place(path), wanted) << path;
    EXPECT_EQ(place("alias\\new.htm"), place("real\\NEW.htm")); // not there yet
}

TEST_F(DriveLinks, DeletingALinkLeavesItsFile)
{
    Put("a.txt");
    std::filesystem::create_symlink("a.txt", root + "/link.txt");
    files->DeleteFile("LINK.txt");
    EXPECT_EQ(NamesIn(), (Names{"a.txt"}));
}

TEST_F(DriveLinks, ALinkStaysAndItsFileIsReplaced)
{
    PutFolder("real");
    Put("real/a.htm", "old");
    std::filesystem::create_symlink("real/a.htm", root + "/relative");
    std::filesystem::create_symlink(root + "/relative", root + "/Chain");
    files->WriteFile("chain", "new");
    EXPECT_TRUE(S_ISLNK(State("Chain").st_mode));
    EXPECT_TRUE(S_ISLNK(State("relative").st_mode));
    EXPECT_EQ(Content("real/a.htm"), "new");
    EXPECT_EQ(NamesIn("real"), (Names{"a.htm"}));
    files->WriteSource("relative", "new and more");
    EXPECT_EQ(Content("real/a.htm"), "new and more");
}

TEST_F(DriveLinks, ALinkToNothingBringsItsFile)
{
    PutFolder("real");
    std::filesystem::create_symlink("real/new.htm", root + "/link");
    files->WriteFile("link", "1");
    EXPECT_TRUE(S_ISLNK(State("link").st_mode));
    EXPECT_EQ(Content("real/new.htm"), "1");
}

TEST_F(DriveLinks, AFileThatHasBecomeALinkSinceItsFolderWasListed)
{
    Put("page.htm", "1");
    Put("new.htm", "1");
    EXPECT_FALSE(files->FileExists("no.htm")); // looks through the folder
    PutFolder("real");
    Put("real/page.htm", "1");
    for (const char* name : {"page.htm", "new.htm"}) {
        std::filesystem::remove(Native(name));
        std::filesystem::create_symlink("real/page.htm", Native(name));
        files->WriteFile(name, std::string("2, ") + name);
        EXPECT_TRUE(S_ISLNK(State(name).st_mode));
        EXPECT_EQ(Content("real/page.htm"), std::string("2, ") + name);
    }
}

TEST_F(DriveLinks, OnlyALinkToAPlainFileIsAFile)
{
    Put("a.txt");
    std::filesystem::create_symlink("a.txt", root + "/link");
    std::filesystem::create_symlink("gone", root + "/dangling");
    mkfifo((root + "/pipe").c_str(), 0600);
    EXPECT_TRUE(files->FileExists("link"));
    for (const char* name : {"dangling", "pipe"}) {
        EXPECT_FALSE(files->FileExists(name)) << name;
        EXPECT_FALSE(files->Stamp(name).exists) << name;
        EXPECT_THAT(ErrorOf([&] { files->ReadFile(name); }), StartsWith("file: ")) << name;
    }
    EXPECT_THAT(ErrorOf([&] { files->Open("pipe"); }), StartsWith("file: "));
}

TEST_F(DriveLinks, ListingsHaveLinksAsWhatTheyLeadTo)
{
    Put("readme");
    PutFolder("Sub");
    std::filesystem::create_symlink("readme", root + "/link.txt");
    std::filesystem::create_directory_symlink("Sub", root + "/sublink");
    std::filesystem::create_symlink("gone", root + "/dangling");
    mkfifo((root + "/pipe").c_str(), 0600);
    EXPECT_THAT(files->ListFiles("C:\\", "*.*"), ElementsAre("link.txt", "readme"));
    EXPECT_THAT(files->ListFolders("."), ElementsAre("Sub", "sublink"));
}

TEST_F(DriveLinks, ALinkTakesItsName)
{
    Put("a.txt", "1");
    std::filesystem::create_symlink("gone", root + "/Dangling");
    for (const char* taken : {"Dangling", "dangling"})
        EXPECT_THAT(ErrorOf([&] { files->RenameFile("a.txt", taken); }), HasSubstr("target exists"))
            << taken;
    EXPECT_EQ(NamesIn(), (Names{"a.txt", "Dangling"}));
}

TEST_F(DriveLinks, ALinkToNothingBearsItsName)
{
    std::filesystem::create_symlink("nowhere", root + "/Link");
    for (const char* name : {"Link", "C:\\LINK"})
        EXPECT_TRUE(files->NameIsTaken(name)) << name;
    EXPECT_FALSE(files->NameIsTaken("nowhere"));
}

} // namespace
} // namespace kiv
