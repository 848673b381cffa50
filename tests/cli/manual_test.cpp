// The manual page, the shell's completion, and that the texts fit the definitions.
#include "cli/call_definitions.h"
#include "cli/call_texts.h"
#include "cli/manual.h"
#include "cli_desk.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>

namespace kiv {
namespace {

using testing::HasSubstr;

class Definitions : public testing::Test {
  protected:
    Definitions() { DefineCalls(app, call, given); }
    CLI::App app;
    Call call;
    GlobalOptions given;
};

TEST_F(Definitions, EverySynopsisHasTheOptionsThatThereAre)
{
    std::size_t commands = 0;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        ++commands;
        const std::string synopsis(TextOf(command->get_name()).synopsis);
        std::set<std::string> written;
        static const std::regex kOption("--[a-z-]+");
        for (std::sregex_iterator hit(synopsis.begin(), synopsis.end(), kOption), end; hit != end;
             ++hit)
            written.insert(hit->str());
        std::set<std::string> defined;
        for (const CLI::Option* option : command->get_options())
            for (const std::string& name : option->get_lnames())
                if (name != "help")
                    defined.insert("--" + name);
        EXPECT_EQ(written, defined) << command->get_name();
    }
    EXPECT_EQ(commands, CommandTexts().size());
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
    for (const CommandText& text : CommandTexts()) {
        std::string name(text.name);
        name = std::regex_replace(name, std::regex("-"), "\\-");
        EXPECT_THAT(page, HasSubstr("\n.SS \"" + name + " "));
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
        {{"--v"}, {"--verbose", "--version"}},
        {{"--json", "und"}, {"undo-renames"}},
        {{"--drive-c", ""}, folders},
        {{"--drive-c", "=", "si"}, {"site"}},
        {{"--drive-c", "build", "gr"}, {"grab", "group"}}, // a folder named like a command
        {{"--drive-c", "=", "build", "sit"}, {"sitemap"}},
        {{"--now", ""}, {}},
        {{"build", ""}, folders},
        {{"build", "hol"}, {"holiday pics"}},
        {{"build", "--"}, {"--eoy", "--help"}},
        {{"build", "site", "--e"}, {"--eoy"}},
        {{"fix-names", "site", "--d"}, {"--dry-run"}},
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
