// Files are written whole: they hold their old content or the new, and nothing is left beside them.
#include "drive_test.h"

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

using DriveWriting = DriveTest;

/// While it lives, no file of this process grows beyond `bytes`: a write stops short there, as on a
/// full disk.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &old_limit_);
        const rlimit limit{bytes, old_limit_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &old_limit_);
        std::signal(SIGXFSZ, old_handler_);
    }

  private:
    rlimit old_limit_{};
    void (*old_handler_)(int);
};

/// While it lives, root, who may write everything, is somebody else.
class NotRoot {
  public:
    NotRoot()
    {
        if (was_root_) {
            EXPECT_EQ(seteuid(65534), 0);
        }
    }
    NotRoot(const NotRoot&) = delete;
    NotRoot& operator=(const NotRoot&) = delete;
    ~NotRoot()
    {
        if (was_root_) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }

  private:
    bool was_root_ = geteuid() == 0;
};

TEST_F(DriveWriting, ANewFileTakesItsNameAsWritten)
{
    files->WriteFile("About.HTM", "1\r\n");
    files->WriteFile("caf\xE9 .txt", "2");
    files->WriteFile("what*is?it", "3"); // only Windows forbids such names
    files->WriteFile("empty.txt", "");
    EXPECT_EQ(NamesIn(), (Names{"About.HTM", "caf\xC3\xA9 .txt", "what*is?it", "empty.txt"}));
    EXPECT_EQ(Content("About.HTM"), "1\r\n");
    EXPECT_EQ(Content("empty.txt"), "");
}

TEST_F(DriveWriting, ANewFileObeysTheMask)
{
    const mode_t old = umask(027);
    files->WriteFile("a.htm", "1");
    umask(old);
    EXPECT_EQ(State("a.htm").st_mode & 07777, 0640U);
}

TEST_F(DriveWriting, AFileThatDiffersInCaseIsReplacedAndKeepsItsName)
{
    Put("_TOC.txt", "old");
    files->WriteFile("_toc.TXT", "new");
    EXPECT_EQ(NamesIn(), (Names{"_TOC.txt"}));
    EXPECT_EQ(Content("_TOC.txt"), "new");
    EXPECT_THAT(files->Written(), ElementsAre("C:\\_toc.TXT"));
}

TEST_F(DriveWriting, TwoPagesWhoseNamesDifferInCaseAreOneFile)
{
    files->WriteFile("About.htm", "1");
    files->WriteFile("about.HTM", "2");
    EXPECT_EQ(NamesIn(), (Names{"About.htm"}));
    EXPECT_EQ(Content("About.htm"), "2");
}

TEST_F(DriveWriting, AFileThatHoldsTheBytesIsLeftAlone)
{
    const std::string large(600'000, 'x');
    Put("a.htm", large);
    const struct timespec past[2] = {{1000, 0}, {1000, 0}};
    utimensat(AT_FDCWD, (root + "/a.htm").c_str(), &past[0], 0);
    const struct stat before = State("a.htm");
    files->WriteFile("a.htm", large);
    EXPECT_EQ(State("a.htm").st_ino, before.st_ino);
    EXPECT_EQ(State("a.htm").st_mtim.tv_sec, 1000);
    EXPECT_THAT(files->Written(), ElementsAre("C:\\a.htm")); // counts all the same

    std::string other = large;
    other.back() = 'y';
    files->WriteFile("a.htm", other);
    EXPECT_NE(State("a.htm").st_mtim.tv_sec, 1000);
    EXPECT_TRUE(Content("a.htm") == other);
}

TEST_F(DriveWriting, AReplacedFileKeepsItsMode)
{
    Put("a.htm", "old");
    for (const mode_t mode : {0600U, 0644U, 0755U, 0666U}) {
        chmod((root + "/a.htm").c_str(), mode);
        files->WriteFile("a.htm", "mode " + std::to_string(mode));
        EXPECT_EQ(State("a.htm").st_mode & 07777, mode);
    }
}

TEST_F(DriveWriting, AReplacedFileKeepsItsOwner)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root gives files away";
    Put("a.htm", "old");
    ASSERT_EQ(chown((root + "/a.htm").c_str(), 1234, 5678), 0);
    files->WriteFile("a.htm", "new");
    EXPECT_EQ(State("a.htm").st_uid, 1234U);
    EXPECT_EQ(State("a.htm").st_gid, 5678U);
}

