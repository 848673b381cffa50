// The completions, as the shells themselves run them. A shell that is not there is left out.
#ifndef _WIN32

#include "cli/docs.h"
#include "tests/support/folders.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>

namespace kiv {
namespace {

using Texts = std::vector<std::string>;
using Rows = std::map<std::string, Texts>; // what is typed behind "kiv-cli ", what is offered

const Texts kFolders = {"build", "holiday pics", "site"};

/// What every shell offers, in the order of the letters, in a folder with the folders above and
/// the file report.json.
const Rows kRows = {
    {"bu", {"build"}},
    {"re", {"reference", "rename"}},
    {"--v", {"--verbose", "--version"}},
    {"--json und", {"undo-encode", "undo-renames"}},
    {"--drive-c ", kFolders},
    {"--drive-c=si", {"site"}},
    {"--drive-c build gr", {"grab", "group"}}, // a folder named like a command
    {"--drive-c=build sit", {"sitemap", "sitemap-xml"}},
    {"--now ", {}},
    {"build ", kFolders},
    {"build hol", {"holiday pics"}},
    {"build --",
     {"--changed", "--drive-c", "--eoy", "--help", "--json", "--launch", "--now", "--strict",
      "--sync", "--verbose", "--version"}},
    {"build --j", {"--json"}},
    {"build --drive-c hol", {"holiday pics"}},
    {"build site --e", {"--eoy"}},
    {"fix-names site --d", {"--drive-c", "--dry-run"}},
    {"grab --a", {"--all"}},
    {"undo-renames --report re", {"report.json"}},
    {"undo-renames --report=re", {"report.json"}},
    {"check --fail-on ", {"error", "never", "note", "warning"}},
    {"check --only dead-p", {"dead-picture"}},
    {"check --not dead-link,dead-p", {"dead-picture"}}, // the name before it stays
    {"convert --mode r", {"rs"}},
    {"convert --mode=tab", {"tabtopipe"}},
    {"convert --mode=",
     {"cleanquotes", "getnames", "js", "newsgrabber", "ptop", "rs", "tabtopipe"}},
    {"convert --prefix ", {}},
    {"reference ", {"1", "2", "3", "4"}},
    {"dimensions 8", {}},
    {"no-such ", {}},
};

/// A reply without what a shell puts around it: marks of blanks, the "/" of a folder, the option
/// in front of its value, the names in front of one in a list.
std::string Bare(std::string reply)
{
    if (const std::size_t before = reply.find_last_of("=,"); before != std::string::npos)
        reply.erase(0, before + 1);
    std::erase(reply, '\\');
    if (reply.ends_with('/'))
        reply.pop_back();
    return reply;
}

class Completion : public testing::Test {
  protected:
    Completion()
    {
        for (const std::string& name : kFolders)
            std::filesystem::create_directories(folder.Path() / "home" / name);
        test::WriteBytes(folder.Path() / "home/report.json", "");
    }

    static bool Runs(const std::string& command)
    {
        return std::system((command + " >/dev/null 2>&1").c_str()) ==
               0; // NOLINT(concurrency-mt-unsafe)
    }

    /// What a shell offers for each of `rows` by the script of this name in tests/cli/shells.
    Rows Offered(const std::string& shell, const std::string& script, const Rows& rows) const
    {
        std::string lines;
        for (const auto& [line, replies] : rows)
            lines += line + "\n";
        test::WriteBytes(folder.Path() / "rows", lines);
        EXPECT_TRUE(Runs("cd '" + (folder.Path() / "home").string() +
                         "' && HOME=.. XDG_CONFIG_HOME=.. " + shell +
                         " '" KIV_ROOT "/tests/cli/shells/" + script + "'"));
        return ReadOffered();
    }

    Rows ReadOffered() const
    {
        Rows offered;
        Texts* replies = nullptr;
        std::istringstream lines(test::ReadBytes(folder.Path() / "offered"));
        for (std::string line; std::getline(lines, line);)
            if (line.starts_with("> "))
                replies = &offered[line.substr(2)];
            else if (!line.empty() && replies != nullptr)
                replies->push_back(Bare(line));
        for (auto& [line, found] : offered) {
            std::sort(found.begin(), found.end());
            found.erase(std::unique(found.begin(), found.end()), found.end());
        }
        return offered;
    }

    test::TemporaryFolder folder;
};

TEST_F(Completion, OfBash)
{
    if (!Runs("bash -c :"))
        GTEST_SKIP() << "no bash here";
    test::WriteBytes(folder.Path() / "script", BashCompletion());
    Rows rows = kRows;
    rows["r -"] = {};
    rows["group -0"] = {"-0"};
    rows["convert "] = {};
    EXPECT_EQ(Offered("bash", "complete.bash", rows), rows);
}

TEST_F(Completion, OfZsh)
{
    if (!Runs("zsh -f -c 'zmodload zsh/zpty'"))
        GTEST_SKIP() << "no zsh here";
    std::filesystem::create_directories(folder.Path() / "functions");
    test::WriteBytes(folder.Path() / "functions/_kiv-cli", ZshCompletion());
    Rows rows = kRows;
    rows["group -0"] = {"-0"};
    rows["grab --all --t"] = {}; // these two cannot stand together
    rows["grab --trimmed --a"] = {};
    EXPECT_EQ(Offered("zsh -f", "complete.zsh", rows), rows);
}

TEST_F(Completion, OfFish)
{
    if (!Runs("fish --no-config -c :"))
        GTEST_SKIP() << "no fish here";
    test::WriteBytes(folder.Path() / "script", FishCompletion());
    Rows rows = kRows;
    rows["group -"] = {"--changed", "--drive-c", "--help",    "--json",    "--launch", "--now",
                       "--strict",  "--sync",    "--verbose", "--version", "-0"};
    rows["convert "] = {};
    EXPECT_EQ(Offered("fish --no-config", "complete.fish", rows), rows);
}

} // namespace
} // namespace kiv

#endif
