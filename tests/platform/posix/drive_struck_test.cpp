// System calls that fail as they do on rare file systems and servers, and what other programs do in
// between.
#include "tests/platform/drive_test.h"
#include "tests/platform/posix/struck_calls.h"

#include "platform/posix/drafts.h"

#include <cerrno>
#include <functional>
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class DriveStruck : public DriveTest {
  protected:
    /// The list holds this, and nothing else is there.
    void ExpectList(const char* content) const
    {
        EXPECT_EQ(Content("list.txt"), content);
        EXPECT_EQ(NamesIn(), (Names{"list.txt"}));
    }

    /// Replaces the list in a process that ends as soon as the new content stands in its place;
    /// `before` happens right before that.
    void ReplaceAndDie(std::function<void()> before)
    {
        const pid_t child = fork();
        if (child == 0) {
            const StruckCalls struck(
                {{.call = "exchange", .before = std::move(before), .after = [] { _exit(7); }}});
            files->ReplaceSource("list.txt", "old", "new");
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7);
    }
};

TEST_F(DriveStruck, WhatAServerTellsAtClosingIsToldBeforeAPageHasItsName)
{
    const std::string native = root + "/page.htm";
    for (const bool tells_at_closing : {false, true}) {
        const StruckCalls struck({{.call = "dup", .error = EDQUOT}});
        FilledDraft filled;
        EXPECT_EQ(
            FillNew({.native = native, .bytes = "x", .tells_at_closing = tells_at_closing}, filled),
            tells_at_closing ? EDQUOT : 0);
        if (!filled.unnamed)
            GTEST_SKIP() << "the disk knows no files without a name";
    }
}

TEST_F(DriveStruck, ALockThatFailsIsNotTaken)
{
    for (const int error : {EIO, EBADF, ENOMEM, EINTR}) { // each time that it is asked for
        const StruckCalls struck({{.call = "flock", .error = error}});
        EXPECT_THAT(ErrorOf([&] { files->LockFolder("C:\\"); }),
                    AllOf(StartsWith("file: cannot work in C:\\: "),
                          testing::Not(HasSubstr("another run"))));
    }
}

TEST_F(DriveStruck, WithoutLocksOneDoesWithout)
{
    for (const int error : {ENOLCK, EOPNOTSUPP, ENOSYS, EINVAL}) {
        const StruckCalls struck({{.call = "flock", .error = error}});
        EXPECT_EQ(ErrorOf([&] { files->LockFolder("C:\\"); }), "");
    }
}

TEST_F(DriveStruck, WhereModesCannotBeSetNobodyGetsMore)
{
    for (const int error : {EPERM, EOPNOTSUPP, ENOSYS}) {
        const StruckCalls struck({{.call = "fchmod", .error = error}});
        files->Refresh();
        Put("a.htm", "old");
        chmod((root + "/a.htm").c_str(), 0600); // as every draft begins
        files->WriteFile("a.htm", "kept");
        EXPECT_THAT(files->Losses(), IsEmpty());
        chmod((root + "/a.htm").c_str(), 0644);
        files->WriteFile("a.htm", "new");
        EXPECT_EQ(Content("a.htm"), "new");
        EXPECT_THAT(files->Losses(), ElementsAre("C:\\a.htm was replaced and has lost its mode"));
        EXPECT_EQ(State("a.htm").st_mode & 07777U, 0600U);
        chmod((root + "/a.htm").c_str(), 0200);
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "more"); }),
                    StartsWith("file: cannot write C:\\a.htm"));
        EXPECT_EQ(State("a.htm").st_mode & 07777U, 0200U);
    }
}

TEST_F(DriveStruck, AModeThatFailsOtherwiseIsAnError)
{
    Put("a.htm", "old");
    const StruckCalls struck({{.call = "fchmod", .error = EIO}});
    EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "new"); }), StartsWith("file: "));
    EXPECT_EQ(Content("a.htm"), "old");
}

