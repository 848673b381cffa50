// The manual page, the shell's completion, and that what the table of calls holds.
#include "cli/arguments.h"
#include "cli/call_table.h"
#include "cli/docs.h"
#include "cli/help.h"
#include "cli_desk.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace kiv {
namespace {

using testing::HasSubstr;

/// The words of a line as a shell would part them, up to what the shell keeps for itself.
std::vector<std::string> ShellWords(const std::string& line)
{
    static const std::regex kWord("'([^']*)'|([^ ']+)");
    std::vector<std::string> words;
    for (std::sregex_iterator hit(line.begin(), line.end(), kWord), end; hit != end; ++hit) {
        if ((*hit)[2] == "<" || (*hit)[2] == ">" || (*hit)[2] == "|")
            break;
        words.push_back((*hit)[1].matched ? (*hit)[1] : (*hit)[2]);
    }
    return words;
}

TEST(CallTable, EveryExampleIsARightCallOfItsCommand)
{
    for (const CallRow& row : Calls()) {
        std::istringstream lines{std::string(row.example)};
        for (std::string line; std::getline(lines, line);) {
            std::vector<std::string> words = ShellWords(line);
            ASSERT_EQ(words[0], "kiv-cli") << line;
            words.erase(words.begin());
            const ReadCall read = ReadArguments(words);
            ASSERT_TRUE(read.call) << line << read.text;
            EXPECT_EQ(read.call->row->name, row.name);
        }
    }
}

TEST(CallTable, EveryNameHasOneMeaning)
{
    std::set<std::string_view> commands;
    std::map<std::string_view, bool> takes_value;
    const auto add = [&](const OptionRow& option) {
        EXPECT_TRUE(option.IsOption()) << option.name;
        const bool takes = option.takes != Takes::nothing;
        EXPECT_EQ(takes, !option.value.empty()) << option.name;
        EXPECT_EQ(takes_value.emplace(option.name, takes).first->second, takes) << option.name;
    };
    std::for_each(GlobalOptions().begin(), GlobalOptions().end(), add);
    const std::size_t global = takes_value.size();
    for (const CallRow& row : Calls()) {
        EXPECT_TRUE(commands.insert(row.name).second) << row.name;
        EXPECT_TRUE(row.run != nullptr && !row.details.empty()) << row.name;
        for (const OptionRow& option : row.options)
            for (const OptionRow& other : GlobalOptions())
                EXPECT_NE(option.name, other.name) << row.name;
        std::for_each(row.options.begin(), row.options.end(), add);
    }
    EXPECT_EQ(global, GlobalOptions().size());
    EXPECT_GE(commands.size(), 13U);
}

TEST(CallTable, ASynopsisShowsWhatGoesWithWhat)
{
    std::map<std::string_view, std::string> synopses;
    for (const CallRow& row : Calls())
        synopses[row.name] = Synopsis(row);
    EXPECT_EQ(synopses["sitemap"], "sitemap [DIR]");
    EXPECT_EQ(synopses["grab"], "grab [DIR] [--redirect] [--all | --trimmed]");
    EXPECT_EQ(synopses["rename"], "rename [DIR] FIND REPLACEMENT [--dry-run]");
    EXPECT_EQ(synopses["undo-renames"], "undo-renames [DIR] [--report FILE]");
}

TEST(CallTable, TheHelpOfConvertTellsOfEveryMode)
{
    const std::vector<std::string> words = {"convert", "--help"};
    const std::string help = ReadArguments(words).text;
    EXPECT_THAT(help, HasSubstr("  --mode MODE                 The conversion (default: e-mail to "
                                "HTML): rs, js, getnames, cleanquotes, newsgrabber, tabtopipe, "
                                "ptop\n"));
    const std::string details = help.substr(help.find("The result goes"));
    for (const char* mode :
         {"rs", "js", "getnames", "cleanquotes", "newsgrabber", "tabtopipe", "ptop"})
        EXPECT_TRUE(std::regex_search(details, std::regex("\\b" + std::string(mode) + "\\b")))
            << mode;
}

TEST(Manual, IsWellFormed)
{
    const std::string page = ManualPage();
    std::istringstream lines(page);
    std::string before;
    for (std::string line; std::getline(lines, line); before = line) {
        EXPECT_LE(line.size(), line.starts_with(".SS") ? 200U : 80U) << line;
        EXPECT_FALSE(line.empty());
        EXPECT_FALSE(line == ".PP" && before.starts_with(".SH")) << before;
        EXPECT_FALSE(line.starts_with("'")) << line;
    }
    EXPECT_THAT(page, HasSubstr("\n  kiv\\-cli build \\(ti/sites/museum\n"));
    EXPECT_THAT(page, HasSubstr("\\-\\-prefix \\(aq!!1\\(aq < rows.txt\n"));
}

TEST(Manual, NamesEveryCommandAndOption)
{
    const std::string page = ManualPage();
    for (const CallRow& row : Calls()) {
        const std::string name = std::regex_replace(std::string(row.name), std::regex("-"), "\\-");
        EXPECT_THAT(page, HasSubstr("\n.SS \"" + name + " "));
        for (const OptionRow& option : row.options)
            EXPECT_THAT(page, HasSubstr("\\fB" + std::regex_replace(std::string(option.name),
                                                                    std::regex("-"), "\\-")));
    }
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-drive\\-c\\fR \\fIDIR\\fR"));
    EXPECT_THAT(page, HasSubstr("\n.SH \"EXIT STATUS\"\n"));
    EXPECT_THAT(page, HasSubstr("txt\\eNAME.txt")); // no backslash of the text's own is left
}

#ifndef _WIN32

struct CompletionRow {
    std::vector<std::string> words; // behind the program's name; the last is being typed
    std::vector<std::string> replies;
};

class Completion : public testing::Test {
  protected:
    Completion()
    {
        test::WriteBytes(folder.Path() / "script", BashCompletion());
        for (const char* name : {"build", "holiday pics", "site"})
            std::filesystem::create_directories(folder.Path() / "home" / name);
        test::WriteBytes(folder.Path() / "home/report.json", "");
    }

