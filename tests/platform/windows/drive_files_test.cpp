// What the machine's own drives, names and locks of Windows ask for.
#include "platform/windows/api.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/writing.h"
#include "tests/platform/drive_test.h"
#include "text/windows1252.h"

#include <gmock/gmock.h>

namespace kiv {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

/// The test's folder twice: as drive C and, by `machine`, as it lies on the machine's own drives.
class DriveWindows : public DriveTest {
  protected:
    /// A file held open as another program would.
    WindowsHandle Hold(const std::string& name, DWORD shared) const
    {
        return WindowsHandle(::CreateFileW(Native(name).c_str(), GENERIC_READ, shared, nullptr,
                                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    }

    DWORD Attributes(const std::string& name) const
    {
        return ::GetFileAttributesW(Native(name).c_str());
    }

    /// The root as a drive path of the machine.
    std::string MachineRoot() const { return machine->FromNative(root); }

    std::unique_ptr<Drives> machine = MakeDriveFiles({});
};

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
    machine->WriteFile(file, "2");
    machine->AppendToFile(file, "3");
    EXPECT_EQ(machine->ReadFile(folder + "/PAGE.htm"), "23");
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

TEST_F(DriveWindows, AReadOnlyFileIsKept)
{
    Put("a.htm", "old");
    ::SetFileAttributesW(Native("a.htm").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "new"); }),
                AllOf(HasSubstr("C:\\a.htm"), HasSubstr("read-only")));
    EXPECT_THAT(ErrorOf([&] { files->AppendToFile("a.htm", "new"); }), StartsWith("file: "));
    EXPECT_EQ(ErrorOf([&] { files->WriteFile("a.htm", "old"); }), ""); // nothing to write
    EXPECT_EQ(Content("a.htm"), "old");
    EXPECT_EQ(NamesIn(), Names{"a.htm"});
    ::SetFileAttributesW(Native("a.htm").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(DriveWindows, AFileThatAnotherProgramHasOpenIsKept)
{
    Put("a.htm", "old");
    {
        const WindowsHandle held = Hold("a.htm", FILE_SHARE_READ);
        ASSERT_TRUE(held.IsOpen());
        EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", "new"); }),
                    AllOf(HasSubstr("C:\\a.htm"), HasSubstr("another program has the file open")));
        EXPECT_THAT(ErrorOf([&] { files->AppendToFile("a.htm", "new"); }),
                    HasSubstr("another program has the file open"));
        EXPECT_THAT(ErrorOf([&] { files->DeleteFile("a.htm"); }), StartsWith("file: "));
        EXPECT_EQ(files->ReadFile("a.htm"), "old"); // others may look
    }
    EXPECT_EQ(Content("a.htm"), "old");
    EXPECT_EQ(NamesIn(), Names{"a.htm"});
    files->WriteFile("a.htm", "new");
    EXPECT_EQ(Content("a.htm"), "new");
}

TEST_F(DriveWindows, AFileThatNobodyMayLookIntoIsKept)
{
    Put("a.htm", "old");
    {
        const WindowsHandle held = Hold("a.htm", 0);
        ASSERT_TRUE(held.IsOpen());
        EXPECT_TRUE(files->FileExists("a.htm"));
        for (const char* bytes : {"new", "old"})
            EXPECT_THAT(ErrorOf([&] { files->WriteFile("a.htm", bytes); }),
                        HasSubstr("another program has the file open"));
        EXPECT_THAT(ErrorOf([&] { files->ReadFile("a.htm"); }),
                    HasSubstr("another program has the file open"));
    }
    EXPECT_EQ(Content("a.htm"), "old");
    EXPECT_EQ(NamesIn(), Names{"a.htm"});
}

TEST_F(DriveWindows, AReplacedFileKeepsItsAttributes)
{
    Put("a.htm", "old");
    constexpr DWORD kHidden = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;
    ::SetFileAttributesW(Native("a.htm").c_str(), kHidden);
    ASSERT_EQ(Attributes("a.htm") & kHidden, kHidden);
    files->WriteFile("a.htm", "new");
    EXPECT_EQ(Attributes("a.htm") & kHidden, kHidden);
    EXPECT_EQ(Content("a.htm"), "new");
}

TEST_F(DriveWindows, ListingsHaveHiddenFilesToo)
{
    Put("a.htm");
    ::SetFileAttributesW(Native("a.htm").c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_THAT(files->ListFiles(".", "*.*"), ElementsAre("a.htm"));
}

} // namespace
} // namespace kiv
