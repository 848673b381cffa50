// Whole sections: page list, template, includes and whatever else a scene has, built twice.
#include "platform/drive_path.h"
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"
#include "text/windows1252.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace kiv::fuzz;
using Words = std::vector<std::string>;

bool Has(const Words& words, const std::string& word)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

/// The command of a scene: the first of these and all of its options that the line has.
Command SiteCommand(const std::string& line)
{
    struct Row {
        const char* name;
        Words options;
    };
    static const std::vector<Row> rows = {
        {"group", {}}, {"sitemap", {}}, {"grab", {"--redirect", "--all"}}, {"build", {"--eoy"}}};
    const Words words = Parts(line, ' ');
    auto row = rows.begin();
    while (row + 1 != rows.end() && !Has(words, row->name))
        ++row;
    Command command{row->name, {{"DIR", "C:\\site"}}};
    for (const std::string& option : row->options)
        if (Has(words, option))
            command.given.emplace_back(option, "");
    if (command.name == "grab" && Has(words, "--trimmed") && !Has(words, "--all"))
        command.given.emplace_back("--trimmed", "");
    return command;
}

/// Whether a file that the run wrote was looked at as well: then the next run may find another
/// site.
bool HasReadItsOwn(const Desk& desk, const Report& report)
{
    return std::any_of(report.files.begin(), report.files.end(), [&](const std::string& file) {
        return desk.drives.Sought().contains(kiv::UpperCase(file));
    });
}

} // namespace

void kiv::fuzz::FuzzSite(const std::uint8_t* data, std::size_t size)
{
    const Scene scene = ReadScene(data, size);
    Desk desk;
    LayOut(desk, scene);
    const Command command = SiteCommand(scene.line);
    desk.drives.ForgetSought();
    const Report report = desk.Call(command);
    if (!report.error.empty() || HasReadItsOwn(desk, report))
        return;
    const auto tree = desk.drives.Tree();
    const Report again = desk.Call(command);
    Expect(again.error.empty(), "what was built once cannot be built again");
    Expect(again.files == report.files, "the second run writes other files");
    Expect(desk.drives.Tree() == tree, "the second run writes other bytes");
}
