// What the machine's own drives and names of Windows ask for.
#include "platform/windows/wide_text.h"
#include "tests/platform/windows/drive_windows_test.h"
#include "text/windows1252.h"

#include <gmock/gmock.h>

namespace kiv {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

TEST_F(DriveWindows, WithoutMappedDrivesTheMachinesOwnStand)
{
    Put("A.txt", "1");
    EXPECT_THAT(MachineRoot(), AllOf(StartsWith("C:\\"), testing::EndsWith("\\c")));
    EXPECT_EQ(machine->ReadFile(MachineRoot() + "\\a.TXT"), "1");
    EXPECT_THAT(machine->DriveLetters(), HasSubstr("C"));
    EXPECT_EQ(machine->ToNative("C:\\"), "C:\\");
    EXPECT_EQ(machine->ToNative("c:/x\\..\\caf\xE9.txt"), "C:\\caf\xC3\xA9.txt");
}

TEST_F(DriveWindows, FromOutsideTheLongestDriveFolderWins)
{
    const std::string below = root + "\\deep";
    const auto two = MakeDriveFiles({{'C', root}, {'y', below + "\\"}});
    EXPECT_EQ(two->FromNative(root + "\\site\\a.htm"), "C:\\site\\a.htm");
    EXPECT_EQ(two->FromNative(UpperCase(root) + "/SITE//./a.htm"), "C:\\SITE\\a.htm");
    EXPECT_EQ(two->FromNative(below), "Y:\\");
    EXPECT_EQ(two->FromNative(below + "\\a.htm"), "Y:\\a.htm");
    EXPECT_EQ(two->FromNative(root + "\\deeper"), "C:\\deeper");
    EXPECT_EQ(two->FromNative("c:\\x\\..\\y"), "C:\\y"); // a drive path is taken as it is
    EXPECT_EQ(two->FromNative("q:/caf\xC3\xA9"), "Q:\\caf\xE9");
    EXPECT_EQ(two->FromNative("\\\\server\\share"), "");
    EXPECT_THAT(two->DriveLetters(), AllOf(HasSubstr("C"), HasSubstr("Y")));
    EXPECT_EQ(two->ToNative("C:\\site"), root + "\\site");
    EXPECT_EQ(two->ToNative("C:\\"), root);
}

/// Goes back to where the process was.
class ProcessFolder {
  public:
    ProcessFolder() = default;
    ProcessFolder(const ProcessFolder&) = delete;
    ProcessFolder& operator=(const ProcessFolder&) = delete;
    ~ProcessFolder() { std::filesystem::current_path(before_); }

