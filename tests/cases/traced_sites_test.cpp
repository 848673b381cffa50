// Every section of the golden sites and of the example site, built once with and once without a
// trace.
#include "cli/run_cli.h"
#include "tests/cases/traced_build.h"
#include "tests/support/folders.h"
#include "tests/support/json.h"
#include "text/windows1252.h"

#include <gtest/gtest.h>

#include <algorithm>
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

/// What `kiv-cli` reports of a call.
Json ReportOf(const fs::path& drive, const std::vector<std::string>& call)
{
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    const CliSurroundings around{in, out, err, false,
                                 [](const char*) { return std::optional<std::string>(); }};
    std::vector<std::string> arguments = {"--json", "--drive-c", drive.string(), "--now",
                                          "2004-03-05T14:07:09"};
    arguments.insert(arguments.end(), call.begin(), call.end());
    RunCli(arguments, around);
    return Json::Parse(out.str());
}

std::string Differences(const fs::path& drive, const std::string& section, TracedBuild::What what)
{
    const TracedBuild traced(section, what, drive);
    const Json report =
        ReportOf(drive, {what == TracedBuild::What::group ? "group" : "build", section});
    return traced.Differences(Texts(report["messages"]), Texts(report["files"]));
}

/// A copy of a site, as drive C:.
class Copy {
  public:
    explicit Copy(const fs::path& site) { fs::copy(site, Drive(), fs::copy_options::recursive); }
    fs::path Drive() const { return folder_.Path() / "c"; }

    bool HasGroup(const std::string& section) const
    {
        return fs::exists(Native(section) / "_group.txt");
    }

  private:
    fs::path Native(const std::string& path) const
    {
        std::string below = path.substr(3);
        std::ranges::replace(below, '\\', '/');
        return Drive() / PathOf(ToUtf8(below));
    }

    TemporaryFolder folder_;
};

TEST(TracedSites, EverySectionIsTheSameAndEveryLineIsToldOf)
{
    int sections = 0;
    int groups = 0;
    for (const fs::path& site : Sites()) {
        const Copy copy(site);
        for (const std::string& section : SectionsOf(copy.Drive())) {
            EXPECT_EQ(Differences(copy.Drive(), section, TracedBuild::What::section), "")
                << site << ", " << section;
            ++sections;
            if (!copy.HasGroup(section))
                continue;
            EXPECT_EQ(Differences(copy.Drive(), section, TracedBuild::What::group), "")
                << site << ", the group of " << section;
            ++groups;
        }
    }
    EXPECT_GE(sections, 10);
    EXPECT_GE(groups, 2);
}

} // namespace

} // namespace kiv::test