    /// What the shell offers in a folder with the folders and the file above.
    std::vector<std::string> Offered(const std::vector<std::string>& words) const
    {
        std::string run = "cd \"" + (folder.Path() / "home").string() +
                          "\" && . ../script && COMP_WORDS=(kiv-cli";
        for (const std::string& word : words)
            run += " '" + word + "'";
        run += ") && COMP_CWORD=" + std::to_string(words.size()) +
               " && _kiv_cli && printf '%s\\n' \"${COMPREPLY[@]}\"";
        test::WriteBytes(folder.Path() / "run", run);
        const std::string out = (folder.Path() / "out").string();
        const std::string call = "bash '" + (folder.Path() / "run").string() + "' >'" + out + "'";
        EXPECT_EQ(std::system(call.c_str()), 0); // NOLINT(concurrency-mt-unsafe)
        std::istringstream lines(test::ReadBytes(out));
        std::vector<std::string> offered;
        for (std::string line; std::getline(lines, line);)
            if (!line.empty())
                offered.push_back(line);
        std::sort(offered.begin(), offered.end());
        return offered;
    }

    test::TemporaryFolder folder;
};

TEST_F(Completion, OffersWhatMayFollow)
{
    if (std::system("bash -c :") != 0) // NOLINT(concurrency-mt-unsafe)
        GTEST_SKIP() << "no bash here";
    const std::vector<std::string> folders = {"build", "holiday pics", "site"};
    const std::vector<CompletionRow> rows = {
        {{"bu"}, {"build"}},
        {{"re"}, {"reference", "rename"}},
        {{"r", "-"}, {}},
        {{"--v"}, {"--verbose", "--version"}},
        {{"--json", "und"}, {"undo-renames"}},
        {{"--drive-c", ""}, folders},
        {{"--drive-c", "=", "si"}, {"site"}},
        {{"--drive-c", "build", "gr"}, {"grab", "group"}}, // a folder named like a command
        {{"--drive-c", "=", "build", "sit"}, {"sitemap"}},
        {{"--now", ""}, {}},
        {{"build", ""}, folders},
        {{"build", "hol"}, {"holiday pics"}},
        {{"build", "--"},
         {"--changed", "--drive-c", "--eoy", "--help", "--json", "--launch", "--now", "--strict",
          "--sync", "--verbose", "--version"}},
        {{"group", "-0"}, {"-0"}},
        {{"build", "--j"}, {"--json"}},
        {{"build", "--drive-c", "hol"}, {"holiday pics"}},
        {{"build", "site", "--e"}, {"--eoy"}},
        {{"fix-names", "site", "--d"}, {"--drive-c", "--dry-run"}},
        {{"undo-renames", "--report", "re"}, {"report.json"}},
        {{"undo-renames", "--report", "=", "re"}, {"report.json"}},
        {{"convert", "--mode", "r"}, {"rs"}},
        {{"convert", "--mode", "=", "tab"}, {"tabtopipe"}},
        {{"convert", "--mode", "="},
         {"cleanquotes", "getnames", "js", "newsgrabber", "ptop", "rs", "tabtopipe"}},
        {{"convert", "--prefix", ""}, {}},
        {{"convert", ""}, {}},
        {{"reference", ""}, {"1", "2", "3", "4"}},
        {{"dimensions", "8"}, {}},
        {{"no-such", ""}, {}},
    };
    for (const CompletionRow& row : rows)
        EXPECT_EQ(Offered(row.words), row.replies) << testing::PrintToString(row.words);
}

#endif

} // namespace
} // namespace kiv
