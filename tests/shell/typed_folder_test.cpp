// Folders as they are typed, completed and copied.
#include "shell/typed_folder.h"
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class TypedFolders : public ShellTest {
  protected:
    TypedFolders()
    {
        PutFolder("site/Lab");
        PutFolder("site/lab-2");
        PutFolder("site/caf\xc3\xa9");
        PutFolder("site/.git");
        Put("site/label.txt");
    }

    std::string Native(const std::string& below)
    {
        return test::NativeTextOf(ShellTest::Native(below));
    }
    std::string Typed(std::string_view typed)
    {
        std::string folder;
        const auto error = workspace.Run([&] { folder = FolderOfTyped(machine, typed); });
        return error ? error->text + "|" + error->hint : folder;
    }
};

TEST_F(TypedFolders, DriveAndNativePathsLeadToTheSamePlace)
{
    EXPECT_EQ(Typed("C:\\site\\lab"), "C:\\site\\lab");
    EXPECT_EQ(Typed("c:/site/lab/"), "C:\\site\\lab");
    EXPECT_EQ(Typed("\\site"), "C:\\site");
    EXPECT_EQ(Typed(Native("site/Lab")), "C:\\site\\Lab");
    EXPECT_EQ(Typed("  \"" + Native("site") + "\" "), "C:\\site"); // as other programs copy it
    EXPECT_EQ(Typed("C:\\site\\caf\xc3\xa9"), "C:\\site\\caf\xe9");
}

TEST_F(TypedFolders, APathWithoutARootIsRelativeToWhereOneIs)
{
    EXPECT_EQ(Typed("lab"), "C:\\site\\lab");
    EXPECT_EQ(Typed(".."), "C:\\");
    EXPECT_EQ(Typed("..\\utils"), "C:\\utils");
}

TEST_F(TypedFolders, WhatIsNoFolderIsSaidSo)
{
    EXPECT_EQ(Typed("C:\\gone"),
              "there is no folder C:\\gone|Look at its spelling, and whether it was moved.");
    EXPECT_EQ(Typed("label.txt"), "label.txt is a file|Give the folder that it lies in.");
    EXPECT_EQ(Typed("  "), "no folder was given|Type the path of one, as this program or the "
                           "system has it.");
}

TEST_F(TypedFolders, GoingThereSaysSoAndAFailureLeavesTheDirectory)
{
    EXPECT_EQ(KindOf([&] { GoToTyped(workspace, "Lab"); }), "");
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\Lab\\");
    EXPECT_EQ(reporter.status, "Current directory changed");
    EXPECT_EQ(KindOf([&] { GoToTyped(workspace, "gone"); }), "file");
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\Lab\\");
}

TEST_F(TypedFolders, CompletionsKeepTheNotation)
{
    EXPECT_THAT(CompletionsOf(machine, "C:\\site\\l"),
                ElementsAre("C:\\site\\Lab", "C:\\site\\lab-2"));
    EXPECT_THAT(CompletionsOf(machine, "c:/site/LAB-"), ElementsAre("c:/site/lab-2"));
    EXPECT_THAT(CompletionsOf(machine, Native("site") + "/ca"),
                ElementsAre(Native("site") + "/caf\xc3\xa9"));
    EXPECT_THAT(CompletionsOf(machine, "la"), ElementsAre("Lab", "lab-2"));
    EXPECT_THAT(CompletionsOf(machine, "..\\ut"), ElementsAre("..\\utils"));
}

TEST_F(TypedFolders, CompletionsHideWhatIsHiddenAndNeverThrow)
{
    EXPECT_THAT(CompletionsOf(machine, "C:\\site\\"),
                ElementsAre("C:\\site\\caf\xc3\xa9", "C:\\site\\Lab", "C:\\site\\lab-2"));
    EXPECT_THAT(CompletionsOf(machine, "C:\\site\\.g"), ElementsAre("C:\\site\\.git"));
    EXPECT_THAT(CompletionsOf(machine, "C:\\gone\\x"), IsEmpty());
    EXPECT_THAT(CompletionsOf(machine, "C:"), IsEmpty());
    EXPECT_THAT(CompletionsOf(machine, "D:\\"), IsEmpty());
}

TEST_F(TypedFolders, TheNativePathIsCopiedAndShownWhereItDiffers)
{
#ifdef _WIN32 // where any spelling will do
    const std::string native = Native("site/lab");
#else
    const std::string native = Native("site/Lab");
#endif
    EXPECT_EQ(NativeToCopy(machine, "C:\\site\\lab"), native);
    EXPECT_EQ(NativeBeside(machine, "C:\\site\\lab\\"), native);
    EXPECT_EQ(NativeToCopy(machine, "D:\\x"), "D:\\x"); // no drive leads there
    EXPECT_EQ(NativeBeside(machine, "D:\\x\\"), "");
}

TEST_F(TypedFolders, AFolderIsAddedToTheJumpListAndTheMenu)
{
    Put("utils/kivjump.ini", "Docs|d:\\docs");
    EXPECT_EQ(KindOf([&] { TellAddedJump(workspace, "C:\\site\\Lab"); }), "");
    EXPECT_EQ(Content("utils/kivjump.ini"), "Docs|d:\\docs\r\nLab|C:\\site\\Lab\\\r\n");
    ASSERT_EQ(workspace.Jumps.size(), 2U);
    EXPECT_EQ(workspace.Jumps[1].label, "Lab");
    EXPECT_EQ(reporter.status, "Added to the Jump to list");
}

} // namespace
} // namespace kiv
