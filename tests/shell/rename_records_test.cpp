// Runs of the renamers that are cut short, and runs that are taken back without a report.
#include "recorded_renames.h"
#include "tests/support/failing_files.h"
#include "text/text.h"

#include <functional>
#include <limits>
#include <new>

namespace kiv {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

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
                FinishRun(*files, plan, renamed);
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
        for (const Renaming renaming : {Renaming::dry_run, Renaming::real}) {
            const std::optional<RunError> error =
                workspace.Run([&] { dodirfix(workspace, renaming); });
            ASSERT_TRUE(error);
            EXPECT_THAT(error->text, HasSubstr("it is no record of renames. Move it away"));
        }
        EXPECT_TRUE(Exists("site/a b"));
    }
}

// The record of a run that is over once stopped every other one.
TEST_F(RecordedRenames, ADamagedRecordStopsOnlyWhoTakesItBack)
{
    PutNames({"a b"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    const Renames report = workspace.Renamed;
    Put(RecordFile(), "nonsense");
    files->Refresh();
    const std::optional<RunError> error = workspace.Run([&] { UndoLastRenames(workspace); });
    ASSERT_TRUE(error);
    EXPECT_THAT(error->text, HasSubstr("it is no record of renames. Those in C:\\site can be"));
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, report); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
    EXPECT_THAT(reporter.shown, IsEmpty());
}

// Folders that differ in case alone once had one record, and the second could rename nothing.
TEST_F(RecordedRenames, EachFolderHasARecordOfItsOwn)
{
    for (const char* const folder : {"C:\\site", "C:\\other\\SITE"}) {
        Put(std::string(folder).substr(3) == "site" ? "site/a b" : "other/SITE/a b", "");
        workspace.LookAt(folder);
        EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    }
    workspace.LookAt("C:\\site");
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
    EXPECT_EQ(NamesIn("other/SITE"), (Texts{"a-b"}));
}

TEST_F(RecordedRenames, AFolderIsItselfHoweverItIsSpelled)
{
    PutNames({"a b"});
    workspace.LookAt("C:\\SITE");
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    workspace.LookAt("C:\\.\\Site\\");
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "a-b", "c"); }), "");
    workspace.LookAt("c:/site");
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a-b"}));
}

#ifndef _WIN32 // where case tells folders apart, and everybody may make links
TEST_F(RecordedRenames, FoldersThatDifferInCaseHaveARecordEach)
{
    for (const char* const folder : {"site", "Site"}) {
        Put(std::string(folder) + "/a b", "");
        files->Refresh();
        workspace.LookAt("C:\\" + std::string(folder));
        EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    }
    for (const char* const folder : {"site", "Site"}) {
        workspace.LookAt("C:\\" + std::string(folder));
        EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
        EXPECT_EQ(NamesIn(folder), (Texts{"a b"}));
    }
}

TEST_F(RecordedRenames, ALinkLeadsToTheFoldersRecord)
{
    PutNames({"a b"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    std::filesystem::create_directory_symlink(Native("site"), Native("link"));
    workspace.LookAt("C:\\link");
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
}

TEST_F(RecordedRenames, AStateFolderThatCannotBeLookedAtIsToldOf)
{
    PutNames({"a b"});
    std::filesystem::create_symlink("state", Native("state")); // leads to itself
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    ASSERT_EQ(reporter.shown.size(), 1U);
    EXPECT_THAT(reporter.shown[0], HasSubstr("The old names are not kept"));
    const Renames report = workspace.Renamed;
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "file");
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, report); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
}
#endif

