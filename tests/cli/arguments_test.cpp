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
        {"--eoy", "build", site}, // an option of a command comes after its name
        {"build", site, "--eoy=maybe"},
        {"--json=maybe", "build", site},
        {"--json=no", "build", site},
        {"build", site, "--json="},
        {"build", site, "--eoy=true"},
        {"--help=false"},
        {"build", "--help=false"},
        {"-h=0"},
        {"--version=false"},
        {""},
        {"build", "--eoy", "--", site, "--json"},
        {"build", site, "--", "--json"},
        {"-x", "build", site},
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
        {"fix-names", site, "--dry-run=perhaps"},
        {"fix-names", "++"}, // the library would end the command there
        {"rename", site},
        {"rename"},
        {"rename", site, "a", "b", "c"},
        {"rename", site, "--a", "b"},
        {"rename", site, "-a", "b"},
        {"rename", site, "b", "++"},
        {"undo-renames", site, "--report"},
        {"convert", "text"},
        {"convert", "--mode", "RS"},
        {"convert", "--mode", "x"},
        {"convert", "--mode="},
        {"dimensions", "1", "2", "3"},
        {"dimensions", "1", "2", "3", "4", "5"},
        {"dimensions", "1", "2", "3", "--4"},
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
        {{"--json"}, "a command is missing\nTry: kiv-cli --help"},
        // These two once ended the program by a signal.
        {{"--", "--json"}, "a command is missing\nTry: kiv-cli --help"},
        {{"--", "--json", "build"}, "a command is missing\nTry: kiv-cli --help"},
        {{"xyz"}, "there is no command xyz\nTry: kiv-cli --help"},
        {{"biuld"}, "there is no command biuld; did you mean build?\nTry: kiv-cli --help"},
        {{"biuld", "--eoy"}, "there is no command biuld; did you mean build?\nTry: kiv-cli --help"},
        {{"Fix_Names", "x"},
         "there is no command Fix_Names; did you mean fix-names?\nTry: kiv-cli --help"},
        {{"--jsn", "build"},
         "there is no option --jsn; did you mean --json?\nTry: kiv-cli build --help"},
        {{"fix-names", "--dryrun=1"},
         "there is no option --dryrun; did you mean --dry-run?\nTry: kiv-cli fix-names --help"},
        {{"rename", "--old", "new"},
         "there is no option --old; if it is a value, put -- before it\nTry: kiv-cli rename "
         "--help"},
        {{"rename", "plus", "++"},
         "++ is no option; if it is a value, put -- before it\nTry: kiv-cli rename --help"},
        {{"++"}, "++ is no option; if it is a value, put -- before it\nTry: kiv-cli --help"},
        {{"--eoy", "build"}, "--eoy must come after build\nTry: kiv-cli build --help"},
        {{"build", "--eoy=x"}, "--eoy takes no value\nTry: kiv-cli build --help"},
        {{"--help=false"}, "--help takes no value\nTry: kiv-cli --help"},
        {{"build", "-h=false"}, "-h takes no value\nTry: kiv-cli build --help"},
        {{"group", "--json=no"}, "--json takes no value\nTry: kiv-cli group --help"},
        {{"--version=", "group"}, "--version takes no value\nTry: kiv-cli group --help"},
        {{""}, "the name of the command is empty\nTry: kiv-cli --help"},
        {{"reference", "1", ""},
         "there is an empty argument too many\nTry: kiv-cli reference --help"},
        {{"--drive-c"}, "--drive-c needs a value\nTry: kiv-cli --help"},
        {{"build", "--drive-c"}, "--drive-c needs a value\nTry: kiv-cli build --help"},
        {{"--drive-c", "", "build"}, "--drive-c needs a folder\nTry: kiv-cli build --help"},
        {{"--now=", "build"},
         "--now takes YYYY-MM-DDTHH:MM:SS, not an empty value\nTry: kiv-cli build --help"},
        {{"pictures", "--folder"}, "--folder needs a value\nTry: kiv-cli pictures --help"},
        {{"rename", "a"}, "REPLACEMENT is required\nTry: kiv-cli rename --help"},
        {{"build", "a", "b"}, "b is one argument too many\nTry: kiv-cli build --help"},
        {{"undo-renames", "--report"}, "--report needs a value\nTry: kiv-cli undo-renames --help"},
        {{"reference", "5"}, "SECTION takes 1, 2, 3 or 4, not 5\nTry: kiv-cli reference --help"},
        {{"convert", "--mode", "x"},
         "--mode takes rs, js, getnames, cleanquotes, newsgrabber, tabtopipe or ptop, not x\n"
         "Try: kiv-cli convert --help"},
        {{"news", "--site", "x", "--name", "a", "--text", "b"},
         "--site takes a number, not x\nTry: kiv-cli news --help"},
        {{"preview", "--port", "65536"},
         "--port: a port is a number from 0 to 65535\nTry: kiv-cli preview --help"},
        {{"preview", "--port", "-1"},
         "--port: a port is a number from 0 to 65535\nTry: kiv-cli preview --help"},
        {{"grab", "--trimmed", "--all"},
         "--all and --trimmed do not go together; give one of them\nTry: kiv-cli grab --help"},
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
                                                {"--help", "--drive-c"},
                                                {"--help", "++"},
                                                {"++", "--help"},
                                                {"no-such", "--help"}}) {
        const Printed printed = Call(call);
        EXPECT_EQ(printed.code, 0);
        EXPECT_THAT(printed.out, HasSubstr("Usage: kiv-cli [OPTIONS] COMMAND"));
        EXPECT_EQ(printed.err, "");
    }
    for (const char* command :
         {"build", "group", "sitemap", "grab", "pictures", "convert", "fix-names", "thumb-names",
          "rename", "undo-renames", "dimensions", "news", "reference"}) {
        for (const Texts& call : std::vector<Texts>{{command, "--unknown", "-h"},
                                                    {"--help", command},
                                                    {command, "x", "--json=maybe", "--help"}}) {
            const Printed printed = Call(call);
            EXPECT_EQ(printed.code, 0) << command;
            EXPECT_THAT(printed.out, HasSubstr(std::string("Usage: kiv-cli [OPTIONS] ") + command));
        }
        EXPECT_THAT(Call({"--help"}).out, HasSubstr(std::string("\n  ") + command + " "));
    }
}

