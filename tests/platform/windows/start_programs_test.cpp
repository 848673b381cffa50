// Programs that really start: a small one that tells of its call.
#include "platform/programs.h"
#include "platform/windows/api.h"
#include "platform/windows/wide_text.h"
#include "tests/platform/drive_test.h"

#include <chrono>
#include <gmock/gmock.h>
#include <thread>

namespace kiv {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class StartPrograms : public DriveTest {
  protected:
    StartPrograms() { ::SetEnvironmentVariableW(L"KIV_TOLD", Told().c_str()); }

    std::filesystem::path Told() const { return own.Path() / "told"; }

    void PutTeller(const std::string& path) const
    {
        std::filesystem::create_directories(Native(path).parent_path());
        std::filesystem::copy_file(KIV_TELLER, Native(path));
    }

    /// What the teller wrote: its folder, then its arguments as the C library cuts them.
    std::string WaitForTold() const
    {
        std::string told; // empty as long as the teller still moves it into place
        for (int i = 0; i < 1000 && told.empty(); ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            told = test::ReadBytes(Told());
        }
        std::filesystem::remove(Told());
        return told;
    }

    SystemPrograms programs{*files};
};

TEST_F(StartPrograms, RunsInTheCurrentDirectoryWithNativeArguments)
{
    PutTeller("Utils/Edit.exe");
    PutFolder("site");
    Put("site/_html.txt");
    files->ChangeDirectory("site");
    programs.Start({.command =
                        "c:\\utils\\edit.exe _HTML.TXT C:\\SITE\\_HTML.TXT \"a b\" http://x/ C:x "
                        "*.* /l caf\xE9 \"a\\\"b\\\\\"",
                    .minimised = true});
    EXPECT_EQ(WaitForTold(), root + "\\site\n[_HTML.TXT]\n[" + root +
                                 "\\SITE\\_HTML.TXT]\n[a b]\n[http://x/]\n[C:x]\n[*.*]\n[/l]\n"
                                 "[caf\xC3\xA9]\n[a\"b\\]\n");
}

TEST_F(StartPrograms, OnTheMachinesOwnDrivesTheArgumentsStayAsWritten)
{
    PutTeller("bin/tell.exe");
    const auto machine = MakeDriveFiles({});
    machine->ChangeDirectory(machine->FromNative(root));
    SystemPrograms machine_programs(*machine);
    machine_programs.Start(
        {machine->FromNative(root + "\\bin\\tell") + " c:/x  C:\\a.htm \"C:\\b c\\\""});
    EXPECT_EQ(WaitForTold(), root + "\n[c:/x]\n[C:\\a.htm]\n[C:\\b c\"]\n");
}

TEST_F(StartPrograms, AFileIsOneArgumentWhateverIsInItsName)
{
    PutTeller("tell.exe");
    PutFolder("My Site");
    files->ChangeDirectory("My Site");
    const std::string site = root + "\\My Site";
    programs.Start({"C:\\tell ", "C:\\My Site\\three blanks in it.txt"});
    EXPECT_EQ(WaitForTold(), site + "\n[" + site + "\\three blanks in it.txt]\n");
    programs.Start({"C:\\tell -n  1 ", "a b"});
    EXPECT_EQ(WaitForTold(), site + "\n[-n]\n[1]\n[" + site + "\\a b]\n");
    programs.Start({"C:\\tell ", "C:\\My Site\\*.*", " /l", true});
    EXPECT_EQ(WaitForTold(), site + "\n[" + site + "\\*.*]\n[/l]\n");
}

TEST_F(StartPrograms, AFileStaysInTheWordOfItsMark)
{
    PutTeller("tell.exe");
    PutFolder("My %l Site");
    const std::string native = root + "\\My %l Site\\three blanks in it.txt";
    const auto told = [&](const char* command) {
        programs.Start(
            {.command = command, .file = "C:\\My %l Site\\three blanks in it.txt", .line = 12});
        return WaitForTold();
    };
    EXPECT_EQ(told("C:\\tell --goto %f:%l -n "), root + "\n[--goto]\n[" + native + ":12]\n[-n]\n");
    EXPECT_EQ(told("C:\\tell -n%l \"%f\" "), root + "\n[-n12]\n[" + native + "]\n");
    EXPECT_EQ(told("C:\\tell -n%l caf\xE9 "), root + "\n[-n12]\n[caf\xC3\xA9]\n[" + native + "]\n");
}

TEST_F(StartPrograms, AnUnquotedPathWithBlanksIsTriedAtEachBlank)
{
    PutTeller("progs/WS Pro/up pro.exe");
    programs.Start({"C:\\progs\\WS Pro\\up pro.exe -m c:\\x.bat"});
    EXPECT_EQ(WaitForTold(), root + "\n[-m]\n[" + root + "\\x.bat]\n");
    programs.Start({"C:\\progs\\WS Pro\\up pro -m"}); // ".exe" is added
    EXPECT_EQ(WaitForTold(), root + "\n[-m]\n");
    programs.Start({"\"C:\\progs\\WS Pro\\up pro.exe\" -m"});
    EXPECT_EQ(WaitForTold(), root + "\n[-m]\n");
    PutTeller("progs/WS.exe"); // the shorter reading comes first
    programs.Start({"C:\\progs\\WS Pro\\up pro.exe"});
    EXPECT_EQ(WaitForTold(), root + "\n[Pro\\up]\n[pro.exe]\n");
}

TEST_F(StartPrograms, AFileOutsideTheCodePageIsHandedOnByItsName)
{
    PutTeller("tell.exe");
    Put("\xE4\xB8\xAD.htm");
    programs.Start({"C:\\tell &#20013;.htm"});
    EXPECT_EQ(WaitForTold(), root + "\n[" + root + "\\\xE4\xB8\xAD.htm]\n");
}

TEST_F(StartPrograms, ANameWithoutFolderIsSearchedInThePath)
{
    PutTeller("bin/kiv-tool.exe");
    PutFolder("bin2/kiv-tool.exe");
    const std::wstring old = _wgetenv(L"PATH");
    const std::wstring path =
        Native("bin2").wstring() + L";" + Native("bin").wstring() + L";" + old;
    ::SetEnvironmentVariableW(L"PATH", path.c_str());
    programs.Start({"kiv-tool x"});
    ::SetEnvironmentVariableW(L"PATH", old.c_str());
    EXPECT_EQ(WaitForTold(), root + "\n[x]\n");
}

TEST_F(StartPrograms, AMissingProgramIsNamed)
{
    EXPECT_THAT(ErrorOf([&] { programs.Start({"c:\\utils\\lanthorn.exe"}); }),
                AllOf(StartsWith("file: "), HasSubstr("c:\\utils\\lanthorn.exe")));
    EXPECT_THAT(ErrorOf([&] { programs.Start({"no-such-program-of-kiv x"}); }),
                AllOf(StartsWith("file: "), HasSubstr("no-such-program-of-kiv")));
    EXPECT_THAT(ErrorOf([&] { programs.Start({""}); }), StartsWith("file: "));
}

TEST_F(StartPrograms, WhatIsNoProgramIsNamed)
{
    Put("notes.txt", "not a program");
    EXPECT_THAT(ErrorOf([&] { programs.Start({"C:\\notes.txt"}); }),
                AllOf(StartsWith("file: "), HasSubstr("notes.txt")));
}

TEST_F(StartPrograms, AFolderThatIsGoneIsNamed)
{
    PutTeller("tool.exe");
    PutFolder("site");
    files->ChangeDirectory("site");
    std::filesystem::remove(Native("site"));
    EXPECT_THAT(ErrorOf([&] { programs.Start({"C:\\tool"}); }),
                AllOf(StartsWith("file: "), HasSubstr("C:\\site")));
}

} // namespace
} // namespace kiv