TEST_F(RecordedRenames, ADryRunShowsWhatACutShortRunHasLeft)
{
    for (const bool is_undoing : {false, true}) {
        for (std::size_t done = 0; done <= kPlan.size(); ++done) {
            SCOPED_TRACE(done);
            std::filesystem::remove_all(Native("site"));
            if (is_undoing)
                PutNames({"a-b", "c-d", "e-f", "g h"});
            else
                PutNames({"a b", "c d", "e f", "g h"});
            CutShort(is_undoing ? Reversed(kPlan) : kPlan, done, is_undoing);
            const Texts before = NamesIn("site");
            reporter.shown.clear();
            EXPECT_EQ(KindOf([&] { dodirfix(workspace, Renaming::dry_run); }), "");
            const Renames foretold = workspace.Renamed;
            EXPECT_EQ(NamesIn("site"), before);
            EXPECT_TRUE(HasJournal());
            EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
            EXPECT_EQ(workspace.Renamed, foretold);
            ASSERT_EQ(reporter.shown.size(), 2U);
            EXPECT_EQ(reporter.shown[0], reporter.shown[1]);
            EXPECT_THAT(reporter.shown[0], HasSubstr("was cut short"));
            EXPECT_EQ(NamesIn("site"), (Texts{"a-b", "c-d", "e-f", "g-h"}));
            // What was being taken back is no part of the new run, which has the names again.
            EXPECT_EQ(foretold.size(), is_undoing ? 3 - done + 4 : 3 - done + 1);
        }
    }
}

TEST_F(RecordedRenames, ADryRunForetellsThatAFormerRunCannotBeFinished)
{
    PutNames({"a b", "c d", "e f"});
    CutShort(kPlan, 1);
    Put("site/C-D", "somebody else's");
    files->Refresh();
    const std::optional<RunError> foretold =
        workspace.Run([&] { dodirfix(workspace, Renaming::dry_run); });
    ASSERT_TRUE(foretold);
    const std::optional<RunError> error = workspace.Run([&] { dodirfix(workspace); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->text, foretold->text);
    EXPECT_THAT(workspace.Renamed, IsEmpty());
    EXPECT_TRUE(Exists("site/c d"));
}

TEST_F(RecordedRenames, AnUndoingThatWasKilledIsFinished)
{
    const Renames back = Reversed(kPlan);
    for (std::size_t done = 0; done <= back.size(); ++done) {
        for (const bool by_report : {false, true}) {
            SCOPED_TRACE(done);
            std::filesystem::remove_all(Native("site"));
            PutNames({"a-b", "c-d", "e-f"});
            CutShort(back, done, true);
            EXPECT_EQ(KindOf([&] {
                          if (by_report)
                              UndoRenames(workspace, kPlan);
                          else
                              UndoLastRenames(workspace);
                      }),
                      "");
            EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f"}));
            EXPECT_EQ(workspace.Renamed.size(), back.size() - done);
            EXPECT_FALSE(HasJournal());
            EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "file"); // there is none
        }
    }
}

TEST_F(RecordedRenames, ARenamerPutsTheRemainingOldNamesBackFirst)
{
    PutNames({"a b", "c d"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    CutShort({{"c-d", "c d"}, {"a-b", "a b"}}, 1, true);
    workspace.changethedirectory("C:\\site");
    ASSERT_EQ(reporter.shown.size(), 1U);
    EXPECT_THAT(reporter.shown[0], HasSubstr("Undoing a renaming in C:\\site was cut short"));
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "c", "x"); }), "");
    EXPECT_EQ(workspace.Renamed, (Renames{{"a-b", "a b"}, {"c d", "x d"}}));
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d"}));
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "file");
}

TEST_F(RecordedRenames, TheReportOfAnUndoingThatWasCutShortTakesItBack)
{
    PutNames({"a-b", "c-d", "e-f"});
    CutShort(Reversed(kPlan), 2, true);
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, {{"e-f", "e f"}, {"c-d", "c d"}}); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a-b", "c-d", "e-f"}));
    EXPECT_FALSE(HasJournal());
}

/// Files whose journal is looked at right before each rename.
class WatchedFiles : public test::FailingFiles {
  public:
    WatchedFiles(Files& files, std::function<void()> look)
        : FailingFiles(files, std::numeric_limits<int>::max()), look_(std::move(look))
    {
    }

    NameChange RenameExactly(std::string_view from, std::string_view to) override
    {
        look_();
        return FailingFiles::RenameExactly(from, to);
    }

  private:
    std::function<void()> look_;
};