TEST_F(Arguments, VersionAnywhere)
{
    for (const Texts& call :
         std::vector<Texts>{{"--version"}, {"build", "--version"}, {"no-such", "x", "--version"}}) {
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
    EXPECT_THAT(printed.err, testing::HasSubstr("OOPS! Missing _html.txt, _template.txt\n"));
}

TEST_F(Arguments, OptionsStandAnywhere)
{
    Put("site/ab", "");
    for (const Texts& call :
         std::vector<Texts>{{"--json", "rename", "--dry-run", "C:\\site", "a", "b"},
                            {"rename", "C:\\site", "--json", "a", "--dry-run", "b"},
                            {"rename", "C:\\site", "a", "b", "--dry-run", "--json"},
                            {"rename", "--dry-run", "--json", "--", "C:\\site", "a", "b"}}) {
        const Printed printed = Call(call);
        EXPECT_EQ(printed.code, 0);
        EXPECT_EQ(Json::Parse(printed.out)["renamed"], Json::Parse(R"([["ab", "bb"]])"));
    }
    EXPECT_EQ(NamesIn("site"), (Texts{"ab"}));
    EXPECT_THAT(CallBare({"build", "C:\\site", "--drive-c", Root().string()}).err,
                testing::HasSubstr("OOPS! Missing _html.txt, _template.txt\n"));
}

// "--dry-run=false" once renamed the files, and "--help=false" showed the help.
TEST_F(Arguments, ASwitchTakesNoValue)
{
    Put("site/a b", "");
    for (const char* given : {"--dry-run=true", "--dry-run=false", "--dry-run=", "--dry-run={}"})
        EXPECT_EQ(Call({"fix-names", "C:\\site", given}).err,
                  "kiv: error: --dry-run takes no value\nTry: kiv-cli fix-names --help\n");
    EXPECT_EQ(Call({"fix-names", "C:\\site", "--dry-run", "--dry-run=false"}).code, 2);
    EXPECT_EQ(NamesIn("site"), (Texts{"a b"}));
    input = "a\tb"; // behind an option that takes one it is a value
    EXPECT_EQ(Call({"convert", "--mode", "tabtopipe", "--prefix", "--json=no"}).out,
              "<table width=\"100%\">\r\n--json=no[a|b]\r\n</table>");
}

TEST_F(Arguments, NumbersAndALoneDashAreValues)
{
    Put("site/a-b", "");
    EXPECT_EQ(Report({"rename", "C:\\site", "-", "-5"})["renamed"],
              Json::Parse(R"([["a-b", "a-5b"]])"));
    EXPECT_EQ(Report({"rename", "C:\\site", "-5", "{}"})["renamed"],
              Json::Parse(R"([["a-5b", "a{}b"]])"));
    EXPECT_EQ(Report({"rename", "C:\\site", "--dry-run", "a", "[b]"})["renamed"],
              Json::Parse(R"([["a{}b", "[b]{}b"]])"));
}

TEST_F(Arguments, TwoDashesEndTheOptions)
{
    Put("site/a{}b", "");
    EXPECT_EQ(Report({"rename", "C:\\site", "--", "{}", "--x"})["renamed"],
              Json::Parse(R"([["a{}b", "a--xb"]])"));
    EXPECT_EQ(Report({"rename", "--", "C:\\site", "--x", "--report="})["renamed"],
              Json::Parse(R"([["a--xb", "a--report=b"]])"));
    EXPECT_EQ(Report({"rename", "C:\\site", "--", "--report=", "++"})["renamed"],
              Json::Parse(R"([["a--report=b", "a++b"]])"));
    EXPECT_EQ(Report({"rename", "--", "C:\\site", "++", ""})["renamed"],
              Json::Parse(R"([["a++b", "ab"]])"));
}

TEST_F(Arguments, ANameOfACommandIsAValueBehindACommand)
{
    Put("site/build", "");
    EXPECT_EQ(Report({"rename", "C:\\site", "build", "group"})["renamed"],
              Json::Parse(R"([["build", "group"]])"));
}

TEST_F(Arguments, TheFieldsOfTheCalculatorAreValues)
{
    EXPECT_EQ(Call({"dimensions", "800", "-600", "400", ""}).out, "400 -300");
    EXPECT_EQ(Call({"dimensions", "--", "800", "600", "--400", "300"}).out, "400 300");
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
