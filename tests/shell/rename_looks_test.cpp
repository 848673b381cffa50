// Renames as they are shown before they are done.
#include "recorded_renames.h"
#include "shell/commands.h"
#include "shell/rename_looks.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class RenameLooks : public RecordedRenames {
  protected:
    RenameLook Look(Renamer renamer) { return LookAtRenames(workspace, {renamer}); }
    RenameLook LookFor(const std::string& find, const std::string& replacement)
    {
        return LookAtRenames(workspace, {Renamer::replacement, find, replacement});
    }
};

TEST_F(RenameLooks, APairForEachFileAndNothingIsRenamed)
{
    PutNames({"A b.htm", "c.gif", "d.JPG", "e_t.jpg"});
    RenameLook look = Look(Renamer::web_safe);
    EXPECT_THAT(look.pairs,
                ElementsAre(RenamePair{"A b.htm", "a-b.htm"}, RenamePair{"d.JPG", "d.jpg"}));
    EXPECT_EQ(look.summary, "2 files will be renamed.");
    EXPECT_EQ(look.warning, "");
    look = Look(Renamer::thumbnails);
    EXPECT_THAT(look.pairs,
                ElementsAre(RenamePair{"c.gif", "c_t.gif"}, RenamePair{"d.JPG", "d_t.JPG"}));
    look = LookFor(".htm", ".html");
    EXPECT_THAT(look.pairs, ElementsAre(RenamePair{"A b.htm", "A b.html"}));
    EXPECT_EQ(look.summary, "1 file will be renamed.");
    EXPECT_EQ(NamesIn("site"), (Texts{"A b.htm", "c.gif", "d.JPG", "e_t.jpg"}));
}

TEST_F(RenameLooks, TheOneThatStopsTheRunIsNamed)
{
    PutNames({"a1", "a2", "a3", "b2"});
    const RenameLook look = LookFor("a", "b");
    EXPECT_THAT(look.pairs, ElementsAre(RenamePair{"a1", "b1"}));
    EXPECT_EQ(look.stops, (RenamePair{"a2", "b2"}));
    EXPECT_EQ(look.summary, "1 file will be renamed, then the run stops.");
    EXPECT_THAT(look.warning, HasSubstr("cannot rename C:\\site\\a2 to C:\\site\\b2: "));
    EXPECT_EQ(KindOf([&] { RenameAndTell(workspace, "a", "b"); }), "file"); // and it does
    EXPECT_EQ(NamesIn("site"), (Texts{"a2", "a3", "b1", "b2"}));
}

TEST_F(RenameLooks, NothingToRenameIsSaid)
{
    PutNames({"a"});
    EXPECT_EQ(Look(Renamer::web_safe).summary,
              "Every name here is safe for the web: nothing to rename.");
    EXPECT_EQ(Look(Renamer::thumbnails).summary,
              "No GIF or JPEG picture here lacks its \"_t\": nothing to rename.");
    EXPECT_EQ(LookFor("x", "y").summary, "No file name here has the text \"x\" in it.");
    EXPECT_EQ(LookFor("", "y").summary, "Give the text to look for.");
    EXPECT_TRUE(LookFor("", "y").IsEmpty());
    EXPECT_EQ(KindOf([&] { RenameAndTell(workspace, "x", "y"); }), "");
    EXPECT_EQ(reporter.status, "No file name here has the text \"x\" in it.");
}

TEST_F(RenameLooks, ARootIsCalledOne)
{
    Put("A b");
    workspace.LookAt("C:\\");
    EXPECT_EQ(Look(Renamer::web_safe).summary,
              "1 file will be renamed. This is the root of a drive.");
}

TEST_F(RenameLooks, FilesThatHaveChangedSinceTheyWereSeenAreShownFirst)
{
    const RenameTask task{Renamer::web_safe};
    PutNames({"A b"});
    const RenameLook seen = LookAtRenames(workspace, task);
    EXPECT_EQ(LookIfChanged(workspace, task, seen), std::nullopt);
    Put("site/c.htm"); // which is safe, so nothing else happens
    EXPECT_EQ(LookIfChanged(workspace, task, seen), std::nullopt);
    Put("site/C D.htm");
    const std::optional<RenameLook> now = LookIfChanged(workspace, task, seen);
    ASSERT_TRUE(now);
    EXPECT_THAT(now->pairs,
                ElementsAre(RenamePair{"A b", "a-b"}, RenamePair{"C D.htm", "c-d.htm"}));
    EXPECT_EQ(now->summary,
              "2 files will be renamed. The files have changed since they were shown: look again.");
    EXPECT_EQ(LookIfChanged(workspace, task, *now), std::nullopt); // these were seen
    Put("site/a-b"); // the same pairs, but the first one stops the run now
    EXPECT_TRUE(LookIfChanged(workspace, task, *now));
}

