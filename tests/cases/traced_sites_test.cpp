// Every section of the golden sites and of the example site, built once with and once without a
// trace.
#include "cli/run_cli.h"
#include "tests/cases/traced_build.h"
#include "tests/support/folders.h"
#include "tests/support/json.h"
#include "text/windows1252.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace kiv::test {

namespace {

namespace fs = std::filesystem;

/// The sites: folders that stand for drive C:.
std::vector<fs::path> Sites()
{
    std::vector<fs::path> sites = {KIV_EXAMPLE};
    for (const auto& entry : fs::directory_iterator(KIV_SITES))
        if (fs::is_directory(entry.path() / "in"))
            sites.push_back(entry.path() / "in");
    return sites;
}

/// The drive paths of all folders of a drive that hold a page list and a template.
std::vector<std::string> SectionsOf(const fs::path& drive)
{
    std::vector<std::string> sections;
    for (const auto& entry : fs::recursive_directory_iterator(drive))
        if (entry.path().filename() == "_html.txt" &&
            fs::exists(entry.path().parent_path() / "_template.txt")) {
            std::string below = TextOf(fs::relative(entry.path().parent_path(), drive));
            for (char& c : below)
                c = c == '/' ? '\\' : c;
            sections.push_back("C:\\" + below);
        }
    return sections;
}

std::vector<std::string> Texts(const Json& list)
{
    std::vector<std::string> texts;
    for (const Json& item : list.Items())
        texts.push_back(FromUtf8(item.Text()));
    return texts;
}

std::string Differences(const fs::path& drive, const std::string& section)
{
    const TracedBuild traced(section, TracedBuild::What::section, drive);
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    const CliSurroundings around{in, out, err, false,
                                 [](const char*) { return std::optional<std::string>(); }};
    RunCli(
        {"--json", "--drive-c", drive.string(), "--now", "2004-03-05T14:07:09", "build", section},
        around);
    const Json report = Json::Parse(out.str());
    return traced.Differences(Texts(report["messages"]), Texts(report["files"]));
}

TEST(TracedSites, EverySectionIsTheSameAndEveryLineIsToldOf)
{
    int sections = 0;
    for (const fs::path& site : Sites()) {
        const TemporaryFolder folder;
        const fs::path drive = folder.Path() / "c";
        fs::copy(site, drive, fs::copy_options::recursive);
        for (const std::string& section : SectionsOf(drive)) {
            EXPECT_EQ(Differences(drive, section), "") << site << ", " << section;
            ++sections;
        }
    }
    EXPECT_GE(sections, 10);
}

} // namespace

} // namespace kiv::test
