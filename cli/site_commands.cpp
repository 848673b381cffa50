// The commands that work on the pages and pictures of a site section.
#include "cli/call_definitions.h"
#include "shell/builds.h"
#include "shell/groups.h"
#include "shell/utilities.h"
#include "shell/workspace.h"
#include "text/windows1252.h"

#include <memory>

namespace kiv {

namespace {

void AddBuild(CLI::App& app, Call& call)
{
    const auto eoy = std::make_shared<bool>(false);
    CLI::App* const command = AddCommand(app, "build", [&call, eoy] {
        call.run = [eoy](CallDesk& desk) {
            desk.workspace.EoyEnabled = *eoy;
            BuildWorkDir(desk.workspace);
        };
    });
    AddDirectory(*command, call);
    AddSwitch(*command, "--eoy", *eoy, "Keep the New Year text between @@EOY lines");
}

void AddGroup(CLI::App& app, Call& call)
{
    AddDirectory(
        *AddCommand(app, "group",
                    [&call] { call.run = [](CallDesk& desk) { BuildGroup(desk.workspace); }; }),
        call);
}

void AddSiteMap(CLI::App& app, Call& call)
{
    AddDirectory(
        *AddCommand(app, "sitemap",
                    [&call] { call.run = [](CallDesk& desk) { sitemapmaster(desk.workspace); }; }),
        call);
}

void AddGrab(CLI::App& app, Call& call)
{
    const auto choice = std::make_shared<GrabChoice>();
    CLI::App* const command = AddCommand(app, "grab", [&call, choice] {
        call.run = [choice](CallDesk& desk) { GrabTitles(desk.workspace, *choice); };
    });
    AddDirectory(*command, call);
    AddSwitch(*command, "--redirect", choice->redirect,
              "Add a redirect line to each page, one folder up");
    CLI::Option* const all =
        AddSwitch(*command, "--all", choice->all, "Copy the lines of each page");
    AddSwitch(*command, "--trimmed", choice->trimmed, "Copy the lines of each page's body")
        ->excludes(all);
}

void AddPictures(CLI::App& app, Call& call)
{
    const auto folder = std::make_shared<std::string>();
    CLI::App* const command = AddCommand(app, "pictures", [&call, folder] {
        call.run = [folder](CallDesk& desk) { SizePictures(desk.workspace, FromUtf8(*folder)); };
    });
    AddDirectory(*command, call);
    AddValue(*command, "--folder", *folder, "NAME", "Work in this folder below DIR");
}

} // namespace

void AddSiteCommands(CLI::App& app, Call& call)
{
    AddBuild(app, call);
    AddGroup(app, call);
    AddSiteMap(app, call);
    AddGrab(app, call);
    AddPictures(app, call);
}

} // namespace kiv
