// The commands that work on the pages and pictures of a site section.
#include "cli/commands.h"
#include "cli/face.h"
#include "cli/report.h"
#include "shell/builds.h"
#include "shell/groups.h"
#include "shell/utilities.h"
#include "shell/workspace.h"

#include <functional>

namespace kiv {

namespace {

void FlushIfWanted(CallDesk& desk, const GivenValues& given)
{
    if (given.Has("--sync"))
        desk.workspace.machine().files.FlushWritten();
}

/// Builds one folder of a group, and keeps what that did, also when it fails.
void BuildMember(CallDesk& desk, const std::function<void()>& build)
{
    const Files& files = desk.workspace.machine().files;
    MemberReport& member = desk.report.members->emplace_back();
    member.folder = files.CurrentDirectory();
    member.first = files.Written().size();
    desk.reporter.BeginPart();
    const std::size_t warnings = desk.reporter.Warnings().size();
    const auto keep = [&] {
        member.status = desk.reporter.PartStatus();
        member.end = files.Written().size();
        member.warnings = desk.reporter.Warnings().size() - warnings;
    };
    try {
        build();
    } catch (...) {
        keep();
        throw;
    }
    keep();
}

} // namespace

void RunBuild(CallDesk& desk, const GivenValues& given)
{
    desk.workspace.EoyEnabled = given.Has("--eoy");
    BuildWorkDir(desk.workspace);
    FlushIfWanted(desk, given);
}

void RunGroup(CallDesk& desk, const GivenValues& given)
{
    desk.report.members.emplace();
    BuildGroup(desk.workspace,
               [&](const std::function<void()>& build) { BuildMember(desk, build); });
    FlushIfWanted(desk, given);
}

void RunSiteMap(CallDesk& desk, const GivenValues&)
{
    sitemapmaster(desk.workspace);
}

void RunGrab(CallDesk& desk, const GivenValues& given)
{
    GrabTitles(desk.workspace, {.redirect = given.Has("--redirect"),
                                .all = given.Has("--all"),
                                .trimmed = given.Has("--trimmed")});
}

void RunPictures(CallDesk& desk, const GivenValues& given)
{
    SizePictures(desk.workspace, given.Text("--folder"));
}

} // namespace kiv
