// Programs that really start: small shell scripts that tell of themselves.
#include "platform/programs.h"
#include "tests/platform/drive_test.h"

#include <chrono>
#include <gmock/gmock.h>
#include <stdexcept>
#include <thread>
#include <unistd.h>

namespace kiv {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class StartPrograms : public DriveTest {
  protected:
    /// A script that writes its folder, its arguments and what its standard channels are.
    void PutScript(const std::string& path) const
    {
        Put(path, "#!/bin/sh\n"
                  "{ pwd; for a in \"$@\"; do echo \"[$a]\"; done; readlink /proc/self/fd/0\n"
                  "} > " +
                      top +
                      "/told.part\n"
                      "mv " +
                      top + "/told.part " + top + "/told\n");
        chmod((root + "/" + path).c_str(), 0755);
    }

    /// What the script wrote; waits for it.
    std::string Told() const
    {
        for (int i = 0; i < 500 && !std::filesystem::exists(top + "/told"); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        std::string told = Content("../told");
        std::filesystem::remove(top + "/told");
        return told;
    }

    SystemPrograms programs{*files};
};

/// Sets PATH while it lives.
class SearchPath {
  public:
    explicit SearchPath(const std::string& path)
    {
        if (const char* const old = getenv("PATH"))
            old_ = old;
        setenv("PATH", path.c_str(), 1);
    }
    SearchPath(const SearchPath&) = delete;
    SearchPath& operator=(const SearchPath&) = delete;
    ~SearchPath() { setenv("PATH", old_.c_str(), 1); }

