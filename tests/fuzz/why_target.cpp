// What "why" tells of the pages of a section, held against the pages that the build writes.
#include "platform/site_files.h"
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace kiv::fuzz;

constexpr int kMostPages = 3; // that an input is asked about

Command Why(const std::string& place)
{
    return {"why", {{"DIR", "C:\\site"}, {"PLACE", kiv::ToUtf8(place)}}};
}

/// Whether a written file is a page, and one that nothing else took the place of.
bool IsPage(const Report& report, const std::string& file)
{
    return std::count(report.files.begin(), report.files.end(), file) == 1 &&
           !file.ends_with(kiv::kTocFile) && !file.ends_with(kiv::kSiteMapFile) &&
           !kiv::EqualsNoCase(file, kiv::kUploadBatchFile);
}

/// Every line of the page must be told, as it is.
void Compare(const Report& told, std::string_view page)
{
    int number = 0;
    for (const auto& [line, text] : told.lines) {
        Expect(line == ++number, "a line of a page is not told of");
        Expect(!page.empty(), "a line is told of that the page does not have");
        Expect(kiv::TakeLine(page) == text, "a story leads to another line");
    }
    Expect(page.empty(), "the end of a page is not told of");
}

} // namespace

void kiv::fuzz::FuzzWhy(const std::uint8_t* data, std::size_t size)
{
    const Scene scene = ReadScene(data, size);
    Desk built;
    LayOut(built, scene);
    const Report report = built.Call({"build", {{"DIR", "C:\\site"}}});
    Desk asked;
    LayOut(asked, scene);
    const auto tree = asked.drives.Tree();
    int pages = 0;
    for (const std::string& file : report.files) {
        if (!report.error.empty() || !IsPage(report, file) || ++pages > kMostPages)
            continue;
        const Report told = asked.Call(Why(file));
        if (told.error.empty())
            Compare(told, built.drives.ReadFile(file));
    }
    for (const std::string_view source : {kiv::kPageListFile, kiv::kTemplateFile})
        asked.Call(Why(std::string(source)));
    Expect(asked.drives.Tree() == tree, "asking has changed the drive");
}
