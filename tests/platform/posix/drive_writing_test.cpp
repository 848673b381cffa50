// Writing where it depends on rights, limits and signals, which Windows has not or has otherwise.
#include "platform/posix/drive_files.h"
#include "tests/platform/drive_test.h"
#include "tests/platform/posix/not_root.h"

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

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

/// While it lives, this process may not have more than so many files open.
class FewOpenFiles {
  public:
    explicit FewOpenFiles(rlim_t count)
    {
        getrlimit(RLIMIT_NOFILE, &old_limit_);
        const rlimit limit{count, old_limit_.rlim_max};
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    FewOpenFiles(const FewOpenFiles&) = delete;
    FewOpenFiles& operator=(const FewOpenFiles&) = delete;
    ~FewOpenFiles() { setrlimit(RLIMIT_NOFILE, &old_limit_); }

  private:
    rlimit old_limit_{};
};

class DriveRights : public DriveTest {
  protected:
    /// Does `work` without root's rights, on a file "a.htm" and a folder of these rights; the file
    /// must be what it was, and alone.
    void KeepsAFile(mode_t file_rights, mode_t folder_rights, const std::function<void()>& work)
    {
        Put("a.htm", "old");
        chmod((root + "/a.htm").c_str(), file_rights);
        chmod(root.c_str(), folder_rights);
        chmod(top.c_str(), 0755);
        {
            const NotRoot somebody;
            work();
        }
        chmod(root.c_str(), 0755);
        EXPECT_EQ(Content("a.htm"), "old");
        EXPECT_EQ(NamesIn(), (Names{"a.htm"}));
    }
};

TEST_F(DriveRights, ANewFileObeysTheMask)
{
    const mode_t old = umask(027);
    files->WriteFile("a.htm", "1");
    umask(old);
    EXPECT_EQ(State("a.htm").st_mode & 07777, 0640U);
}

TEST_F(DriveRights, AReplacedFileKeepsItsMode)
{
    Put("a.htm", "old");
    for (const mode_t mode : {0600U, 0644U, 0755U, 0666U}) {
        chmod((root + "/a.htm").c_str(), mode);
        files->WriteFile("a.htm", "mode " + std::to_string(mode));
        EXPECT_EQ(State("a.htm").st_mode & 07777, mode);
    }
}

TEST_F(DriveRights, AReplacedFileKeepsItsOwner)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root gives files away";
    Put("a.htm", "old");
    ASSERT_EQ(chown((root + "/a.htm").c_str(), 1234, 5678), 0);
    files->WriteFile("a.htm", "new");
    EXPECT_EQ(State("a.htm").st_uid, 1234U);
    EXPECT_EQ(State("a.htm").st_gid, 5678U);
}

TEST_F(DriveRights, AFullDiskLeavesTheOldContent)
{
    Put("old.htm", "old");
    const std::string large(100'000, 'x');
    {
        const FullDisk full(50'000);
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("old.htm", large); }),
                    testing::AllOf(StartsWith("file: "), HasSubstr("C:\\old.htm")));
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("new.htm", large); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->WriteSource("old.htm", large); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->AppendToFile("old.htm", large); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->AppendToFile("new.htm", large); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->WriteNewSource("new.htm", large); }),
                    StartsWith("file: "));
    }
    EXPECT_EQ(Content("old.htm"), "old");
    EXPECT_EQ(NamesIn(), (Names{"old.htm"}));
    EXPECT_FALSE(files->FileExists("NEW.htm"));
    EXPECT_TRUE(files->Written().empty());
}

TEST_F(DriveRights, AKilledRunLeavesTheOldContentAndNothingElse)
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

TEST_F(DriveRights, AFileThatMayNotBeWrittenIsKept)
{
    KeepsAFile(0444, 0777, [this] {
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "new"); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->WriteSource("a.htm", "new"); }), StartsWith("file: "));
        EXPECT_EQ(ErrorOf([&] { files->WriteFile("a.htm", "old"); }), ""); // nothing to write
    });
}

TEST_F(DriveRights, AFolderThatMayNotBeWrittenIsKept)
{
    KeepsAFile(0666, 0555, [this] {
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "new"); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("b.htm", "new"); }), StartsWith("file: "));
        EXPECT_THAT(ErrorOf([&] { files->MakeFolder("sub"); }), StartsWith("file: "));
    });
}

/// A process that is there no more.
pid_t ProcessThatEnded()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    int status = 0;
    waitpid(child, &status, 0);
    return child;
}

/// Who begins to work in a folder finds it as the runs that ended in the regular way left it, even
/// when nothing is to be written any more.
TEST_F(DriveRights, ALockedFolderHasNothingOfKilledRuns)
{
    Put(".kiv-" + std::to_string(ProcessThatEnded()) + "-1.tmp", "half");
    const std::string ours = ".kiv-" + std::to_string(getpid()) + "-900.tmp";
    Put(ours, "in work");
    const auto lock = files->LockFolder("C:\\");
    EXPECT_EQ(NamesIn(), (Names{ours}));
}

/// Pages on their way have files open, and so have those that were placed and are yet to be closed.
TEST_F(DriveRights, PagesOnTheirWayLeaveFilesForTheRest)
{
    constexpr int kPages = 400;
    const std::string text(50'000, '.'); // longer to write than to hand over
    for (const std::size_t threads : {2U, 8U}) {
        const FewOpenFiles few(48);
        files = MakeDriveFiles({{'C', root}}, threads);
        files->ChangeDirectory("C:\\");
        files->List(".", "*.*");
        std::string last;
        for (int number = 1; number <= kPages; ++number) {
            last = std::to_string(threads) + "-" + std::to_string(number) + ".htm";
            std::string bytes = text;
            files->HandOver(files->Open(last), bytes, {});
        }
        EXPECT_EQ(files->ReadFile(last), text);
        files->EndHandOvers();
        EXPECT_EQ(files->Written().size(), kPages) << threads;
    }
}

bool KnowsUnnamedFiles(const std::string& folder)
{
#ifdef O_TMPFILE
    const int fd = open(folder.c_str(), O_TMPFILE | O_WRONLY, 0600);
    if (fd >= 0)
        close(fd);
    return fd >= 0;
#else
    return false;
#endif
}

/// So a process that is ended meanwhile leaves nothing of it.
TEST_F(DriveRights, ADraftHasNoNameBeforeItsTurnHasCome)
{
    if (!KnowsUnnamedFiles(root))
        GTEST_SKIP() << "every file of this disk has a name";
    Put("old.htm", "old");
    PosixDriveFiles drives({{'C', root}});
    drives.ChangeDirectory("C:\\");
    for (const char* const name : {"new.htm", "old.htm"}) {
        const Names before = NamesIn();
        const OutputFile file = drives.Open(name);
        const std::string bytes = std::string("text of ") + name;
        const auto draft = drives.BeginPage(file, bytes);
        draft->Prepare();
        EXPECT_EQ(draft->Prepared().outcome, PreparedPage::Outcome::drafted);
        EXPECT_EQ(NamesIn(), before);
        EXPECT_TRUE(draft->Place());
        EXPECT_EQ(Content(name), bytes);
    }
    EXPECT_EQ(NamesIn(), (Names{"new.htm", "old.htm"}));
}

} // namespace
} // namespace kiv
