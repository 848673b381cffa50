// Undoing where some files are in the way or gone, and names that no renamer has to do with.
#include "recorded_renames.h"
#include "tests/support/failing_files.h"

#include <limits>
#ifndef _WIN32
#include "tests/platform/posix/not_root.h"
#include <sys/stat.h>
#endif

namespace kiv {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class UndoneRenames : public RecordedRenames {
  protected:
    std::string TextOf(const std::function<void()>& work)
    {
        const std::optional<RunError> error = workspace.Run(work);
        return error ? error->text : "";
    }
    std::string UndoLast()
    {
        return TextOf([&] { UndoLastRenames(workspace); });
    }
    std::string Journal() { return "site/" + std::string(kRenameJournalFile); }
};

const char* const kWhatToDo = "All others have their old names. Move away what is in the way, or "
                              "bring back what is gone, and start undo-renames again";

// The first of them once kept all behind it from coming back, for good.
TEST_F(UndoneRenames, WhatCanBePutBackIsPutBack)
{
    PutNames({"a b", "c d", "e f", "g h"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    PutNames({"c d"}); // somebody else has the name now
    std::filesystem::remove(Native("site/e-f"));
    const std::string text = UndoLast();
    EXPECT_THAT(text, HasSubstr("cannot rename C:\\site\\e-f: "));
    EXPECT_THAT(text,
                HasSubstr(std::string(". 1 more file keeps its new name, too. ") + kWhatToDo));
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "c-d", "g h"}));
    EXPECT_EQ(Content("site/c d"), "c d");
    EXPECT_EQ(workspace.Renamed, (Renames{{"g-h", "g h"}, {"a-b", "a b"}}));
    // The rest is on record, and can be tried as often as one likes.
    std::filesystem::remove(Native("site/c d"));
    EXPECT_THAT(UndoLast(), HasSubstr(std::string("C:\\site\\e-f: ")));
    EXPECT_EQ(workspace.Renamed, (Renames{{"c-d", "c d"}}));
    PutNames({"e-f"});
    EXPECT_EQ(UndoLast(), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f", "g h"}));
    EXPECT_THAT(UndoLast(), HasSubstr("there is none on record"));
}

TEST_F(UndoneRenames, OneAloneIsNamedAlone)
{
    PutNames({"a b", "c d"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    PutNames({"c d"});
    EXPECT_EQ(UndoLast(),
              std::string("cannot rename C:\\site\\c-d to C:\\site\\c d: target exists. ") +
                  kWhatToDo);
    EXPECT_FALSE(HasJournal());
}

TEST_F(UndoneRenames, ManyAreCounted)
{
    PutNames({"a b", "c d", "e f"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    PutNames({"a b", "c d", "e f"});
    EXPECT_THAT(UndoLast(), HasSubstr(". 2 more files keep their new names, too. "));
    EXPECT_THAT(workspace.Renamed, IsEmpty());
}

// A run that was cut short stayed so, and no renamer could work in the folder.
TEST_F(UndoneRenames, ACutShortRunIsOverWithWhatIsLeftOfIt)
{
    PutNames({"a b", "c d", "e f"});
    CutShort(kPlan, 2);
    PutNames({"c d"});
    EXPECT_THAT(UndoLast(), HasSubstr("target exists"));
    EXPECT_FALSE(HasJournal());
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "c-d", "e f"}));
    std::filesystem::remove(Native("site/c d"));
    EXPECT_EQ(UndoLast(), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f"}));
}

TEST_F(UndoneRenames, WhatCanBeKeptNowhereElseStaysInTheJournal)
{
    PutNames({"a b", "c d", "e f"});
    CutShort(kPlan, 2);
    std::filesystem::remove_all(Native("state"));
    Put("state", "a file, where a folder should be");
    const std::string journal = Content(Journal());
    PutNames({"a b"});
    EXPECT_THAT(UndoLast(), HasSubstr("target exists"));
    EXPECT_EQ(Content(Journal()), journal);
    std::filesystem::remove(Native("site/a b"));
    EXPECT_EQ(UndoLast(), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f"}));
}

TEST_F(UndoneRenames, AnUndoingThatWasKilledGoesPastThemToo)
{
    PutNames({"a-b", "c-d", "e-f", "g h"});
    CutShort(Reversed(kPlan), 1, true);
    PutNames({"c d"});
    EXPECT_THAT(UndoLast(), HasSubstr("C:\\site\\c d: target exists"));
    EXPECT_EQ(workspace.Renamed, (Renames{{"a-b", "a b"}}));
    EXPECT_FALSE(HasJournal());
    std::filesystem::remove(Native("site/c d"));
    EXPECT_EQ(UndoLast(), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "c d", "e f", "g h"}));
}

TEST_F(UndoneRenames, ARenamerForetellsWhatCannotBePutBackFirst)
{
    PutNames({"a-b", "c-d", "e-f", "g h"});
    CutShort(Reversed(kPlan), 1, true);
    PutNames({"c d"});
    std::filesystem::remove(Native("site/a-b"));
    files->Refresh();
    const std::string foretold = TextOf([&] { dodirfix(workspace, Renaming::dry_run); });
    EXPECT_THAT(foretold, HasSubstr(". 1 more file keeps its new name, too. "));
    EXPECT_EQ(TextOf([&] { dodirfix(workspace); }), foretold);
    EXPECT_EQ(NamesIn("site"), (Texts{"c d", "c-d", "e f", "g h"}));
    // That is over and on record; the next one does its own.
    EXPECT_EQ(TextOf([&] { dorenamefiles(workspace, "g", "x"); }), "");
    EXPECT_TRUE(Exists("site/x h"));
}

TEST_F(UndoneRenames, AnotherFileUnderANameInBetweenIsLeftAlone)
{
    // What "c" is cannot become "b" again, so the "b" of today is none of this run's.
    PutNames({"b", "c"});
    EXPECT_THAT(TextOf([&] {
                    UndoRenames(workspace, {{"a", "b"}, {"b", "c"}, {"d", "e"}});
                }),
                HasSubstr("2 more files"));
    EXPECT_EQ(NamesIn("site"), (Texts{"b", "c"}));
}

TEST_F(UndoneRenames, TheReportOfAnotherRunLeavesTheLastOneOnRecord)
{
    PutNames({"a b", "y"});
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, " ", "-"); }), "");
    EXPECT_EQ(KindOf([&] { UndoRenames(workspace, {{"x", "gone"}, {"z", "y"}}); }), "file");
    EXPECT_EQ(NamesIn("site"), (Texts{"a-b", "z"}));
    EXPECT_EQ(UndoLast(), "");
    EXPECT_EQ(NamesIn("site"), (Texts{"a b", "z"}));
}