TEST_F(DriveStruck, WhereOwnersCannotBeSetTheyAreLost)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root gives files away";
    for (const int error : {EPERM, EINVAL, EACCES, ENOSYS, EOPNOTSUPP}) {
        Put("a.htm", "old");
        ASSERT_EQ(chown((root + "/a.htm").c_str(), 1234, 5678), 0);
        files->Refresh();
        const StruckCalls struck({{.call = "fchown", .error = error}});
        files->WriteFile("a.htm", "new");
        EXPECT_THAT(files->Losses(),
                    ElementsAre("C:\\a.htm was replaced and has lost its group and its owner"));
    }
}

TEST_F(DriveStruck, WhatIsThereAlreadyIsFlushedToItsName)
{
    Put("list.txt", "old");
    Flushed().clear();
    files->WriteSource("list.txt", "old");
    EXPECT_THAT(Flushed(), ElementsAre("file", "folder"));
    Flushed().clear();
    files->Refresh();
    files->KeepSource("list.txt", "old");
    EXPECT_THAT(Flushed(), ElementsAre("file", "folder"));
    EXPECT_THAT(files->Written(), IsEmpty());
    Flushed().clear();
    files->WriteFile("list.txt", "old");
    EXPECT_THAT(Flushed(), IsEmpty());
}

TEST_F(DriveStruck, AnAppendThatFailsTakesBackItsOwnBytes)
{
    Put("up.bat", "one\r\n");
    const StruckCalls struck({{.call = "write", .error = ENOSPC, .spared = 2}});
    EXPECT_THAT(ErrorOf([&] { files->AppendToFile("up.bat", "two two two\r\n"); }),
                HasSubstr("no space left"));
    EXPECT_EQ(Content("up.bat"), "one\r\n");
}

TEST_F(DriveStruck, AnAppendThatFailsKeepsWhatOthersHaveWritten)
{
    Put("up.bat", "one\r\n");
    const auto other = [&] {
        std::ofstream(Native("up.bat"), std::ios::binary | std::ios::app) << "other\r\n";
    };
    {
        const StruckCalls struck(
            {{.call = "write", .error = ENOSPC, .spared = 1, .before = other}});
        EXPECT_THAT(ErrorOf([&] { files->AppendToFile("up.bat", "two two two\r\n"); }),
                    HasSubstr("no space left"));
    }
    EXPECT_EQ(Content("up.bat"), "one\r\ntwo other\r\n");
    {
        std::filesystem::remove(Native("up.bat"));
        const StruckCalls struck({{.call = "write", .error = ENOSPC, .before = other}});
        EXPECT_THAT(ErrorOf([&] { files->AppendToFile("up.bat", "two\r\n"); }),
                    HasSubstr("no space left"));
    }
    EXPECT_EQ(Content("up.bat"), "other\r\n");
}

TEST_F(DriveStruck, AnAppendThatFailsLeavesAnEmptyFileThatWasThere)
{
    Put("up.bat", "");
    const StruckCalls struck({{.call = "write", .error = ENOSPC, .spared = 1}});
    EXPECT_THAT(ErrorOf([&] { files->AppendToFile("up.bat", "two two two\r\n"); }),
                HasSubstr("no space left"));
    EXPECT_EQ(NamesIn(), (Names{"up.bat"}));
    EXPECT_EQ(Content("up.bat"), "");
}

TEST_F(DriveStruck, AnExchangeThatWasDoneIsOne)
{
    Put("list.txt", "old");
    const StruckCalls struck({{.call = "exchange", .error = EIO, .is_done_all_the_same = true}});
    EXPECT_EQ(ErrorOf([&] { files->ReplaceSource("list.txt", "old", "new"); }), "");
    ExpectList("new");
}