TEST_F(DriveWriting, ALinkStaysAndItsFileIsReplaced)
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
    files->AppendToFile("relative", " and more");
    EXPECT_EQ(Content("real/a.htm"), "new and more");
}

TEST_F(DriveWriting, ALinkToNothingBringsItsFile)
{
    PutFolder("real");
    std::filesystem::create_symlink("real/new.htm", root + "/link");
    files->WriteFile("link", "1");
    EXPECT_TRUE(S_ISLNK(State("link").st_mode));
    EXPECT_EQ(Content("real/new.htm"), "1");
}

TEST_F(DriveWriting, OpeningChecksThePlaceAndTouchesNothing)
{
    Put("a.htm", "old");
    PutFolder("sub");
    mkfifo((root + "/pipe").c_str(), 0600);
    const std::string long_name(256, 'n');
    for (const std::string& path :
         {std::string("no\\a.htm"), std::string("sub"), std::string("SUB"), std::string("sub\\"),
          std::string(""), std::string("a.htm\\"), std::string("a.htm\\b.htm"), std::string("pipe"),
          std::string("a\0b", 3), long_name, std::string("C:\\")})
        EXPECT_THAT(ErrorOf([&] { files->Open(path); }), StartsWith("file: ")) << path;
    EXPECT_THAT(ErrorOf([&] { files->Open("no\\a.htm"); }), HasSubstr("C:\\no\\a.htm"));

    const OutputFile old_file = files->Open("A.htm");
    EXPECT_EQ(old_file.path, "C:\\A.htm");
    EXPECT_EQ(old_file.native, root + "/a.htm");
    EXPECT_TRUE(old_file.exists);
    const OutputFile new_file = files->Open("sub/../SUB/New.htm");
    EXPECT_EQ(new_file.path, "C:\\SUB\\New.htm");
    EXPECT_EQ(new_file.native, root + "/sub/New.htm");
    EXPECT_FALSE(new_file.exists);
    EXPECT_EQ(NamesIn(), (Names{"a.htm", "sub", "pipe"}));
    EXPECT_EQ(NamesIn("sub"), Names{});
    EXPECT_EQ(files->ReadFile("a.htm"), "old"); // the old content up to Commit
    EXPECT_TRUE(files->Written().empty());
}

TEST_F(DriveWriting, AFileThatComesOrGoesBetweenOpenAndCommit)
{
    const OutputFile coming = files->Open("a.htm");
    Put("a.htm", "by another program");
    files->Commit(coming, "1");
    EXPECT_EQ(Content("a.htm"), "1");
    const OutputFile going = files->Open("a.htm");
    std::filesystem::remove(root + "/a.htm");
    files->Commit(going, "2");
    EXPECT_EQ(Content("a.htm"), "2");
    const OutputFile blocked = files->Open("b.htm");
    PutFolder("b.htm");
    EXPECT_THAT(ErrorOf([&] { files->Commit(blocked, "3"); }), StartsWith("file: "));
    EXPECT_EQ(NamesIn(), (Names{"a.htm", "b.htm"}));
}

TEST_F(DriveWriting, WrittenHasEveryClosingInOrder)
{
    PutFolder("Sub");
    files->WriteFile("b.htm", "1");
    files->WriteFile("c:sub/a.htm", "2");
    files->WriteFile("b.htm", "1");
    files->AppendToFile("up.bat", "put");
    files->AppendToFile("up.bat", "put");
    files->DeleteFile("up.bat");
    EXPECT_THAT(files->Written(), ElementsAre("C:\\b.htm", "C:\\sub\\a.htm", "C:\\b.htm",
                                              "C:\\up.bat", "C:\\up.bat"));
    files->Refresh();
    EXPECT_TRUE(files->Written().empty());
}

