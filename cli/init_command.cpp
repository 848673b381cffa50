// The command that begins a site.
#include "cli/call_argument.h"
#include "cli/commands.h"
#include "cli/face.h"
#include "cli/report.h"
#include "cli/shown_path.h"
#include "platform/site_files.h"
#include "shell/new_site.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/windows1252.h"
#include "utilities/news_names.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace kiv {

namespace {

/// A folder as the argument of a call, with a blank before it; "" for the one that is meant without
/// any.
std::string ArgumentOf(const std::string& folder)
{
    return folder.empty() || folder == "." ? "" : " " + CallArgument(folder);
}

/// A file of a folder, separated from it as the folder itself is written.
std::string Below(const std::string& path, const std::string& name)
{
    if (path.empty() || path == ".")
        return name;
    if (path.ends_with('/') || path.ends_with('\\'))
        return path + name;
    return path + (path.find('\\') == std::string::npos ? '/' : '\\') + name;
}

/// CallLines with what each of them does.
using CallLines = std::vector<std::pair<std::string, std::string>>;

/// All of them, one below the other.
std::string Table(const CallLines& calls)
{
    std::size_t width = 0;
    for (const auto& [call, about] : calls)
        width = std::max(width, call.size());
    std::string text;
    for (const auto& [call, about] : calls)
        Append(text, {"  ", call, std::string(width - call.size() + 2, ' '), about, "\n"});
    return text;
}

/// The call that writes an item of the news.
std::pair<std::string, std::string> NewsCall(const BegunSite& site, const DateTime& today)
{
    return {"kiv-cli news --site " + std::to_string(site.news_site) + " --name pr" +
                DateCodeOf(today) + " --title \"...\" --text FILE",
            site.lacks_news_site
                ? "adds an item to the news, after you have added its line to kivnews.ini"
                : "adds an item to the news"};
}

/// What to do next, for a site in `folder` as it was given.
std::string NextSteps(NativePaths& paths, const BegunSite& site, const std::string& folder,
                      const DateTime& today)
{
    const std::string argument = ArgumentOf(folder);
    const std::string shell = ShellFolder(paths, "");
    CallLines calls;
    for (const std::string& section : site.build_first)
        calls.emplace_back("kiv-cli build" +
                               ArgumentOf(SeenFrom(shell, NativeOrDrive(paths, section))),
                           "comes first: it makes the section's part of the site map");
    calls.emplace_back((site.has_group ? "kiv-cli group" : "kiv-cli build") + argument,
                       "makes the pages: look at " + Below(folder, "index.htm"));
    calls.emplace_back("kiv-cli preview" + argument + " --open",
                       "shows them in the browser while you write");
    if (site.news_site > 0)
        calls.push_back(NewsCall(site, today));
    return "Next:\n" + Table(calls);
}

/// The files that were made, as seen from the shell's folder.
std::string MadeFiles(NativePaths& paths, const BegunSite& site)
{
    const std::string shell = ShellFolder(paths, "");
    std::string text;
    for (const std::string& path : site.made)
        Append(text, {"  ", SeenFrom(shell, NativeOrDrive(paths, path)), "\n"});
    return text;
}

} // namespace

std::string SectionFault(const std::string& name)
{
    return ToUtf8(SectionNameFault(FromUtf8(name)));
}

void RunInit(CallDesk& desk, const GivenValues& given)
{
    Machine& machine = desk.workspace.machine();
    const BegunSite site =
        BeginSite(machine, desk.workspace.WorkDir,
                  {.has_news = given.Has("--news"), .section = given.Text("--section")});
    if (site.made.empty())
        return;
    desk.report.guide =
        MadeFiles(machine.native_paths, site) +
        NextSteps(machine.native_paths, site, given.Native("DIR"), desk.workspace.ProgramStart());
}

} // namespace kiv