TEST_F(RenameLooks, LowerCasingIsSeenInAnyFolder)
{
    PutNames({"A.HTM", "b.htm"});
    Put("README");
    EXPECT_THAT(Look(Renamer::lower_case).pairs, ElementsAre(RenamePair{"A.HTM", "a.htm"}));
    const RenameLook root =
        LookAtRenames(workspace, {.renamer = Renamer::lower_case, .folder = "C:\\"});
    EXPECT_THAT(root.pairs, ElementsAre(RenamePair{"README", "readme"}));
    EXPECT_EQ(root.summary, "1 file gets a name in lower case. This is the root of a drive.");
    EXPECT_EQ(root.warning, "Another program does that. It cannot be undone here.");
    EXPECT_EQ(
        LookAtRenames(workspace, {.renamer = Renamer::lower_case, .folder = "C:\\gone"}).summary,
        "Nothing can be renamed here.");
    EXPECT_EQ(NamesIn("site"), (Texts{"A.HTM", "b.htm"}));
}

TEST_F(RenameLooks, LowerCasingIsSeenFirstAtARootAlone)
{
    const Command& lower = *FindCommand("lower-case");
    EXPECT_FALSE(WantsLook(lower, workspace));
    EXPECT_TRUE(WantsLook(*FindCommand("fix-names"), workspace));
    EXPECT_FALSE(WantsLook(*FindCommand("build"), workspace));
    workspace.LookAt("C:\\");
    EXPECT_TRUE(WantsLook(lower, workspace));
    EXPECT_TRUE(IsRoot("D:\\"));
    EXPECT_FALSE(IsRoot("D:\\site\\"));
}

TEST_F(RenameLooks, WhatWasDoneIsToldAndTakenBackAlsoInTheNextRun)
{
    PutNames({"a 1", "a 2"});
    EXPECT_FALSE(Look(Renamer::undo).is_possible);
    EXPECT_EQ(KindOf([&] { RenameAndTell(workspace, " ", "-"); }), "");
    EXPECT_EQ(reporter.status, "2 files renamed");
    Workspace next(machine);
    next.RecordsFolder = workspace.RecordsFolder;
    next.LookAt("C:\\site");
    const RenameLook look = LookAtRenames(next, {Renamer::undo});
    EXPECT_THAT(look.pairs, ElementsAre(RenamePair{"a-2", "a 2"}, RenamePair{"a-1", "a 1"}));
    EXPECT_EQ(look.summary, "2 names will come back.");
    EXPECT_EQ(next.Run([&] { UndoAndTell(next); }), std::nullopt);
    EXPECT_EQ(reporter.status, "2 files have their old names again");
    EXPECT_EQ(NamesIn("site"), (Texts{"a 1", "a 2"}));
    const RenameLook after = LookAtRenames(next, {Renamer::undo});
    EXPECT_FALSE(after.is_possible);
    EXPECT_EQ(after.summary, "No renaming of this folder is on record, or it was undone already.");
}

TEST_F(RenameLooks, WhatWasCutShortComesFirst)
{
    PutNames({"a b", "c d", "e f"});
    CutShort(kPlan, 1);
    reporter.shown.clear();
    const RenameLook look = LookFor("-", "_");
    EXPECT_THAT(look.pairs, ElementsAre(RenamePair{"c d", "c-d"}, RenamePair{"e f", "e-f"},
                                        RenamePair{"a-b", "a_b"}, RenamePair{"c-d", "c_d"},
                                        RenamePair{"e-f", "e_f"}));
    EXPECT_THAT(reporter.shown, IsEmpty()); // a look puts up no box
    EXPECT_THAT(Look(Renamer::undo).pairs, ElementsAre(RenamePair{"a-b", "a b"}));
}

TEST_F(RenameLooks, AFolderThatCannotBeLookedAtIsAWarning)
{
    Put("site/" + std::string(kRenameJournalFile), "no journal");
    const RenameLook look = Look(Renamer::web_safe);
    EXPECT_EQ(look.summary, "Nothing can be renamed here.");
    EXPECT_THAT(look.warning, HasSubstr("it is no record of renames"));
    EXPECT_TRUE(look.IsEmpty());
}

} // namespace
} // namespace kiv