const char* const kOwnNames[] = {".kiv-99999-1.tmp", ".KIV-99999-1.Tmp", ".kiv-renames",
                                 ".Kiv-Renames"};

// The next command in the folder took the user's file for one of its own, and away.
TEST_F(UndoneRenames, NoFileGetsAnOwnNameOfTheProgram)
{
    for (const std::string own : kOwnNames) {
        for (const Renaming renaming : {Renaming::dry_run, Renaming::real}) {
            PutNames({"letter"});
            EXPECT_EQ(TextOf([&] { dorenamefiles(workspace, "letter", own, renaming); }),
                      "cannot rename C:\\site\\letter to C:\\site\\" + own +
                          ": kiv has such names for its own files, which come and go");
            EXPECT_EQ(NamesIn("site"), (Texts{"letter"}));
        }
    }
}

#ifndef _WIN32
TEST_F(UndoneRenames, AFileThatLooksLikeOneStays)
{
    PutNames({".KIV-99999-1.TMP"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "file");
    EXPECT_EQ(KindOf([&] { dorenamefiles(workspace, "KIV", "x"); }), "file");
    EXPECT_EQ(NamesIn("site"), (Texts{".KIV-99999-1.TMP"}));
}
#endif

TEST_F(UndoneRenames, NoReportOrRecordHasAnOwnName)
{
    PutNames({"x y"});
    EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "");
    const std::string record = Content(RecordFile());
    const std::string path = RecordFile();
    const std::string head = record.substr(0, record.find("x y"));
    for (const std::string own : kOwnNames) {
        for (const Renames& forged : {Renames{{own, "x-y"}}, Renames{{"x y", own}}}) {
            EXPECT_THAT(TextOf([&] { UndoRenames(workspace, forged); }), HasSubstr("kiv has such"));
            const std::string text = head + forged[0].from + "\t" + forged[0].to + "\r\n";
            Put(path, text);
            EXPECT_THAT(UndoLast(), HasSubstr("it is no record of renames"));
            Put(Journal(), text);
            EXPECT_THAT(UndoLast(), HasSubstr("it is no record of renames"));
            EXPECT_EQ(KindOf([&] { dodirfix(workspace); }), "file");
            std::filesystem::remove(Native(Journal()));
            EXPECT_EQ(NamesIn("site"), (Texts{"x-y"}));
        }
    }
}

/// Files that tell how much the user has been told when the first of them is renamed.
class AttentiveFiles : public test::FailingFiles {
  public:
    AttentiveFiles(Files& files, const test::RecordingReporter& reporter)
        : FailingFiles(files, std::numeric_limits<int>::max()), reporter_(reporter)
    {
    }

    NameChange RenameFile(std::string_view from, std::string_view to) override
    {
        told = reporter_.shown;
        return FailingFiles::RenameFile(from, to);
    }

    std::vector<std::string> told;

  private:
    const test::RecordingReporter& reporter_;
};