TEST_F(RecordedRenames, UndoingStandsInTheFolderBeforeItBegins)
{
    PutNames({"a b", "c d"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    const Renames report = workspace.Renamed;
    std::string folder = files->RealFolder("C:\\site");
    ReplaceEach(folder, "\\", "\\\\"); // as a record spells it
    int renamed = 0;
    WatchedFiles watched(*files, [&] {
        ++renamed;
        EXPECT_EQ(Content("site/" + std::string(kRenameJournalFile)),
                  "kiv renames back 1\r\n" + folder + "\r\nc-d\tc d\r\na-b\ta b\r\n");
    });
    Machine seen{watched, *files, clock, clipboard, programs, reporter, pictures};
    Workspace undoing(seen);
    undoing.RecordsFolder = workspace.RecordsFolder;
    EXPECT_FALSE(undoing.Run([&] { UndoLastRenames(undoing); }));
    EXPECT_EQ(renamed, 2);
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    EXPECT_FALSE(undoing.Run([&] { UndoRenames(undoing, report); }));
    EXPECT_EQ(renamed, 4);
    EXPECT_FALSE(HasJournal());
}

// A report of nothing was once taken for one of every run.
TEST_F(RecordedRenames, AnEmptyReportTakesNothingBack)
{
    PutNames({"a b", "c d", "e f"});
    CutShort(kPlan, 1);
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, {}); }), "");
    EXPECT_EQ(files->ListFiles(".", "*.*"), (Texts{"a-b", "c d", "e f"}));
    EXPECT_TRUE(HasJournal());
}

TEST_F(RecordedRenames, AnEmptyReportIsThatOfARunThatHasDoneNothing)
{
    PutNames({"a b", "c d", "e f"});
    CutShort(kPlan, 0);
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, {}); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f"}));
    EXPECT_FALSE(HasJournal());
}

TEST_F(RecordedRenames, AnEmptyReportIsThatOfAnUndoingThatHasDoneNothing)
{
    PutNames({"a-b", "c-d", "e-f"});
    CutShort(Reversed(kPlan), 0, true);
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, {}); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a-b", "c-d", "e-f"}));
}

TEST_F(RecordedRenames, TheReportOfAnotherRunWaitsForTheOneThatWasCutShort)
{
    PutNames({"a b", "c d", "e f", "x"});
    CutShort(kPlan, 1);
    const std::optional<RunError> error = workspace.Run([&] {
        UndoRenames(workspace, {{"y", "x"}});
    });
    ASSERT_TRUE(error);
    EXPECT_THAT(error->text, HasSubstr("another renaming was cut short there"));
    EXPECT_EQ(files->ListFiles(".", "*.*"), (Texts{"a-b", "c d", "e f", "x"}));
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, {{"y", "x"}}); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f", "y"}));
}

/// Files that can get no other name.
class StubbornFiles : public test::FailingFiles {
  public:
    explicit StubbornFiles(Files& files) : FailingFiles(files, std::numeric_limits<int>::max()) {}

    NameChange RenameFile(std::string_view, std::string_view) override
    {
        throw RunError(ErrorKind::file, "no");
    }
};

// Once, a run that came to nothing left a record of nothing.
TEST_F(RecordedRenames, ARunThatFailsAtOnceLeavesTheFormerOneOnRecord)
{
    PutNames({"a b"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    StubbornFiles stubborn(*files);
    Machine broken{stubborn, *files, clock, clipboard, programs, reporter, pictures};
    Workspace unlucky(broken);
    unlucky.RecordsFolder = workspace.RecordsFolder;
    EXPECT_TRUE(unlucky.Run([&] { dorenamefiles(unlucky, "a", "x"); }));
    EXPECT_FALSE(HasJournal());
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
}

#ifndef _WIN32
TEST_F(RecordedRenames, ANameComesBackBesideOneThatDiffersInCaseAlone)
{
    PutNames({"a", "A"});
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "a", "b"); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"A", "b"}));
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "b", "a"); }), "file"); // a user's may not
    EXPECT_EQ(KindOf([&] { UndoLastRenames(workspace); }), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"A", "a"}));
    EXPECT_EQ(Content("site/a"), "a");
}
#endif

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
