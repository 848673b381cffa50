// Every section of the golden sites and of the example site, built once with and once without a
// trace.
#include "cli/run_cli.h"
#include "tests/cases/traced_build.h"
#include "tests/support/folders.h"
#include "tests/support/json.h"
#include "text/text.h"
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

    /// The lines of a file, without their ends; `path` is a drive path.
    std::vector<std::string> LinesOf(const std::string& path) const
    {
        const std::string bytes = ReadBytes(Native(path));
        std::vector<std::string> lines;
        for (std::string_view rest = bytes; !rest.empty();)
            lines.emplace_back(TakeLine(rest));
        return lines;
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

/// The lines that a place of a report is of, joined by CR LF.
std::string TextAt(const Copy& copy, const Json& place)
{
    const std::vector<std::string> lines = copy.LinesOf(FromUtf8(place["file"].Text()));
    std::string text;
    for (int line = std::stoi(place["first"].Dump()); line <= std::stoi(place["last"].Dump());
         ++line)
        text += (text.empty() ? "" : "\r\n") + lines.at(static_cast<std::size_t>(line) - 1);
    return text;
}

/// Each step goes on where the one before it ended, from a line of the source to that of the page.
void ExpectChain(const Copy& copy, const Json& line, const std::string& on_page)
{
    const std::vector<Json> steps = line["steps"].Items();
    const std::vector<Json> sources = line["sources"].Items();
    std::string text =
        sources.empty() ? steps.front()["before"].Text() : ToUtf8(TextAt(copy, sources.front()));
    for (const Json& step : steps) {
        EXPECT_EQ(step["before"].Text(), text);
        text = step["after"].Text();
    }
    EXPECT_EQ(text, ToUtf8(on_page));
    EXPECT_EQ(line["text"].Text(), ToUtf8(on_page));
}

/// The pages that a build of a section reports, without the lists that it leaves beside them.
std::vector<std::string> PagesOf(const Copy& copy, const std::string& section)
{
    std::vector<std::string> pages = Texts(ReportOf(copy.Drive(), {"build", section})["files"]);
    std::erase_if(pages, [](const std::string& file) {
        return file.ends_with("_toc.txt") || file.ends_with("_sitemap.txt");
    });
    return pages;
}

// Every line of every page is held against its source above; here it is a report's words, of the
// first and the last page of each section, as a call a page takes long.
TEST(TracedSites, StoriesInReportsLeadFromTheSourceToThePage)
{
    const Copy copy(KIV_EXAMPLE);
    int lines_told = 0;
    for (const std::string& section : SectionsOf(copy.Drive())) {
        const std::vector<std::string> pages = PagesOf(copy, section);
        ASSERT_FALSE(pages.empty()) << section;
        for (const std::string& file : {pages.front(), pages.back()}) {
            const Json report = ReportOf(copy.Drive(), {"why", section, ToUtf8(file)});
            const std::vector<std::string> page = copy.LinesOf(file);
            const std::vector<Json> lines = report["lines"].Items();
            ASSERT_EQ(lines.size(), page.size()) << file;
            for (std::size_t i = 0; i < lines.size(); ++i) {
                SCOPED_TRACE(file + ", line " + std::to_string(i + 1));
                ExpectChain(copy, lines[i], page[i]);
                ++lines_told;
            }
        }
    }
    EXPECT_GT(lines_told, 100);
}

} // namespace

} // namespace kiv::test