TEST_F(UndoneRenames, WithoutAFolderForRecordsTheUserIsToldBefore)
{
    PutNames({"a b"});
    AttentiveFiles attentive(*files, reporter);
    Machine seen{attentive, *files, clock, clipboard, programs, reporter, pictures};
    Workspace homeless(seen);
    EXPECT_FALSE(homeless.Run([&] { dodirfix(homeless); }));
    EXPECT_EQ(attentive.told,
              (Texts{"The old names are not kept for \"undo-renames\", which will need the report "
                     "of this run (--json > FILE): the environment names no folder for them"}));
    EXPECT_THAT(reporter.shown, SizeIs(1));
    EXPECT_FALSE(homeless.Run([&] { dodirfix(homeless); })); // with nothing to do
    homeless.RenamesAreReported = true;
    EXPECT_FALSE(homeless.Run([&] { dorenamefiles(homeless, "a", "b"); }));
    EXPECT_THAT(reporter.shown, SizeIs(1));
}

#ifndef _WIN32 // where everybody may make links, and root is somebody
TEST_F(UndoneRenames, ADryRunFailsWhereTheFolderMayNotBeWritten)
{
    PutNames({"a b"});
    ::chmod(Root().c_str(), 0755);
    ::chmod(Native("site").c_str(), 0555);
    const NotRoot somebody;
    const std::string foretold = TextOf([&] { dodirfix(workspace, Renaming::dry_run); });
    EXPECT_THAT(foretold, HasSubstr("cannot write C:\\site\\.kiv-renames: permission denied"));
    EXPECT_THAT(workspace.Renamed, IsEmpty());
    EXPECT_EQ(TextOf([&] { dodirfix(workspace); }), foretold);
    EXPECT_EQ(TextOf([&] { dorenamefiles(workspace, "z", "x", Renaming::dry_run); }), "");
}

TEST_F(UndoneRenames, AJournalThatIsALinkIsNeverFollowed)
{
    const std::string elsewhere = "kiv renames 1\r\nx\r\na b\ta-b\r\n";
    for (const bool is_there : {false, true}) {
        PutNames({"a b"});
        if (is_there)
            Put("utils/elsewhere", elsewhere);
        std::filesystem::remove(Native(Journal()));
        std::filesystem::create_symlink(Native("utils/elsewhere"), Native(Journal()));
        files->Refresh();
        for (const auto& work : std::vector<std::function<void()>>{
                 [&] { dodirfix(workspace); },
                 [&] { dodirfix(workspace, Renaming::dry_run); },
                 [&] { UndoLastRenames(workspace); },
                 [&] {
                     UndoRenames(workspace, {{"x", "a b"}});
                 },
             })
            EXPECT_THAT(TextOf(work), HasSubstr("cannot use C:\\site\\.kiv-renames: it is a link"));
        EXPECT_TRUE(Exists("site/a b"));
        EXPECT_EQ(NamesIn("utils"), is_there ? Texts{"elsewhere"} : Texts{});
        workspace.changethedirectory("C:\\site");
        EXPECT_THAT(reporter.shown, IsEmpty());
    }
    EXPECT_EQ(Content("utils/elsewhere"), elsewhere);
}

// One of the two names went without a word.
TEST_F(UndoneRenames, ALinkOfTheUsersOwnIsNoHalfARename)
{
    PutNames({"a"});
    std::filesystem::create_hard_link(Native("site/a"), Native("site/b"));
    EXPECT_THAT(TextOf([&] { UndoRenames(workspace, {{"a", "b"}}); }), HasSubstr("target exists"));
    EXPECT_EQ(NamesIn("site"), (Texts{"a", "b"}));
}

TEST_F(UndoneRenames, ANameWithALineEndForgesNoMessage)
{
    Put("x\ny/a b", "");
    files->ChangeDirectory("C:\\x\ny");
    RenameRecord(machine, workspace.RecordsFolder).Begin({{{"a b", "a-b"}}});
    files->ChangeDirectory("C:\\");
    workspace.changethedirectory("C:\\x\ny");
    ASSERT_THAT(reporter.shown, SizeIs(1));
    EXPECT_THAT(reporter.shown[0], HasSubstr("A renaming in C:\\x\\x0Ay was cut short"));
}
#endif

TEST_F(UndoneRenames, ThousandsOfRenamesAreLookedThroughOnce)
{
    const std::size_t many = 10'000;
    Renames renames;
    for (std::size_t i = 0; i < many; ++i)
        renames.push_back({"a" + std::to_string(i), "b" + std::to_string(i)});
    Renames same(many, Rename{"a", "a"});
    std::set<std::string> names{"a"};
    for (const Rename& rename : renames) {
        names.insert(rename.from);
        names.insert(rename.to);
    }
    for (const Renames* const all : {&renames, &same}) {
        const RunProgress progress(names, *all);
        std::size_t to_do = 0;
        for (const Rename& rename : *all)
            to_do += progress.IsToDo(rename) ? 1U : 0U;
        EXPECT_EQ(to_do, all == &same ? many - 1 : 0U);
        EXPECT_TRUE(AreAmong(*all, *all));
    }
}

} // namespace
} // namespace kiv
