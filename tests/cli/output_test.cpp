// What is printed, and the exit codes.
#include "cli/face.h"
#include "cli_desk.h"

#include <chrono>
#include <ios>
#include <istream>
#include <streambuf>

namespace kiv {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Output : public CliTest {
  protected:
    Output()
    {
        Put("site/_template.txt", ";\n");
        Put("site/_html.txt", "@FILE = index\n@TITLE = T\n");
    }
};

TEST_F(Output, PlainStatus)
{
    const Printed printed = Call({"build", "C:\\site"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.out, "1 files written\n3 of 3 files changed\n");
    EXPECT_EQ(printed.err, "");
}

TEST_F(Output, WithoutAStatusNothingIsPrinted)
{
    EXPECT_EQ(Call({"sitemap", "C:\\site"}).out, "");
    EXPECT_EQ(Call({"rename", "C:\\site", "q", "r"}).out, "");
    const Printed grabbed = Call({"grab", "C:\\utils"});
    EXPECT_EQ(grabbed.out, "");
    EXPECT_EQ(grabbed.err, "kiv: Empty directory!\n");
    EXPECT_EQ(grabbed.code, 0); // messages do not change it
}

TEST_F(Output, AFatalErrorHasItsTextAndPlace)
{
    Put("site/_html.txt", "@FILE = index\n@TITLE = T\n\n!!pop[]\n");
    const Printed printed = Call({"build", "C:\\site"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(printed.err, NativeOf("site/_html.txt") +
                               ":4: error: field 1 of !!pop is missing (page index.htm)\n"
                               "    !!pop[]\n"
                               "    -> Write it as \"!!pop[name|page|width|height]\".\n");
}

TEST_F(Output, EveryWarningIsToldOnce)
{
    Put("site/_html.txt", "@FILE = index\n@TITLE = T\n\n!!mailto[a\n!!mailto[b\n");
    const std::string list = NativeOf("site/_html.txt");
    const std::string told =
        list + ":4: warning: Missing closed bracket: a (page index.htm)\n    !!mailto[a\n" + list +
        ":5: warning: Missing closed bracket: b (page index.htm)\n    !!mailto[b\n";
    EXPECT_EQ(Call({"build", "C:\\site"}).err, told);
    EXPECT_EQ(Call({"--verbose", "build", "C:\\site"}).err, told);
    const Json report = Report({"build", "C:\\site"});
    EXPECT_EQ(report["messages"].Size(), 1U);
    ASSERT_EQ(report["warnings"].Size(), 2U);
    EXPECT_THAT(report["warnings"][1].Keys(), ElementsAre("text", "file", "line", "page"));
    EXPECT_EQ(report["warnings"][1]["line"], Json::Parse("5"));
    EXPECT_EQ(report["warnings"][1]["file"], "C:\\site\\_html.txt");
}

TEST_F(Output, KeysOfTheReport)
{
    EXPECT_THAT(
        Report({"build", "C:\\site"}).Keys(),
        ElementsAre("status", "messages", "error", "files", "written", "launched", "warnings"));
    EXPECT_THAT(Report({"fix-names", "C:\\site"}).Keys(),
                ElementsAre("status", "messages", "error", "files", "written", "launched",
                            "warnings", "renamed"));
    EXPECT_THAT(Report({"reference", "1"}).Keys(),
                ElementsAre("status", "messages", "error", "files", "written", "launched",
                            "warnings", "result"));
    const Json failed = Report({"dimensions", "0", "0", "1", "1"});
    EXPECT_THAT(failed.Keys(), ElementsAre("status", "messages", "error", "files", "written",
                                           "launched", "warnings"));
    EXPECT_THAT(failed["error"].Keys(), ElementsAre("kind", "text", "where", "hint"));
    EXPECT_EQ(KindOf(failed), "division");
    EXPECT_EQ(Report({"fix-names", "C:\\gone"})["renamed"], Json::Parse("[]"));
}

TEST_F(Output, MessagesOfToolsAreWarningsWithoutPlace)
{
    const Json report = Report({"grab", "C:\\utils"});
    EXPECT_EQ(report["status"], "");
    EXPECT_EQ(report["messages"], Json::Parse(R"(["Empty directory!"])"));
    EXPECT_EQ(
        report["warnings"],
        Json::Parse(R"([{"text": "Empty directory!", "file": null, "line": null, "page": null}])"));
}

TEST_F(Output, TextIsUtf8)
{
    Put("site/_html.txt", "@FILE = caf\xE9\n@TITLE = T\n");
    const Json report = Report({"build", "C:\\site"});
    EXPECT_EQ(report["files"][0], "C:\\site\\caf\xC3\xA9.htm");
    EXPECT_TRUE(Exists("site/caf\xC3\xA9.htm"));
}

TEST_F(Output, FilesAreListedEachTimeTheyAreClosed)
{
    Put("utils/ftplist.txt", "C:\\site\\|put it\r\n");
    EXPECT_EQ(Report({"build", "C:\\site"})["files"],
              Json::Parse(R"(["C:\\guestout2.bat", "C:\\site\\index.htm", "C:\\site\\_toc.txt",
                              "C:\\site\\_sitemap.txt"])"));
}

TEST_F(Output, ProgramsAreOnlyListed)
{
    Put("site/_group.txt", "");
    Put("site/_sitemap.txt", "");
    Put("utils/kiv_editpad.txt", "c:\\no\\such\\pad.exe\r\n");
    EXPECT_EQ(Report({"sitemap", "C:\\site"})["launched"],
              Json::Parse(R"(["c:\\no\\such\\pad.exe C:\\site\\_sitemap-master.txt"])"));
    const Json launched = Report({"--launch", "sitemap", "C:\\site"});
    EXPECT_EQ(KindOf(launched), "file");
    EXPECT_EQ(launched["launched"], Json::Parse("[]"));
}

TEST_F(Output, TheClockCanBeSet)
{
    Put("site/_html.txt", "@FILE = index\n@TITLE = T\n\n@YEAR\n");
    EXPECT_EQ(Call({"--now", "1999-12-31T23:59:59", "build", "C:\\site"}).code, 0);
    EXPECT_THAT(Content("site/index.htm"), HasSubstr("1999"));
    EXPECT_EQ(Call({"--now=2004-02-29T00:00:00", "build", "C:\\site"}).code, 0);
    EXPECT_THAT(Content("site/index.htm"), HasSubstr("2004"));
}

TEST_F(Output, AnOutputThatFailsIsNoSuccess)
{
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    const CliSurroundings around{in, out, err, false,
                                 [](const char*) { return std::optional<std::string>(); }};
    EXPECT_EQ(RunCli({"reference", "1"}, around), 1);
    EXPECT_EQ(err.str(), "kiv: error: cannot write to standard output\n");
}

/// Gives a few characters, then fails.
class FailingSource : public std::streambuf {
  public:
    FailingSource() { setg(text_.data(), text_.data(), text_.data() + text_.size()); }

  protected:
    int_type underflow() override { throw std::ios_base::failure("no more"); }

  private:
    std::string text_ = "a<p>";
};

TEST_F(Output, AnInputThatFailsIsNoText)
{
    FailingSource source;
    std::istream in(&source);
    std::ostringstream out;
    std::ostringstream err;
    const CliSurroundings around{in, out, err, false,
                                 [](const char*) { return std::optional<std::string>(); }};
    EXPECT_EQ(RunCli({"--drive-c", Root().string(), "convert", "--mode", "ptop"}, around), 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "kiv: error: cannot read standard input\n");
}

TEST_F(Output, AWarningOfABlockStandsAtTheLineLastRead)
{
    Put("site/_html.txt",
        "@ASP = asp\n@FILE = a.htm\n@TITLE = A\n<zutable>\na\n@x\n++p.txt\n<zu\n");
    Put("site/p.txt", "x\n<zutab\na\n@y\n");
    const Json warnings = Report({"build", "C:\\site"})["warnings"];
    ASSERT_EQ(warnings.Size(), 6U); // two passes, alike
    for (const std::size_t pass : {0U, 3U}) {
        EXPECT_EQ(warnings[pass], Json::Parse(R"({"text": "@x\r\nForgot to close your zutable!",
            "file": "C:\\site\\_html.txt", "line": 6, "page": null})"));
        EXPECT_EQ(warnings[pass + 1], Json::Parse(R"({"text": "BIG OOPS! zutable!!",
            "file": "C:\\site\\p.txt", "line": 4, "page": null})"));
        EXPECT_EQ(warnings[pass + 2], Json::Parse(R"({"text": "Oops! Missing close '>' in: <zu",
            "file": "C:\\site\\_html.txt", "line": 8, "page": null})"));
    }
}

TEST_F(Output, AWarningNamesTheFileThatItsLineComesFrom)
{
    Put("site/_template.txt", "+inc.txt\n<!--BODY HERE-->\n");
    Put("site/inc.txt", "p\n!!mailto[t\n");
    Put("site/body.txt", "x\n;c\n!!mailto[q\n");
    Put("site/_html.txt", "@FILE = a\n@TITLE = T\n\n++body.txt\n!!mailto[z\n");
    const Json warnings = Report({"build", "C:\\site"})["warnings"];
    EXPECT_EQ(warnings, Json::Parse(R"([
        {"text": "Missing closed bracket: t", "file": "C:\\site\\inc.txt", "line": 2, "page": "a.htm"},
        {"text": "Missing closed bracket: q", "file": "C:\\site\\body.txt", "line": 3, "page": "a.htm"},
        {"text": "Missing closed bracket: z", "file": "C:\\site\\_html.txt", "line": 5, "page": "a.htm"}])"));
}

/// A clock that goes on when it is told to.
std::chrono::milliseconds passed{0};
TerminalLine::Instant SetClock()
{
    return TerminalLine::Instant(passed);
}

TEST(TerminalLine, TellsALongCommandAndClearsItself)
{
    std::ostringstream terminal;
    TerminalLine line(&terminal, SetClock);
    const auto shown_after = [&](int milliseconds, int done) {
        passed += std::chrono::milliseconds(milliseconds);
        terminal.str("");
        line.Show(done, 10);
        return terminal.str();
    };
    EXPECT_EQ(shown_after(0, 1), "");
    line.Clear();
    EXPECT_EQ(terminal.str(), "");
    EXPECT_EQ(shown_after(299, 2), ""); // a short command shows nothing
    EXPECT_EQ(shown_after(1, 3), "\r3 of 10\x1b[K");
    EXPECT_EQ(shown_after(49, 4), ""); // often enough to look alive
    EXPECT_EQ(shown_after(1, 5), "\r5 of 10\x1b[K");
    terminal.str("");
    line.Clear();
    line.Clear();
    EXPECT_EQ(terminal.str(), "\r\x1b[K");
}

TEST(TerminalLine, WithoutATerminalNothingIsShown)
{
    TerminalLine none(nullptr, SetClock);
    passed += std::chrono::seconds(1);
    none.Show(1, 2);
    none.Clear();
}

} // namespace
} // namespace kiv