  private:
    std::filesystem::path before_ = std::filesystem::current_path();
};

TEST_F(DriveWindows, ARelativePathBeginsAtTheProcesssDirectory)
{
    const ProcessFolder guard;
    PutFolder("site");
    std::filesystem::current_path(Native("site"));
    EXPECT_EQ(files->FromNative("."), "C:\\site");
    EXPECT_EQ(files->FromNative(""), "C:\\site");
    EXPECT_EQ(files->FromNative("sub/../a.htm"), "C:\\site\\a.htm");
    EXPECT_EQ(files->FromNative(".."), "C:\\");
    EXPECT_EQ(MakeDriveFiles({{'C', root}})->CurrentDirectory(), "C:\\site");
    EXPECT_EQ(machine->FromNative("a.htm"), MachineRoot() + "\\site\\a.htm");
    EXPECT_EQ(machine->FromNative("\\a.htm"), MachineRoot().substr(0, 3) + "a.htm");
    EXPECT_EQ(files->CurrentDirectory(), "C:\\"); // the system's own
}

TEST_F(DriveWindows, EachDriveHasADirectoryOfTheProcess)
{
    const ProcessFolder guard;
    PutFolder("site");
    std::filesystem::current_path(Native("site"));
    const std::string drive = MachineRoot().substr(0, 2);
    // Where the process is on a drive that it has left stands in a variable of the drive's name.
    const std::wstring variable = L"=" + WideText(drive);
    const std::wstring folder = Native("site").wstring();
    ASSERT_NE(::SetEnvironmentVariableW(variable.c_str(), folder.c_str()), 0);
    EXPECT_EQ(machine->FromNative(drive + "a.htm"), MachineRoot() + "\\site\\a.htm");
    EXPECT_EQ(machine->FromNative(drive), MachineRoot() + "\\site");
    const char* const other = drive == "C:" ? "Z:" : "C:";
    std::filesystem::current_path(std::string(other) + "\\");
    EXPECT_EQ(machine->FromNative(drive + "a.htm"), MachineRoot() + "\\site\\a.htm");
    EXPECT_EQ(machine->FromNative("a.htm"), std::string(other) + "\\a.htm");
}

TEST_F(DriveWindows, ALetterThatStandsForAFolderHidesTheMachinesDrive)
{
    const ProcessFolder guard;
    std::filesystem::current_path("C:\\");
    const auto hidden = MakeDriveFiles({{'C', Native("site").string()}});
    EXPECT_EQ(hidden->FromNative("windows"), ""); // no drive leads to the place meant
    EXPECT_EQ(hidden->FromNative("C:windows"), "C:\\windows");
    EXPECT_EQ(hidden->CurrentDirectory(), "C:\\");
}

TEST_F(DriveWindows, LongPathsAreReached)
{
    std::string folder = MachineRoot();
    for (int i = 0; i < 12; ++i) {
        folder += "\\" + std::string(100, static_cast<char>('a' + i));
        ASSERT_TRUE(machine->MakeFolder(folder)) << i;
    }
    const std::string file = folder + "\\Page.htm";
    machine->WriteFile(file, "1");
    machine->ReplaceSource(file, "1", "2");
    EXPECT_EQ(machine->ReadFile(folder + "/PAGE.htm"), "2");
    machine->RenameFile(file, folder + "\\b.htm");
    EXPECT_THAT(machine->ListFiles(folder, "*.*"), ElementsAre("b.htm"));
    machine->ChangeDirectory(folder);
    EXPECT_TRUE(machine->FileExists("..\\" + std::string(100, 'L') + "\\B.HTM"));
    machine->DeleteFile("b.htm");
    EXPECT_FALSE(machine->FileExists("b.htm"));
}

TEST_F(DriveWindows, ANameThatWindowsForbidsIsRefused)
{
    Put("a.htm", "old");
    // A name behind ":" would be a second, hidden content of the file.
    for (const char* name : {"a.htm:b", "what?", "a*", "a<b", "a>b", "a|b", "a\"b", "a\tb"}) {
        EXPECT_FALSE(files->FileExists(name)) << name;
        EXPECT_FALSE(files->MakeFolder(name)) << name;
        EXPECT_THAT(ErrorOf([&] { files->WriteFile(name, "1"); }),
                    AllOf(StartsWith("file: "), HasSubstr(name), HasSubstr("no such name")));
        EXPECT_THAT(ErrorOf([&] { files->RenameFile("a.htm", name); }), StartsWith("file: "));
    }
    EXPECT_EQ(NamesIn(), Names{"a.htm"});
    EXPECT_EQ(Content("a.htm"), "old");
}

TEST_F(DriveWindows, TheWholeCodePageStandsInNames)
{
    for (int code = 0x80; code < 0x100; ++code) {
        const std::string name =
            std::string(1, static_cast<char>(code)) + " " + std::to_string(code);
        files->WriteFile(name, name);
        EXPECT_EQ(files->ReadFile(name), name) << code;
    }
    const std::vector<std::string> names = files->ListFiles("C:\\", "*.*");
    EXPECT_EQ(names.size(), 128U);
    for (const std::string& name : names)
        EXPECT_EQ(files->ReadFile(name), name);
    EXPECT_TRUE(std::filesystem::exists(Native("\xE2\x82\xAC 128"))); // the euro sign
}

TEST_F(DriveWindows, HalfACharacterInANameIsNotLost)
{
    EXPECT_EQ(FromWide(L"a\xD83D"), "a&#55357;");
    EXPECT_EQ(FromWide(L"\xDE00\xD83D\xDE00z"), "&#56832;&#128512;z");
    EXPECT_EQ(WideText("\x80\xE9\x81"), L"\u20AC\u00E9\u0081");
}

TEST_F(DriveWindows, ARefusedPathIsTooLongOnlyBeyondWhatWindowsTakes)
{
    std::string many = "C:\\";
    while (many.size() < 32'000)
        many += "a\\";
    EXPECT_FALSE(files->FileExists(many + "b")); // may be long, but is not there
    while (many.size() < 33'000)
        many += "a\\";
    for (const std::string& name : {many + "b", std::string(40'000, 'n')})
        EXPECT_THAT(ErrorOf([&] { files->FileExists(name); }),
                    AllOf(StartsWith("file: cannot look at "), HasSubstr("the path is too long")));
    std::string references = "C:";
    while (references.size() < 40'000)
        references += "\\&#20013;"; // two units each
    EXPECT_FALSE(files->FolderExists(references));
}

TEST_F(DriveWindows, AFileBeyondOneGibibyteIsRefusedByItsSize)
{
    {
        const WindowsHandle file(::CreateFileW(Native("large.txt").c_str(), GENERIC_WRITE, 0,
                                               nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                                               nullptr));
        LARGE_INTEGER end;
        end.QuadPart = (1LL << 30) + 1;
        ASSERT_NE(::SetFilePointerEx(file.Get(), end, nullptr, FILE_BEGIN), 0);
        ASSERT_NE(::SetEndOfFile(file.Get()), 0);
    }
    EXPECT_THAT(ErrorOf([&] { files->ReadFile("large.txt"); }),
                AllOf(HasSubstr("C:\\large.txt"), HasSubstr("larger than 1 GiB")));
    EXPECT_EQ(files->ReadPart("large.txt", 1U << 30U, 5), std::string(1, '\0'));
}

TEST_F(DriveWindows, ListingsHaveHiddenFilesToo)
{
    Put("a.htm");
    ::SetFileAttributesW(Native("a.htm").c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_THAT(files->ListFiles(".", "*.*"), ElementsAre("a.htm"));
}

} // namespace
} // namespace kiv
