// The commands that work on the pages and pictures of a site section.
#include "cli/commands.h"
#include "shell/builds.h"
#include "shell/groups.h"
#include "shell/utilities.h"
#include "shell/workspace.h"

namespace kiv {

namespace {

void FlushIfWanted(CallDesk& desk, const GivenValues& given)
{
    if (given.Has("--sync"))
        desk.workspace.machine().files.FlushWritten();
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
    BuildGroup(desk.workspace);
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
