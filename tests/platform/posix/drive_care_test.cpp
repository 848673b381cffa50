// What is promised of files on a POSIX system: no failing look counts as absence, what a file had
// stays with it, and nothing of the program's own is left behind.
#include "tests/platform/drive_test.h"
#include "tests/platform/posix/not_root.h"

#include "platform/process.h"

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace kiv {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class DriveCare : public DriveTest {
  protected:
    /// A folder into which nobody but root may look.
    void PutClosedFolder(const std::string& name) const
    {
        PutFolder(name);
        Put(name + "/a.txt", "a");
        chmod((root + "/" + name).c_str(), 0);
        chmod(root.c_str(), 0755);
        chmod(top.c_str(), 0755);
    }
};

TEST_F(DriveCare, ALookThatIsRefusedIsNoAbsence)
{
    PutClosedFolder("closed");
    const NotRoot somebody;
    const std::vector<std::function<void()>> looks = {
        [&] { files->FileExists("closed\\a.txt"); },
        [&] { files->FolderExists("closed\\sub"); },
        [&] { files->NameIsTaken("closed\\a.txt"); },
        [&] { files->Stamp("closed\\a.txt"); },
        [&] { files->ReadFile("closed\\a.txt"); },
        [&] { files->Open("closed\\a.txt"); },
        [&] { files->MakeFolder("closed\\sub"); },
        [&] { files->DeleteFile("closed\\a.txt"); },
        [&] { files->List("closed", "*.*"); },
        [&] { files->RenameFile("closed\\a.txt", "closed\\b.txt"); },
    };
    for (std::size_t i = 0; i < looks.size(); ++i)
        EXPECT_THAT(ErrorOf(looks[i]),
                    AllOf(StartsWith("file: cannot "), HasSubstr("permission denied")))
            << i;
}

TEST_F(DriveCare, ANameInAFolderThatMayNotBeListed)
{
    PutFolder("dark");
    Put("dark/a.txt", "a");
    chmod((root + "/dark").c_str(), 0711);
    chmod(root.c_str(), 0755);
    chmod(top.c_str(), 0755);
    const NotRoot somebody;
    EXPECT_EQ(files->ReadFile("dark\\a.txt"), "a"); // as it is written
    // Nobody knows whether there is another spelling.
    EXPECT_THAT(ErrorOf([&] { files->FileExists("dark\\A.TXT"); }), HasSubstr("permission denied"));
}

TEST_F(DriveCare, OnlyWhatIsNotThereIsAbsent)
{
    Put("a.txt");
    for (const std::string& name :
         {std::string("b.txt"), std::string("a.txt\\c"), std::string(300, 'n'),
          "gone\\" + std::string(300, 'n') + "\\x"}) {
        EXPECT_FALSE(files->FileExists(name)) << name;
        EXPECT_FALSE(files->FolderExists(name)) << name;
    }
    ASSERT_EQ(symlink("loop", (root + "/loop").c_str()), 0);
    EXPECT_THAT(ErrorOf([&] { files->FileExists("loop"); }),
                AllOf(StartsWith("file: cannot look at C:\\loop"), HasSubstr("symbolic links")));
}

TEST_F(DriveCare, APathWithoutEndIsRefusedBeforeALook)
{
    std::string deep = "C:";
    for (int i = 0; i < 20'000; ++i)
        deep += "\\part";
    for (const std::function<void()>& look : std::vector<std::function<void()>>{
             [&] { files->FileExists(deep); }, [&] { files->FolderExists(deep); },
             [&] { files->Open(deep + "\\a.htm"); }, [&] { files->ReadFile(deep); },
             [&] { files->ChangeDirectory(deep); }}) {
        const std::string error = ErrorOf(look);
        EXPECT_THAT(error, AllOf(StartsWith("file: "), HasSubstr("the path is too long")));
        EXPECT_LT(error.size(), 300U);
    }
    // The longest that the system takes is only looked for.
    std::string long_path = "C:";
    while (root.size() + long_path.size() < 4000)
        long_path += "\\part";
    EXPECT_FALSE(files->FolderExists(long_path));
}

TEST_F(DriveCare, AFileOfMoreThanAGibibyteIsRefusedByItsSize)
{
    Put("large.txt");
    ASSERT_EQ(truncate((root + "/large.txt").c_str(), (off_t{1} << 30) + 1), 0);
    EXPECT_THAT(ErrorOf([&] { files->ReadFile("large.txt"); }),
                HasSubstr("it is larger than 1 GiB"));
    EXPECT_EQ(files->ReadPart("large.txt", 0, 1), "x");
}

TEST_F(DriveCare, AttributesStay)
{
    Put("a.txt", "old");
    const std::string native = root + "/a.txt";
    if (setxattr(native.c_str(), "user.note", "mine", 4, 0) != 0)
        GTEST_SKIP() << "this file system has no attributes";
    files->WriteFile("a.txt", "new");
    std::string note(10, '\0');
    EXPECT_EQ(getxattr(native.c_str(), "user.note", note.data(), note.size()), 4);
    EXPECT_EQ(note.substr(0, 4), "mine");
    EXPECT_THAT(files->Losses(), testing::IsEmpty());
}

/// A list that lets one more user read and write: version 2; user, that user, group, mask, others.
constexpr std::string_view kAccessList("\x02\0\0\0"
                                       "\x01\0\x06\0\xff\xff\xff\xff"
                                       "\x02\0\x06\0\xd2\x04\0\0"
                                       "\x04\0\x04\0\xff\xff\xff\xff"
                                       "\x10\0\x06\0\xff\xff\xff\xff"
                                       "\x20\0\0\0\xff\xff\xff\xff",
                                       44);

TEST_F(DriveCare, AnAccessListStays)
{
    Put("a.txt", "old");
    const std::string native = root + "/a.txt";
    if (setxattr(native.c_str(), "system.posix_acl_access", kAccessList.data(), kAccessList.size(),
                 0) != 0)
        GTEST_SKIP() << "this file system has no access lists";
    files->WriteFile("a.txt", "new");
    std::string list(100, '\0');
    const ssize_t size =
        getxattr(native.c_str(), "system.posix_acl_access", list.data(), list.size());
    ASSERT_EQ(size, 44);
    EXPECT_EQ(list.substr(0, 44), kAccessList);
}

TEST_F(DriveCare, AFolderHandsNoAccessListToAReplacedFile)
{
    Put("a.txt", "old");
    chmod((root + "/a.txt").c_str(), 0660);
    if (setxattr(root.c_str(), "system.posix_acl_default", kAccessList.data(), kAccessList.size(),
                 0) != 0)
        GTEST_SKIP() << "this file system has no access lists";
    files->WriteFile("a.txt", "new");
    EXPECT_LT(getxattr((root + "/a.txt").c_str(), "system.posix_acl_access", nullptr, 0), 0);
    EXPECT_EQ(State("a.txt").st_mode & 07777U, 0660U);
}

TEST_F(DriveCare, BitsThatLendRightsGo)
{
    Put("a.txt", "old");
    chmod((root + "/a.txt").c_str(), 06755);
    files->WriteFile("a.txt", "new");
    EXPECT_EQ(State("a.txt").st_mode & 07777U, 0755U);
}

TEST_F(DriveCare, WhoMayNotGiveAFileBackSaysSo)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root makes files of others";
    Put("a.txt", "old");
    ASSERT_EQ(chown((root + "/a.txt").c_str(), 1234, 5678), 0);
    chmod((root + "/a.txt").c_str(), 0646);
    chmod(root.c_str(), 0777);
    chmod(top.c_str(), 0755);
    {
        const NotRoot somebody;
        files->WriteFile("a.txt", "new");
    }
    EXPECT_EQ(Content("a.txt"), "new");
    EXPECT_THAT(
        files->Losses(),
        testing::ElementsAre("C:\\a.txt was replaced and has lost its group and its owner"));
    // Of two groups and others nobody has more than the least of what there was: others could read
    // and write, the group could read.
    EXPECT_EQ(State("a.txt").st_mode & 07777U, 0644U);
    files->Refresh();
    EXPECT_THAT(files->Losses(), testing::IsEmpty());
}

TEST_F(DriveCare, TemporaryFilesOfTheDeadGo)
{
    pid_t dead = fork();
    if (dead == 0)
        _exit(0);
    waitpid(dead, nullptr, 0);
    const std::string left = ".kiv-" + std::to_string(dead) + "-1.tmp";
    const std::string living = ".kiv-" + std::to_string(getpid()) + "-100000.tmp";
    const std::string mine = ".kiv-notes.tmp";
    for (const std::string& name : {left, living, mine})
        Put(name);
    EXPECT_EQ(files->ListFiles(".", "*.*"), (std::vector<std::string>{mine}));
    files->WriteFile("a.txt", "1");
    EXPECT_EQ(NamesIn(), (std::set<std::string>{living, mine, "a.txt"}));
}

TEST_F(DriveCare, ARenameOfTwoStepsIsFinished)
{
    Put("a.txt", "a");
    Put("c.txt", "c");
    std::filesystem::create_hard_link(Native("a.txt"), Native("b.txt"));
    EXPECT_FALSE(files->IsHalfRenamed("a.txt", "c.txt"));
    EXPECT_TRUE(files->IsHalfRenamed("a.txt", "b.txt"));
    EXPECT_FALSE(files->FinishRename("a.txt", "c.txt")); // two files
    EXPECT_FALSE(files->FinishRename("a.txt", "a.txt"));
    EXPECT_TRUE(files->FinishRename("a.txt", "b.txt"));
    EXPECT_FALSE(files->FinishRename("a.txt", "b.txt"));
    EXPECT_EQ(NamesIn(), (std::set<std::string>{"b.txt", "c.txt"}));
}

TEST_F(DriveCare, AProcessWithoutStreamsOpensNoFileAsOne)
{
    const pid_t child = fork();
    if (child == 0) {
        for (int standard = 0; standard <= 2; ++standard)
            close(standard);
        PrepareProcess();
        const int next = open("/dev/null", O_RDONLY);
        const bool reading_fails = read(0, nullptr, 0) < 0;
        const bool writing_fails = write(1, "x", 1) < 0 && write(2, "x", 1) < 0;
        _exit(next > 2 && reading_fails && writing_fails ? 0 : 1);
    }
    int status = 1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace kiv
