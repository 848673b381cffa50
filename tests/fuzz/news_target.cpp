// A news item: settings, page lists and the fields of the item. The same call once more adds
// nothing.
#include "platform/site_files.h"
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"
#include "text/windows1252.h"

#include <algorithm>
#include <map>

namespace {

using namespace kiv::fuzz;
using Words = std::vector<std::string>;

constexpr const char* kFields[] = {"--name",   "--date",    "--title",
                                   "--byline", "--subhead", "--newspaper"};

/// One line: a marker of the page list in a field would be one in the list.
std::string OneLine(std::string text)
{
    std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
    return kiv::ToUtf8(text);
}

/// The command of a line, cut at tabs: the number of the site, the fields in the order of kFields,
/// flags.
Command NewsCommand(const std::string& line)
{
    const Words words = Parts(line, '\t');
    const std::string& site = words[0];
    const bool is_number = site.size() == 1 && site[0] >= '0' && site[0] <= '9';
    Command command{"news", {{"--text", "C:\\article.txt"}, {"--site", is_number ? site : "1"}}};
    for (std::size_t i = 0; i < std::size(kFields) && i + 1 < words.size(); ++i)
        command.given.emplace_back(kFields[i], OneLine(words[i + 1]));
    for (const char* const flag : {"--single-spaced", "--as-is"})
        if (std::find(words.begin(), words.end(), flag) != words.end())
            command.given.emplace_back(flag, "");
    return command;
}

/// All files, without the one that a program for uploads would take.
std::map<std::string, std::string> Sources(const Desk& desk)
{
    auto tree = desk.drives.Tree();
    tree.erase(NativeBelow(kiv::kUploadBatchFile));
    return tree;
}

} // namespace

void kiv::fuzz::FuzzNews(const std::uint8_t* data, std::size_t size)
{
    const Scene scene = ReadScene(data, size);
    Desk desk;
    desk.drives.Put("article.txt", "An article.\n");
    LayOut(desk, scene);
    const Command command = NewsCommand(scene.line);
    const Report report = desk.Call(command);
    if (!report.error.empty())
        return;
    const auto tree = Sources(desk);
    const Report again = desk.Call(command);
    Expect(again.error.empty(), "the second run ends in an error");
    Expect(Sources(desk) == tree, "the second run changes a list");
}
