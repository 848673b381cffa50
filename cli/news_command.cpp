// The command that adds a news item to a site.
#include "cli/commands.h"
#include "cli/values.h"
#include "shell/utilities.h"
#include "shell/workspace.h"
#include "text/windows1252.h"

#include <utility>

namespace kiv {

namespace {

/// A text file from outside: UTF-8, with or without a byte order mark.
std::string ReadText(Machine& machine, const std::string& native)
{
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    const std::string bytes = machine.files.ReadFile(machine.native_paths.FromNative(native));
    const std::string_view text = bytes;
    return FromUtf8(text.starts_with(kMark) ? text.substr(kMark.size()) : text);
}

} // namespace

void RunNews(CallDesk& desk, const GivenValues& given)
{
    Workspace& workspace = desk.workspace;
    Machine& machine = workspace.machine();
    NewsItem item;
    item.text = ReadText(machine, given.Native("--text"));
    if (given.Has("--lead"))
        item.lead = ReadText(machine, given.Native("--lead"));
    NewsSettings settings = ReadNewsSettings(machine.files);
    item.site = ParseNumber(given.Native("--site")).value_or(0);
    item.file_name = given.Text("--name");
    FillFromName(item, settings);
    if (given.Has("--date"))
        item.date = given.Text("--date");
    if (given.Has("--newspaper"))
        item.newspaper = given.Text("--newspaper");
    item.title = given.Text("--title");
    item.byline = given.Text("--byline");
    item.subhead = given.Text("--subhead");
    item.single_spaced = given.Has("--single-spaced");
    item.as_is = given.Has("--as-is");
    WriteNews(workspace, item, std::move(settings));
}

} // namespace kiv