TEST_F(DriveStruck, WhatWasGivenBackStays)
{
    Put("list.txt", "theirs");
    // The list and the draft change places; the way back is done, and called a failure.
    const StruckCalls struck(
        {{.call = "exchange", .error = EIO, .is_done_all_the_same = true, .spared = 1}});
    EXPECT_THAT(ErrorOf([&] { files->ReplaceSource("list.txt", "old", "new"); }),
                HasSubstr("another program has changed it"));
    ExpectList("theirs");
}

TEST_F(DriveStruck, WhatCannotBeExchangedBackIsMovedBack)
{
    Put("list.txt", "theirs");
    const StruckCalls struck({{.call = "exchange", .error = EIO, .spared = 1}});
    EXPECT_THAT(ErrorOf([&] { files->ReplaceSource("list.txt", "old", "new"); }),
                HasSubstr("another program has changed it"));
    ExpectList("theirs");
}

TEST_F(DriveStruck, WhatIsNewerStillStaysAndNothingIsLost)
{
    Put("list.txt", "theirs");
    Put("list.txt.saved", "from another day");
    const auto save = [&] {
        Put("list.new", "newer");
        std::filesystem::rename(Native("list.new"), Native("list.txt"));
    };
    const StruckCalls struck({{.call = "exchange", .error = EIO, .spared = 1, .before = save}});
    EXPECT_THAT(ErrorOf([&] { files->ReplaceSource("list.txt", "old", "new"); }),
                HasSubstr("another program has changed it"));
    EXPECT_EQ(Content("list.txt"), "newer");
    EXPECT_EQ(Content("list.txt.saved"), "from another day");
    EXPECT_EQ(Content("list.txt.saved2"), "theirs");
    EXPECT_EQ(NamesIn(), (Names{"list.txt", "list.txt.saved", "list.txt.saved2"}));
}

TEST_F(DriveStruck, ALinkThatWasMadeIsNoTakenName)
{
    Put("a.txt", "a");
    const StruckCalls struck({{.call = "renameat2", .error = EINVAL},
                              {.call = "link", .error = EEXIST, .is_done_all_the_same = true}});
    EXPECT_EQ(ErrorOf([&] { files->RenameFile("a.txt", "b.txt"); }), "");
    EXPECT_EQ(NamesIn(), (Names{"b.txt"}));
}

TEST_F(DriveStruck, AnotherNameOfTheFileIsATakenOne)
{
    Put("a.txt", "a");
    std::filesystem::create_hard_link(Native("a.txt"), Native("b.txt"));
    const StruckCalls struck({{.call = "renameat2", .error = EINVAL}});
    EXPECT_THAT(ErrorOf([&] { files->RenameFile("a.txt", "b.txt"); }), HasSubstr("target exists"));
    EXPECT_EQ(NamesIn(), (Names{"a.txt", "b.txt"}));
}

TEST_F(DriveStruck, AKilledRunLeavesNeitherTheOldListNorItsDraft)
{
    Put("list.txt", "old");
    ReplaceAndDie({});
    EXPECT_EQ(NamesIn().size(), 2U);
    files->LockFolder("C:\\");
    ExpectList("new");
    EXPECT_THAT(files->Losses(), IsEmpty());
}

TEST_F(DriveStruck, WhatAnEditorSavedBeforeAKillIsKept)
{
    Put("list.txt", "old");
    ReplaceAndDie([&] { Put("list.txt", "theirs"); });
    EXPECT_EQ(files->ListFiles(".", "*.*"), (std::vector<std::string>{"list.txt"}));
    files->LockFolder("C:\\");
    EXPECT_EQ(Content("list.txt"), "new");
    EXPECT_EQ(Content("list.txt.saved"), "theirs");
    EXPECT_EQ(NamesIn(), (Names{"list.txt", "list.txt.saved"}));
    EXPECT_THAT(files->Losses(), ElementsAre(StartsWith("C:\\list.txt.saved is what another ")));
}

} // namespace
} // namespace kiv