  private:
    std::string old_;
};

TEST_F(StartPrograms, RunsInTheCurrentDirectoryWithNativeArguments)
{
    PutFolder("Utils");
    PutFolder("site");
    Put("site/_html.txt");
    PutScript("Utils/Edit.exe");
    files->ChangeDirectory("site");
    programs.Start({.command = "c:\\utils\\edit.exe _HTML.txt C:\\SITE\\_HTML.TXT c:/new.txt "
                               "\"a b\" http://x/ C:x *.* /l caf\xE9",
                    .minimised = true});
    EXPECT_EQ(Told(),
              root + "/site\n[_HTML.txt]\n[" + root + "/site/_html.txt]\n[" + root +
                  "/new.txt]\n[a b]\n[http://x/]\n[C:x]\n[*.*]\n[/l]\n[caf\xC3\xA9]\n/dev/null\n");
}

TEST_F(StartPrograms, AFileIsOneArgumentWhateverIsInItsName)
{
    PutScript("edit");
    PutFolder("My Site");
    files->ChangeDirectory("My Site");
    const std::string site = root + "/My Site";
    Put("My Site/Three Blanks In It.txt");
    // Absolute or not, of a file or of many that are to be.
    programs.Start({"C:\\edit ", "C:\\my site\\three blanks in it.txt"});
    EXPECT_EQ(Told(), site + "\n[" + site + "/Three Blanks In It.txt]\n/dev/null\n");
    programs.Start({"C:\\edit -n 1 ", "three blanks in it.txt"});
    EXPECT_EQ(Told(), site + "\n[-n]\n[1]\n[" + site + "/Three Blanks In It.txt]\n/dev/null\n");
    programs.Start({"C:\\edit ", "C:\\My Site\\*.*", " /l", true});
    EXPECT_EQ(Told(), site + "\n[" + site + "/*.*]\n[/l]\n/dev/null\n");
    // Neither quotes nor what looks like an option count in a name.
    programs.Start({"C:\\edit ", "\"a\"  b"});
    EXPECT_EQ(Told(), site + "\n[" + site + "/\"a\"  b]\n/dev/null\n");
    programs.Start({"C:\\edit ", "-x"});
    EXPECT_EQ(Told(), site + "\n[" + site + "/-x]\n/dev/null\n");
    programs.Start({"C:\\edit ", "Q:\\gone drive"});
    EXPECT_EQ(Told(), site + "\n[Q:\\gone drive]\n/dev/null\n");
}

TEST_F(StartPrograms, AFileStaysInTheWordOfItsMark)
{
    PutScript("edit");
    PutFolder("My %l Site");
    const std::string file = "C:\\My %l Site\\$(a) \"b\".txt";
    const std::string native = root + "/My %l Site/$(a) \"b\".txt";
    const auto told = [&](const char* command) {
        programs.Start({.command = command, .file = file, .line = 12});
        return Told();
    };
    EXPECT_EQ(told("C:\\edit --goto %f:%l -n "),
              root + "\n[--goto]\n[" + native + ":12]\n[-n]\n/dev/null\n");
    EXPECT_EQ(told("C:\\edit \"+%l\" \"%f\" "), root + "\n[+12]\n[" + native + "]\n/dev/null\n");
    EXPECT_EQ(told("C:\\edit \"open %f at %l\" "),
              root + "\n[open " + native + " at 12]\n/dev/null\n");
    EXPECT_EQ(told("C:\\edit +%l "), root + "\n[+12]\n[" + native + "]\n/dev/null\n");
    EXPECT_EQ(told("C:\\edit %l%% caf\xE9 C:\\my-%%.ini "), root + "\n[12%]\n[caf\xC3\xA9]\n[" +
                                                                root + "/my-%.ini]\n[" + native +
                                                                "]\n/dev/null\n");
    EXPECT_EQ(told("C:\\edit %% "), root + "\n[%%]\n[" + native + "]\n/dev/null\n");
}

TEST_F(StartPrograms, AFileIsNoPartOfTheProgramsPath)
{
    EXPECT_THAT(ErrorOf([&] {
                    programs.Start({"C:\\gone ", "C:\\a b.txt"});
                }),
                testing::Eq("file: cannot start C:\\gone C:\\a b.txt: no such program"));
}

TEST_F(StartPrograms, AnUnquotedPathWithBlanksIsTriedAtEachBlank)
{
    PutFolder("progs/WS Pro");
    PutScript("progs/WS Pro/up pro.exe");
    programs.Start({"C:\\progs\\WS Pro\\up pro.exe -m c:\\x.bat"});
    EXPECT_EQ(Told(), root + "\n[-m]\n[" + root + "/x.bat]\n/dev/null\n");
    programs.Start({"C:\\progs\\WS Pro\\up pro -m"}); // ".exe" is added
    EXPECT_EQ(Told(), root + "\n[-m]\n/dev/null\n");
    EXPECT_TRUE(programs.Finds("C:\\progs\\WS Pro\\up pro"));
    EXPECT_FALSE(programs.Finds("C:\\progs\\WS Pro\\down pro"));
    programs.Start({"\"C:\\progs\\WS Pro\\up pro.exe\" -m"});
    EXPECT_EQ(Told(), root + "\n[-m]\n/dev/null\n");
    PutScript("progs/WS"); // the shorter reading comes first
    programs.Start({"C:\\progs\\WS Pro\\up pro.exe"});
    EXPECT_EQ(Told(), root + "\n[Pro\\up]\n[pro.exe]\n/dev/null\n");
}

TEST_F(StartPrograms, ANameWithoutFolderIsSearchedInThePath)
{
    PutFolder("bin");
    PutFolder("bin2/tool");
    PutScript("bin/tool");
    const SearchPath path("relative::" + root + "/bin2:" + root + "/bin:/usr/bin:/bin");
    programs.Start({"tool x"});
    EXPECT_EQ(Told(), root + "\n[x]\n/dev/null\n");
    EXPECT_TRUE(programs.Finds("tool"));
    EXPECT_TRUE(programs.Finds("tool +%l %f"));
    EXPECT_FALSE(programs.Finds("no-tool"));
    EXPECT_FALSE(programs.Finds(""));
}

TEST_F(StartPrograms, ExplorerOpensTheFolderInTheFileManager)
{
    PutFolder("bin");
    PutFolder("My Site");
    PutScript("bin/xdg-open");
    const SearchPath path(root + "/bin:/usr/bin:/bin");
    for (const char* line :
         {"explorer C:\\my site\\", "Explorer.exe  \"C:\\My Site\"", "explorer my site"}) {
        programs.Start({line});
        EXPECT_EQ(Told(), root + "\n[" + root + "/My Site]\n/dev/null\n") << line;
    }
    PutFolder(" a \"b\" ");
    programs.Start({"explorer ", "C:\\ a \"b\" "});
    EXPECT_EQ(Told(), root + "\n[" + root + "/ a \"b\" ]\n/dev/null\n");
}

TEST_F(StartPrograms, AMissingProgramIsNamed)
{
    EXPECT_THAT(ErrorOf([&] { programs.Start({"c:\\utils\\lanthorn.exe"}); }),
                AllOf(StartsWith("file: "), HasSubstr("c:\\utils\\lanthorn.exe")));
    EXPECT_THAT(ErrorOf([&] { programs.Start({"no-such-program-of-kiv x"}); }),
                AllOf(StartsWith("file: "), HasSubstr("no-such-program-of-kiv")));
    EXPECT_THAT(ErrorOf([&] { programs.Start({""}); }), StartsWith("file: "));
    const SearchPath path("/nowhere");
    EXPECT_THAT(ErrorOf([&] { programs.Start({"explorer C:\\"}); }),
                AllOf(StartsWith("file: "), HasSubstr("explorer")));
}

TEST_F(StartPrograms, WhatIsNoProgramIsNamed)
{
    Put("notes.txt", "not a program"); // may not be run
    EXPECT_THAT(ErrorOf([&] { programs.Start({"C:\\notes.txt"}); }),
                AllOf(StartsWith("file: "), HasSubstr("notes.txt")));
    Put("broken.exe", "\x7F"
                      "ELF");
    chmod((root + "/broken.exe").c_str(), 0755);
    EXPECT_THAT(ErrorOf([&] { programs.Start({"C:\\broken.exe"}); }),
                AllOf(StartsWith("file: "), HasSubstr("broken.exe")));
}

TEST_F(StartPrograms, AFolderThatIsGoneIsNamed)
{
    PutScript("tool");
    PutFolder("site");
    files->ChangeDirectory("site");
    std::filesystem::remove(root + "/site");
    EXPECT_THAT(ErrorOf([&] { programs.Start({"C:\\tool"}); }),
                AllOf(StartsWith("file: "), HasSubstr("C:\\site")));
}

TEST_F(StartPrograms, WhatIsWaitedForGivesItsCode)
{
    Put("ends", "#!/bin/sh\nread word; echo $word >" + top + "/told; exit 7\n");
    chmod((root + "/ends").c_str(), 0755);
    EXPECT_EQ(programs.Run({.command = "C:\\ends"}, "a.htm\n", {}), 7);
    EXPECT_EQ(Told(), "a.htm\n");
    EXPECT_EQ(programs.Run({.command = "C:\\ends"}, "b.htm\n", [] {}), 7);
    EXPECT_EQ(Told(), "b.htm\n");
}

TEST_F(StartPrograms, WhatIsWaitedForCanBeEnded)
{
    // The second one does not listen.
    for (const char* const trap : {"trap 'echo ended >$1; exit' TERM", "trap '' TERM"}) {
        Put("slow", std::string("#!/bin/sh\n") + trap +
                        "\n>$2\ni=0\nwhile [ $i -lt 300 ]; do sleep .1; i=$((i + 1)); done\n"
                        "echo left alone >$1\n");
        chmod((root + "/slow").c_str(), 0755);
        const Launch slow{.command = "C:\\slow " + top + "/told " + top + "/begun"};
        EXPECT_THROW(programs.Run(slow, "",
                                  [this] {
                                      if (std::filesystem::exists(top + "/begun"))
                                          throw std::length_error("enough");
                                  }),
                     std::length_error);
        EXPECT_EQ(std::filesystem::exists(top + "/told") ? Told() : "",
                  std::string(trap).find("ended") == std::string::npos ? "" : "ended\n");
        std::filesystem::remove(top + "/begun");
    }
}

TEST_F(StartPrograms, NobodyWaitsForTheProgram)
{
    // The program ends only when it is told to, and it is told to only when Start is back.
    Put("slow", "#!/bin/sh\n"
                "for i in 1 2 3 4 5 6 7 8 9 10; do\n"
                "  [ -e " +
                    top + "/go ] && echo went >" + top + "/told.part && mv " + top + "/told.part " +
                    top +
                    "/told && exit\n"
                    "  sleep 1\n"
                    "done\n"
                    "echo never told >" +
                    top + "/told\n");
    chmod((root + "/slow").c_str(), 0755);
    programs.Start({"C:\\slow"});
    EXPECT_FALSE(std::filesystem::exists(top + "/told"));
    test::WriteBytes(top + "/go", "");
    EXPECT_EQ(Told(), "went\n");
}

} // namespace
} // namespace kiv
