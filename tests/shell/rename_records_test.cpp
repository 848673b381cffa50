// Runs of the renamers that are cut short, and runs that are taken back without a report.
#include "platform/site_files.h"
#include "shell/rename_records.h"
#include "shell/renames.h"
#include "shell_desk.h"
#include "tests/support/failing_files.h"

#include <filesystem>
#include <limits>
#include <new>

namespace kiv {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class RecordedRenames : public ShellTest {
  protected:
    RecordedRenames()
    {
        workspace.LookAt("C:\\site");
        workspace.RecordsFolder = "C:\\state\\kiv\\renames";
    }

    void PutNames(const Texts& names)
    {
        for (const std::string& name : names)
            Put("site/" + name, name);
    }

    /// Leaves the folder as a run leaves it that is killed behind so many of its renames.
    void CutShort(const Renames& renames, std::size_t done)
    {
        RenameRecord(machine, workspace.RecordsFolder).Begin(renames);
        for (std::size_t i = 0; i < done; ++i)
            std::filesystem::rename(Native("site/" + renames[i].from),
                                    Native("site/" + renames[i].to));
        files->Refresh();
    }

    bool HasJournal() { return Exists("site/" + std::string(kRenameJournalFile)); }
};

const Renames kPlan = {{"a b", "a-b"}, {"c d", "c-d"}, {"e f", "e-f"}};

TEST_F(RecordedRenames, TheLastRunIsTakenBackWithoutAReport)
{
    const Texts names = {"A b.txt", "C d.txt", "fine.txt"};
    PutNames(names);
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a-b.txt", "c-d.txt", "fine.txt"}));
    EXPECT_THAT(files->Written(), IsEmpty()); // the record is the program's own
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), names);
    EXPECT_EQ(workspace.Renamed, (Renames{{"c-d.txt", "C d.txt"}, {"a-b.txt", "A b.txt"}}));
    // Once.
    const std::optional<RunError> error = workspace.Run([&] { UndoLastRenames(workspace); });
    ASSERT_TRUE(error);
    EXPECT_THAT(error->text, HasSubstr("there is none on record"));
    EXPECT_EQ(NamesIn("site"), names);
}

TEST_F(RecordedRenames, ARunThatIsTakenBackByItsReportIsOffTheRecord)
{
    PutNames({"a b"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    const Renames report = workspace.Renamed;
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, report); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "file");
}

TEST_F(RecordedRenames, ARunThatWasKilledIsFinishedByTheNext)
{
    for (std::size_t done = 0; done <= kPlan.size(); ++done) {
        PutNames({"a b", "c d", "e f"});
        CutShort(kPlan, done);
        EXPECT_TRUE(HasJournal());
        reporter.shown.clear();
        EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
        EXPECT_EQ(NamesIn("site"), (Texts{"a-b", "c-d", "e-f"})) << done;
        EXPECT_EQ(workspace.Renamed,
                  Renames(kPlan.begin() + static_cast<std::ptrdiff_t>(done), kPlan.end()));
        ASSERT_EQ(reporter.shown.size(), 1U);
        EXPECT_THAT(reporter.shown[0], HasSubstr("was cut short"));
        // Both runs count as one.
        EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
        EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f"})) << done;
        EXPECT_EQ(Content("site/a b"), "a b");
    }
}

TEST_F(RecordedRenames, ARunThatWasKilledIsTakenBack)
{
    for (std::size_t done = 0; done <= kPlan.size(); ++done) {
        PutNames({"a b", "c d", "e f"});
        CutShort(kPlan, done);
        EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
        EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f"})) << done;
        EXPECT_EQ(workspace.Renamed.size(), done);
    }
}

#ifndef _WIN32
TEST_F(RecordedRenames, TheReportOfARunThatWasCutShortTakesItBackToo)
{
    PutNames({"a b", "c d", "e f"});
    CutShort(kPlan, 1);
    std::filesystem::create_hard_link(Native("site/c d"), Native("site/c-d"));
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, {kPlan[0]}); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f"}));
    EXPECT_FALSE(HasJournal());
}
#endif

TEST_F(RecordedRenames, NamesThatFollowEachOther)
{
    // The second takes the name that the first leaves free.
    const Renames plan = {{"b", "c"}, {"a", "b"}};
    for (std::size_t done = 0; done <= plan.size(); ++done) {
        for (const bool forward : {true, false}) {
            std::filesystem::remove_all(Native("site"));
            PutNames({"a", "b"});
            CutShort(plan, done);
            Renames renamed;
            if (forward)
                FinishRenames(*files, plan, renamed);
            else
                EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
            EXPECT_EQ(Content(forward ? "site/c" : "site/b"), "b") << done;
            EXPECT_EQ(Content(forward ? "site/b" : "site/a"), "a") << done;
        }
    }
}