TEST_F(DriveWriting, AppendingMakesAMissingFile)
{
    files->AppendToFile("Up.bat", "one\r\n");
    files->AppendToFile("up.BAT", "two\r\n");
    EXPECT_EQ(NamesIn(), (Names{"Up.bat"}));
    EXPECT_EQ(Content("Up.bat"), "one\r\ntwo\r\n");
}

TEST_F(DriveWriting, AFullDiskLeavesTheOldContent)
{
    Put("old.htm", "old");
    const std::string large(100'000, 'x');
    {
        const FullDisk full(50'000);
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("old.htm", large); }),
                    testing::AllOf(StartsWith("file: "), HasSubstr("C:\\old.htm")));
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("new.htm", large); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->AppendToFile("old.htm", large); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->AppendToFile("new.htm", large); }), StartsWith("file: "));
    }
    EXPECT_EQ(Content("old.htm"), "old");
    EXPECT_EQ(NamesIn(), (Names{"old.htm"}));
    EXPECT_FALSE(files->FileExists("NEW.htm"));
    EXPECT_TRUE(files->Written().empty());
}

TEST_F(DriveWriting, AKilledRunLeavesTheOldContentAndNothingElse)
{
    const int draft = open(root.c_str(), O_TMPFILE | O_WRONLY, 0600);
    if (draft < 0)
        GTEST_SKIP() << "this file system wants a name for every file";
    close(draft);
    Put("old.htm", "old");
    for (const char* name : {"old.htm", "new.htm"}) {
        const pid_t child = fork();
        if (child == 0) {
            // The system kills the process in the middle of its write.
            const rlimit limit{50'000, 50'000};
            const rlimit no_core{0, 0};
            setrlimit(RLIMIT_FSIZE, &limit);
            setrlimit(RLIMIT_CORE, &no_core);
            std::signal(SIGXFSZ, SIG_DFL);
            files->WriteFile(name, std::string(100'000, 'x'));
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status)) << name;
    }
    EXPECT_EQ(Content("old.htm"), "old");
    EXPECT_EQ(NamesIn(), (Names{"old.htm"}));
}

TEST_F(DriveWriting, AFileThatMayNotBeWrittenIsKept)
{
    Put("a.htm", "old");
    chmod((root + "/a.htm").c_str(), 0444);
    chmod(root.c_str(), 0777);
    chmod(top.c_str(), 0755);
    {
        const NotRoot somebody;
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "new"); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->AppendToFile("a.htm", "new"); }), StartsWith("file: "));
        EXPECT_EQ(ErrorOf([&] { files->WriteFile("a.htm", "old"); }), ""); // nothing to write
    }
    EXPECT_EQ(Content("a.htm"), "old");
    EXPECT_EQ(NamesIn(), (Names{"a.htm"}));
}

TEST_F(DriveWriting, AFolderThatMayNotBeWrittenIsKept)
{
    Put("a.htm", "old");
    chmod((root + "/a.htm").c_str(), 0666);
    chmod(root.c_str(), 0555);
    chmod(top.c_str(), 0755);
    {
        const NotRoot somebody;
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "new"); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("b.htm", "new"); }), StartsWith("file: "));
        EXPECT_FALSE(files->MakeFolder("sub"));
    }
    chmod(root.c_str(), 0755);
    EXPECT_EQ(Content("a.htm"), "old");
    EXPECT_EQ(NamesIn(), (Names{"a.htm"}));
}

TEST_F(DriveWriting, ManyNewPagesInOneFolder)
{
    for (int i = 0; i < 999; ++i)
        files->WriteFile("Page" + std::to_string(i) + ".htm", "1");
    EXPECT_EQ(NamesIn().size(), 999U);
    EXPECT_TRUE(files->FileExists("PAGE998.HTM"));
    EXPECT_EQ(files->Written().size(), 999U);
}

} // namespace
} // namespace kiv
