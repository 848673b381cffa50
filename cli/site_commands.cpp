// The commands that work on the pages and pictures of a site section.
#include "cli/commands.h"
#include "shell/workspace.h"

namespace kiv {

void RunBuild(CallDesk& desk, const GivenValues& given)
{
    desk.workspace.EoyEnabled = given.Has("--eoy");
    desk.workspace.BuildWorkDir();
}

void RunGroup(CallDesk& desk, const GivenValues&)
{
    desk.workspace.BuildGroup();
}

void RunSiteMap(CallDesk& desk, const GivenValues&)
{
    desk.workspace.AssembleSiteMap();
}

void RunGrab(CallDesk& desk, const GivenValues& given)
{
    desk.workspace.GrabTitles({.redirect = given.Has("--redirect"),
                               .all = given.Has("--all"),
                               .trimmed = given.Has("--trimmed")});
}

void RunPictures(CallDesk& desk, const GivenValues& given)
{
    desk.workspace.SizePictures(given.Text("--folder"));
}

} // namespace kiv
