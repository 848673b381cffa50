// Right calls and wrong ones.
#include "cli_desk.h"

namespace kiv {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using Arguments = CliTest;

TEST_F(Arguments, WrongCallsTouchNothing)
{
    Put("guestout2.bat", "old");
    Put("site/a b", "");
    const std::string site = "C:\\site";
    const std::vector<Texts> calls = {
        {},
        {"--json"},
        {"no-such", site},
        {"Build", site},
        {"build", site, "surplus"},
        {"build", site, "--unknown"},
        {"build", "--json", site}, // global options stand before the command
        {"--eoy", "build", site},
        {"build", site, "--eoy=no"},
        {"--json=false", "build", site},
        {"--unknown", "build", site},
        {"--drive-c"},
        {"--drive-c", "", "build", site},
        {"--now", "", "build", site},
        {"--now", "2004-03-05", "build", site},
        {"--now", "2004-03-05 14:07:09", "build", site},
        {"--now", "2004-03-05T14:07:09Z", "build", site},
        {"--now", "2004-3-05T14:07:009", "build", site},
        {"--now", "2004-13-05T14:07:09", "build", site},
        {"--now", "2003-02-29T14:07:09", "build", site},
        {"--now", "2004-03-05T24:00:00", "build", site},
        {"--now", "0000-03-05T14:00:00", "build", site},
        {"group", site, "--eoy"},
        {"grab", site, "--all", "--trimmed"},
        {"pictures", site, "--folder"},
        {"fix-names", site, "x"},
        {"fix-names", site, "--dry-run=1"},
        {"rename", site},
        {"rename"},
        {"rename", site, "a", "b", "c"},
        {"rename", site, "--a", "b"},
        {"undo-renames", site},
        {"undo-renames", site, "--report"},
        {"convert", "text"},
        {"convert", "--mode", "RS"},
        {"convert", "--mode", "x"},
        {"dimensions", "1", "2", "3"},
        {"dimensions", "1", "2", "3", "4", "5"},
        {"dimensions", "--json", "1", "2", "3", "4"},
        {"reference"},
        {"reference", "0"},
        {"reference", "5"},
        {"reference", "1.0"},
        {"reference", "01"},
        {"reference", "1", "2"},
        {"news", "--name", "a", "--text", "b"},
        {"news", "--site", "1", "--text", "b"},
        {"news", "--site", "1", "--name", "a"},
        {"news", "--site", "x", "--name", "a", "--text", "b"},
        {"news", "--site", "", "--name", "a", "--text", "b"},
        {"news", "--site", "1.5", "--name", "a", "--text", "b"},
        {"news", site, "--site", "1", "--name", "a", "--text", "b"},
    };
    for (const Texts& call : calls) {
        const Printed printed = Call(call);
        EXPECT_EQ(printed.code, 2) << testing::PrintToString(call);
        EXPECT_EQ(printed.out, "") << testing::PrintToString(call);
        EXPECT_THAT(printed.err, StartsWith("kiv: error: ")) << testing::PrintToString(call);
        EXPECT_EQ(printed.err.find('\x01'), std::string::npos) << printed.err;
    }
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
    EXPECT_EQ(Content("guestout2.bat"), "old");
}

struct WrongCallRow {
    std::vector<std::string> call;
    const char* text;
};

TEST_F(Arguments, AWrongCallIsToldWhatIsWrong)
{
    const std::vector<WrongCallRow> rows = {
        {{}, "a command is missing\nTry: kiv-cli --help"},
        {{"bild"}, "there is no command bild\nTry: kiv-cli --help"},
        {{"--jsn", "build"}, "there is no option --jsn\nTry: kiv-cli build --help"},
        {{"build", "--no"}, "there is no option --no\nTry: kiv-cli build --help"},
        {{"build", "--json"}, "--json stands before the command\nTry: kiv-cli build --help"},
        {{"build", "--now=x"}, "--now stands before the command\nTry: kiv-cli build --help"},
        {{"--eoy", "build"}, "--eoy stands behind its command\nTry: kiv-cli build --help"},
        {{"build", "--eoy=1"}, "--eoy takes no value\nTry: kiv-cli build --help"},
        {{"--drive-c"}, "--drive-c needs a value\nTry: kiv-cli --help"},
        {{"--drive-c", "", "build"}, "--drive-c needs a folder\nTry: kiv-cli --help"},
        {{"pictures", "--folder"}, "--folder needs a value\nTry: kiv-cli pictures --help"},
        {{"rename", "a"}, "FIND is required\nTry: kiv-cli rename --help"},
        {{"undo-renames"}, "--report is required\nTry: kiv-cli undo-renames --help"},
        {{"reference", "5"}, "SECTION is 1, 2, 3 or 4, not 5\nTry: kiv-cli reference --help"},
        {{"convert", "--mode", "x"}, "there is no mode x\nTry: kiv-cli convert --help"},
        {{"news", "--site", "x", "--name", "a", "--text", "b"},
         "--site takes a number, not x\nTry: kiv-cli news --help"},
        {{"grab", "--all", "--trimmed"}, "--all excludes --trimmed\nTry: kiv-cli grab --help"},
    };
    for (const WrongCallRow& row : rows)
        EXPECT_EQ(Call(row.call).err, std::string("kiv: error: ") + row.text + "\n");
}

TEST_F(Arguments, AWrongCallMakesNoDrive)
{
    const std::string drive = Native("new").string();
    EXPECT_EQ(CallBare({"--drive-c", drive, "build", "a", "b"}).code, 2);
    EXPECT_EQ(CallBare({"--drive-c", drive, "--help"}).code, 0);
    EXPECT_FALSE(Exists("new"));
}

TEST_F(Arguments, HelpAnywhere)
{
    for (const Texts& call : std::vector<Texts>{{"--help"},
                                                {"-h"},
                                                {"--json", "--help"},
                                                {"--now", "bad", "-h"},
                                                {"--unknown", "-h"},
                                                {"no-such", "--help"}}) {
        const Printed printed = Call(call);
        EXPECT_EQ(printed.code, 0);
        EXPECT_THAT(printed.out, HasSubstr("Usage: kiv-cli [OPTIONS] COMMAND"));
        EXPECT_EQ(printed.err, "");
    }
    for (const char* command :
         {"build", "group", "sitemap", "grab", "pictures", "convert", "fix-names", "thumb-names",
          "rename", "undo-renames", "dimensions", "news", "reference"}) {
        const Printed printed = Call({command, "--unknown", "-h"});
        EXPECT_EQ(printed.code, 0) << command;
        EXPECT_THAT(printed.out, HasSubstr(std::string("Usage: kiv-cli [OPTIONS] ") + command));
        EXPECT_THAT(Call({"--help"}).out, HasSubstr(std::string("\n  ") + command + " "));
    }
}

TEST_F(Arguments, VersionAnywhere)
{
    for (const Texts& call :
         std::vector<Texts>{{"--version"}, {"build", "--version"}, {"rename", "--version"}}) {
        const Printed printed = Call(call);
        EXPECT_EQ(printed.code, 0);
        EXPECT_THAT(printed.out, StartsWith("kiv-cli "));
        EXPECT_THAT(printed.out, testing::EndsWith("\n"));
    }
}

TEST_F(Arguments, AnOptionsValueIsTheNextArgumentWhateverItIs)
{
    input = "a\tb";
    EXPECT_EQ(Call({"convert", "--mode", "tabtopipe", "--prefix", "--help"}).out,
              "<table width=\"100%\">\r\n--help[a|b]\r\n</table>");
    EXPECT_EQ(Call({"convert", "--prefix", "-", "--mode=tabtopipe"}).out,
              "<table width=\"100%\">\r\n-[a|b]\r\n</table>");
    EXPECT_EQ(Call({"convert", "--prefix=x=y", "--mode=tabtopipe"}).out,
              "<table width=\"100%\">\r\nx=y[a|b]\r\n</table>");
    EXPECT_EQ(Call({"convert", "--prefix=", "--mode=tabtopipe"}).out,
              "<table width=\"100%\">\r\n[a|b]\r\n</table>");
    EXPECT_EQ(Call({"convert", "--prefix={}", "--mode=tabtopipe"}).out,
              "<table width=\"100%\">\r\n{}[a|b]\r\n</table>");
}

TEST_F(Arguments, TheLastOfAnOptionCounts)
{
    input = "a\tb";
    EXPECT_EQ(Call({"convert", "--mode", "js", "--mode", "rs"}).out,
              "a=rs(\"a\")\r\n\tb=rs(\"b\")\r\n");
    EXPECT_EQ(Call({"--json", "--json", "reference", "1"}).code, 0);
    const Printed printed =
        CallBare({"--drive-c", "/nowhere", "--drive-c", Root().string(), "build", "C:\\site"});
    EXPECT_EQ(printed.err, "kiv: OOPS! Missing _html.txt, _template.txt\n");
}

TEST_F(Arguments, OnlyLongNamesAreOptions)
{
    Put("site/a-b", "");
    EXPECT_EQ(Report({"rename", "C:\\site", "-", "-5"})["renamed"],
              Json::parse(R"([["a-b", "a-5b"]])"));
    EXPECT_EQ(Report({"rename", "C:\\site", "-5", "{}"})["renamed"],
              Json::parse(R"([["a-5b", "a{}b"]])"));
    EXPECT_EQ(Report({"rename", "C:\\site", "--", "{}", "--x"})["renamed"],
              Json::parse(R"([["a{}b", "a--xb"]])"));
    EXPECT_EQ(Report({"rename", "--", "C:\\site", "--x", ""})["renamed"],
              Json::parse(R"([["a--xb", "ab"]])"));
    EXPECT_EQ(Report({"rename", "C:\\site", "--dry-run", "a", "[b]"})["renamed"],
              Json::parse(R"([["ab", "[b]b"]])"));
}

TEST_F(Arguments, TheFieldsOfTheCalculatorAreValues)
{
    EXPECT_EQ(Call({"dimensions", "800", "600", "--400", "300"}).out, "400 300");
    EXPECT_EQ(Call({"dimensions", "--", "800", "-600", "400", ""}).out, "400 -300");
    EXPECT_EQ(Call({"dimensions", "-h"}).code, 0);
}

TEST_F(Arguments, AFolderWithoutANameIsNone)
{
    // As a script's empty variable gives it; the current directory must not be renamed for that.
    EXPECT_EQ(KindOf(Report({"fix-names", ""})), "file");
    EXPECT_EQ(KindOf(Report({"build", ""})), "file");
    EXPECT_EQ(KindOf(Report({"fix-names", "\\\\server\\share"})), "file"); // no place either
}

} // namespace
} // namespace kiv