#ifndef _WIN32 // where a rename may take two steps, and names hold line ends and stray bytes
TEST_F(RecordedRenames, ARenameBetweenItsTwoStepsIsFinishedOrTakenBack)
{
    for (const bool forward : {true, false}) {
        std::filesystem::remove_all(Native("site"));
        PutNames({"a b"});
        CutShort({{"a b", "a-b"}}, 0);
        std::filesystem::create_hard_link(Native("site/a b"), Native("site/a-b"));
        EXPECT_EQ(KindOf([&] {
                      if (forward)
                          dodirfix(workspace);
                      else
                          UndoLastRenames(workspace);
                  }),
                  "");
        EXPECT_EQ(NamesIn("site"), (Texts{forward ? "a-b" : "a b"}));
        EXPECT_EQ(std::filesystem::hard_link_count(Native("site/" + NamesIn("site")[0])), 1U);
    }
}

TEST_F(RecordedRenames, EveryByteOfANameComesBack)
{
    const Texts names = {"A\tB\\n.txt", "L\nM\r.txt", "\xC9 1.txt"};
    PutNames(names);
    std::filesystem::remove(Native("site/A\tB\\n.txt"));
    PutNames({"A\tB.txt"});
    const Texts before = NamesIn("site");
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, ".txt", " x"); }), "");
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), before);
}
#endif

TEST_F(RecordedRenames, ARunThatFailsIsOverWithWhatItHasDone)
{
    PutNames({"A b", "C d", "c-d"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "file"); // "c-d" is taken
    EXPECT_EQ(NamesIn("site"), (Texts{"C d", "a-b", "c-d"}));
    EXPECT_FALSE(HasJournal());
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"A b", "C d", "c-d"}));
}

TEST_F(RecordedRenames, AFolderWithACutShortRunSaysSo)
{
    PutNames({"a b"});
    workspace.changethedirectory("C:\\site");
    EXPECT_THAT(reporter.shown, IsEmpty());
    CutShort({{"a b", "a-b"}}, 1);
    workspace.changethedirectory("C:\\site");
    ASSERT_EQ(reporter.shown.size(), 1U);
    EXPECT_THAT(reporter.shown[0], HasSubstr("A renaming in C:\\site was cut short"));
    EXPECT_EQ(files->ListFiles(".", "*.*"), (Texts{"a-b"})); // the journal is in no listing
}

TEST_F(RecordedRenames, WhatCannotBeRecordedForLaterIsTold)
{
    PutNames({"a b"});
    Put("state", "a file, where a folder should be");
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a-b"}));
    ASSERT_EQ(reporter.shown.size(), 1U);
    EXPECT_THAT(reporter.shown[0], HasSubstr("The old names are not kept"));
}

TEST_F(RecordedRenames, ADamagedJournalIsRefused)
{
    for (const char* const damaged :
         {"", "nonsense", "kiv renames 1\r\nZ:\\x\r\nno second name\r\n"}) {
        PutNames({"a b"});
        Put("site/" + std::string(kRenameJournalFile), damaged);
        const std::optional<RunError> error = workspace.Run([&] { dodirfix(workspace); });
        ASSERT_TRUE(error);
        EXPECT_THAT(error->text, HasSubstr("it is no record of renames"));
        EXPECT_TRUE(Exists("site/a b"));
    }
}

TEST_F(RecordedRenames, ARunWithAnyStepFailingCanBeStartedAgain)
{
    PutNames({"a b"});
    for (int step = 0;; ++step) {
        test::FailingFiles failing(*files, step);
        Machine broken{failing, *files, clock, clipboard, programs, reporter, pictures};
        Workspace unlucky(broken);
        const std::optional<RunError> error = unlucky.Run([&] { dodirfix(unlucky); });
        if (!failing.Failed())
            break;
        const bool is_old = Exists("site/a b");
        EXPECT_NE(is_old, Exists("site/a-b")) << step;
        EXPECT_EQ(Content(is_old ? "site/a b" : "site/a-b"), "a b") << step;
        files->Refresh();
        // Whatever the run has left, the next one ends it.
        EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "") << step;
        EXPECT_FALSE(HasJournal()) << step;
        EXPECT_EQ(NamesIn("site"), (Texts{"a-b"})) << step;
        std::filesystem::rename(Native("site/a-b"), Native("site/a b"));
    }
}

/// Files with no memory left right behind a rename.
class ForgetfulFiles : public test::FailingFiles {
  public:
    explicit ForgetfulFiles(Files& files) : FailingFiles(files, std::numeric_limits<int>::max()) {}

    NameChange RenameFile(std::string_view from, std::string_view to) override
    {
        FailingFiles::RenameFile(from, to);
        throw std::bad_alloc();
    }
};

TEST_F(RecordedRenames, WithoutMemoryARunStillKnowsWhatItHasDone)
{
    PutNames({"a b", "c d"});
    ForgetfulFiles forgetful(*files);
    Machine broken{forgetful, *files, clock, clipboard, programs, reporter, pictures};
    Workspace unlucky(broken);
    const std::optional<RunError> error = unlucky.Run([&] { dodirfix(unlucky); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->kind, ErrorKind::memory);
    EXPECT_EQ(unlucky.Renamed, (Renames{{"a b", "a-b"}}));
}

} // namespace
} // namespace kiv
