// The start of a window and of a command.
#include "shell_desk.h"

namespace kiv {
namespace {

using testing::IsEmpty;
using StartUp = ShellTest;

constexpr const char* kMissingEditor = "editpad.exe is missing from the c:\\utils directory.";

TEST_F(StartUp, ALocalSettingsFileWins)
{
    Put("site/kiv.ini", "C:\\local\r\nC:\\second\r\n");
    Put("utils/kiv.ini", "C:\\other\r\n");
    for (const char* name : {"local", "other"})
        std::filesystem::create_directories(Native(name));
    EXPECT_THAT(workspace.StartWindow(std::nullopt), IsEmpty());
    EXPECT_EQ(workspace.WorkDir, "C:\\local\\");
    EXPECT_EQ(workspace.SettingsPath, "C:\\site\\kiv.ini");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\local");
    workspace.StoreDirectory();
    EXPECT_EQ(Content("site/kiv.ini"), "C:\\local\\\r\n");
    EXPECT_EQ(Content("utils/kiv.ini"), "C:\\other\r\n");
}

TEST_F(StartUp, WithoutALocalOneTheUsualSettingsFileCounts)
{
    Put("utils/kiv.ini", "C:\\other\\\r\n");
    std::filesystem::create_directories(Native("other"));
    EXPECT_THAT(workspace.StartWindow(std::nullopt), IsEmpty());
    EXPECT_EQ(workspace.WorkDir, "C:\\other\\");
    EXPECT_EQ(workspace.SettingsPath, "C:\\utils\\kiv.ini");
}

TEST_F(StartUp, ALocalSettingsFileCountsEvenWhenItsFirstLineIsEmpty)
{
    Put("utils/kiv.ini", "C:\\utils");
    for (const char* content : {"", "\r\nC:\\site\r\n", "\n"}) {
        files->ChangeDirectory("C:\\site");
        Put("site/kiv.ini", content);
        EXPECT_THAT(workspace.StartWindow(std::nullopt), IsEmpty());
        EXPECT_EQ(workspace.WorkDir, "\\") << content; // the empty path is no directory
        EXPECT_EQ(files->CurrentDirectory(), "C:\\");
        EXPECT_EQ(workspace.SettingsPath, "C:\\site\\kiv.ini") << content;
    }
    workspace.switchto("C:\\utils\\");
    workspace.StoreDirectory();
    EXPECT_EQ(Content("site/kiv.ini"), "C:\\utils\\\r\n");
    EXPECT_EQ(Content("utils/kiv.ini"), "C:\\utils");
}

TEST_F(StartUp, AFolderThatIsGoneStaysTheDefaultUntilAnotherIsChosen)
{
    Put("utils/kiv.ini", "C:\\gone\\\r\n");
    EXPECT_THAT(workspace.StartWindow(std::nullopt), IsEmpty());
    EXPECT_EQ(workspace.WorkDir, "\\");
    EXPECT_EQ(reporter.status, "The folder of the start is not there: C:\\gone\\");
    workspace.SaveDirectory(); // the end of the program
    EXPECT_EQ(Content("utils/kiv.ini"), "C:\\gone\\\r\n");
    workspace.switchto("C:\\utils");
    workspace.SaveDirectory();
    EXPECT_EQ(Content("utils/kiv.ini"), "C:\\utils\\\r\n");
    Put("utils/kiv.ini", "C:\\gone\\\r\n");
    EXPECT_THAT(workspace.StartWindow(std::nullopt), IsEmpty());
    workspace.StoreDirectory(); // somebody wants just that
    EXPECT_EQ(Content("utils/kiv.ini"), "\\\r\n");
}

TEST_F(StartUp, AnUploadListThatChangesCountsAtOnce)
{
    EXPECT_THAT(workspace.StartWindow("C:\\site"), IsEmpty());
    EXPECT_FALSE(workspace.UploadListWanted);
    Put("utils/ftplist.txt", "c:\\site\\|send\r\n");
    EXPECT_EQ(workspace.FollowLists(), std::nullopt);
    EXPECT_TRUE(workspace.UploadListWanted);
    EXPECT_EQ(workspace.UploadCommand, "send");
    EXPECT_EQ(Content("guestout2.bat"), "send\r\n");
    Put("guestout2.bat", "what builds have put there");
    Put("utils/ftplist.txt", "c:\\other\\|x\r\nc:\\site\\|send\r\n");
    EXPECT_EQ(workspace.FollowLists(), std::nullopt);
    EXPECT_EQ(Content("guestout2.bat"), "what builds have put there"); // the entry is the same
    Put("utils/ftplist.txt", "no bar, and longer than the list was before\r\n");
    EXPECT_NE(workspace.FollowLists(), std::nullopt);
    std::filesystem::remove(Native("utils/ftplist.txt"));
    EXPECT_EQ(workspace.FollowLists(), std::nullopt);
    EXPECT_FALSE(workspace.UploadListWanted);
}

TEST_F(StartUp, AnEmptyUsualSettingsFileLeadsToTheRoot)
{
    for (const char* content : {"", "\r\nC:\\site\r\n"}) {
        files->ChangeDirectory("C:\\site");
        Put("utils/kiv.ini", content);
        EXPECT_THAT(workspace.StartWindow(std::nullopt), IsEmpty());
        EXPECT_EQ(workspace.WorkDir, "\\") << content;
        EXPECT_EQ(workspace.SettingsPath, "C:\\utils\\kiv.ini") << content;
    }
}

TEST_F(StartUp, TheDirectoryOfTheSettingsKeepsItsSpelling)
{
    Put("utils/kiv.ini", "c:/SITE/images/..\r\n");
    PutFolder("site/images");
    workspace.StartWindow(std::nullopt);
    EXPECT_EQ(workspace.WorkDir, "c:/SITE/images/..\\");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\SITE");
}

TEST_F(StartUp, AnArgumentBeatsBoth)
{
    Put("site/kiv.ini", "C:\\utils\r\n");
    std::filesystem::create_directories(Native("given"));
    workspace.StartWindow("C:\\given");
    EXPECT_EQ(workspace.WorkDir, "C:\\given\\");
    EXPECT_EQ(workspace.SettingsPath, "C:\\utils\\kiv.ini");
}

TEST_F(StartUp, ADirectoryThatIsNotThereBecomesTheRoot)
{
    for (const char* path : {"C:\\gone", "", " C:\\site", "Q:\\", "C:\\site\\a.txt"}) {
        Put("site/a.txt");
        files->ChangeDirectory("C:\\site");
        EXPECT_THAT(workspace.StartWindow(path), IsEmpty());
        EXPECT_EQ(workspace.WorkDir, "\\") << path;
        EXPECT_EQ(files->CurrentDirectory(), "C:\\") << path;
    }
    files->ChangeDirectory("C:\\site");
    workspace.StartWindow(std::nullopt); // no settings at all
    EXPECT_EQ(workspace.WorkDir, "\\");
}

TEST_F(StartUp, TheRootHasOneSeparator)
{
    Put("kiv.ini", "C:\\site\r\n");
    files->ChangeDirectory("C:\\");
    workspace.StartWindow(std::nullopt);
    EXPECT_EQ(workspace.SettingsPath, "C:\\kiv.ini");
    workspace.changethedirectory("C:\\");
    EXPECT_EQ(workspace.WorkDir, "C:\\");
}

TEST_F(StartUp, AWindowSaysOnceThatTheEditorIsMissing)
{
    workspace.StartWindow("C:\\site");
    EXPECT_EQ(reporter.shown, (Texts{kMissingEditor}));
    EXPECT_EQ(workspace.EditorCommand, "c:\\utils\\editpad.exe ");
    workspace.StartUp("C:\\site");
    EXPECT_EQ(reporter.shown.size(), 1U);
    EXPECT_EQ(workspace.EditorCommand, "c:\\utils\\editpad.exe ");
}

TEST_F(StartUp, AWindowReadsTheListsBeforeItLooksForItsEntry)
{
    Put("utils/kiv_editpad.txt", "pad\r\n");
    Put("utils/kivjump.ini", "Docs|d:\\docs\r\n");
    Put("utils/ftplist.txt", "c:\\SITE\\|put it\r\n");
    Put("site/_group.txt");
    Put("guestout2.bat", "old");
    EXPECT_THAT(workspace.StartWindow("C:\\site"), IsEmpty());
    EXPECT_EQ(workspace.EditorCommand, "pad ");
    EXPECT_EQ(workspace.Jumps.size(), 1U);
    EXPECT_TRUE(workspace.UploadListWanted);
    EXPECT_TRUE(workspace.IsGroup);
    EXPECT_EQ(Content("guestout2.bat"), "put it\r\n");
    EXPECT_THAT(reporter.shown, IsEmpty());
}

TEST_F(StartUp, AWindowGoesOnAfterAStepThatFails)
{
    std::string jumps;
    for (int i = 0; i < 11; ++i)
        jumps += "a|b\n";
    Put("utils/kivjump.ini", jumps);
    Put("utils/ftplist.txt", "no bar\n");
    Put("site/_group.txt");
    const std::vector<RunError> errors = workspace.StartWindow("C:\\site");
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_EQ(errors[0].text, "more than 10 jump entries");
    EXPECT_EQ(errors[1].text, "upload entry without \"|\"");
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\");
    EXPECT_TRUE(workspace.IsGroup);
    EXPECT_EQ(workspace.Jumps.size(), 10U);
}

TEST_F(StartUp, ACommandReadsNoJumpList)
{
    std::string jumps;
    for (int i = 0; i < 11; ++i)
        jumps += "a|b\n";
    Put("utils/kivjump.ini", jumps);
    EXPECT_EQ(KindOf([&] { workspace.StartUp("C:\\site\\"); }), "");
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\");
}

TEST_F(StartUp, ACommandNeverFallsBackToTheRoot)
{
    Put("guestout2.bat", "old");
    EXPECT_EQ(KindOf([&] { workspace.StartUp("C:\\gone"); }), "file");
    EXPECT_EQ(Content("guestout2.bat"), "old");
    Put("utils/ftplist.txt", "no bar\n");
    EXPECT_EQ(KindOf([&] { workspace.StartUp("C:\\site"); }), "subscript");
    EXPECT_EQ(Content("guestout2.bat"), "old");
}

TEST_F(StartUp, ALookLeavesTheBatchAlone)
{
    Put("guestout2.bat", "old");
    Put("utils/ftplist.txt", "C:\\site\\|put it\r\n");
    EXPECT_EQ(KindOf([&] { workspace.LookAt("C:\\site"); }), "");
    EXPECT_EQ(workspace.WorkDir, "C:\\site\\");
    EXPECT_EQ(Content("guestout2.bat"), "old");
    EXPECT_THAT(files->Written(), IsEmpty());
}

} // namespace
} // namespace kiv
