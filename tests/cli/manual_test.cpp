// The manual pages, and what the table of calls holds.
#include "cli/arguments.h"
#include "cli/call_table.h"
#include "cli/docs.h"
#include "cli/help.h"
#include "cli/roff.h"
#include "cli_desk.h"
#include "shell/commands.h"

#include <algorithm>
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

void ExpectWellFormed(const std::string& page)
{
    std::istringstream lines(page);
    std::string before;
    for (std::string line; std::getline(lines, line); before = line) {
        EXPECT_LE(line.size(), line.starts_with(".SS") ? 200U : 80U) << line;
        EXPECT_FALSE(line.empty()) << "below " << before;
        EXPECT_FALSE(line == ".PP" && before.starts_with(".SH")) << before;
        EXPECT_FALSE(line.starts_with("'")) << line;
    }
}

TEST(Manual, IsWellFormed)
{
    const std::string page = ManualPage();
    ExpectWellFormed(page);
    ExpectWellFormed(WindowManualPage());
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

TEST(Manual, OfTheWindowNamesEveryCommand)
{
    const std::string page = WindowManualPage();
    for (const Command& command : Commands())
        if (!command.IsSeparator()) {
            std::string caption(command.caption);
            if (const std::size_t at = caption.find("&&"); at != std::string::npos)
                caption.erase(at, 1);
            EXPECT_THAT(page, HasSubstr("\n.TP\n\\fB" + Roff(caption) + "\\fR\n"));
        }
    EXPECT_THAT(page, HasSubstr("\n.SS \"Menu Jump to\"\n"));
    EXPECT_THAT(page, HasSubstr("\n.SH \"ENVIRONMENT\"\nKIV_DRIVE_"));
    EXPECT_THAT(page, HasSubstr("\n.SH \"MANUAL\"\n"));
}

TEST(Manual, IsNamedByTheHelp)
{
    EXPECT_THAT(HelpText(nullptr), HasSubstr("\nManual:\n"));
    EXPECT_THAT(HelpText(nullptr), HasSubstr("index.htm"));
}

} // namespace
} // namespace kiv
