#include "preview/live_site.h"

#include "inspect/page_names.h"
#include "platform/drive_path.h"
#include "platform/drives.h"
#include "platform/programs.h"
#include "platform/reporter.h"
#include "platform/run_error.h"
#include "platform/stop_request.h"
#include "shell/builds.h"
#include "shell/workspace.h"
#include "text/windows1252.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace kiv {

LiveSite::LiveSite(Drives& drives, Workspace& workspace, std::function<void()> wake)
    : drives_(drives), workspace_(workspace), wake_(std::move(wake)), build_(BuildWorkDir),
      watcher_(drives)
{
}

void LiveSite::Build(BuildCommand build)
{
    build_ = build;
    BuildAnd(build, false);
}

void LiveSite::BuildAndShow()
{
    Follow(); // nothing of another folder is to be shown
    workspace_.BuildsOnSave = true;
    BuildAnd(build_, true);
}

void LiveSite::BuildAnd(BuildCommand build, bool show)
{
    if (IsShown())
        preview_.session->BuildBegins();
    std::optional<RunError> error;
    std::exception_ptr stopped; // browsers are told what was written until then
    try {
        error = RunBuild(build);
    } catch (const Stopped&) {
        stopped = std::current_exception();
    }
    written_ = drives_.WrittenFiles();
    if (show || IsShown())
        Show(!error);
    if (IsShown()) {
        std::vector<std::string> paths;
        for (const WrittenFile& file : written_)
            paths.push_back(file.path);
        preview_.session->BuildEnds(workspace_.machine().reporter, error, paths);
    }
    if (stopped)
        std::rethrow_exception(stopped);
    if (error)
        throw RunError(*error);
}

std::optional<RunError> LiveSite::RunBuild(BuildCommand build)
{
    std::optional<WatchedBuild> watched;
    if (workspace_.BuildsOnSave)
        watched.emplace(watcher_).EndsAs(SourceWatch::Ended::failed);
    is_watched_ = workspace_.BuildsOnSave;
    try {
        build(workspace_);
    } catch (const RunError& error) {
        if (watched)
            watched->FailsBy(error);
        return error;
    }
    if (watched)
        watched->EndsAs(SourceWatch::Ended::whole);
    return std::nullopt;
}

void LiveSite::Show(bool is_whole)
{
    const PreviewWish wish{.directory = drives_.CurrentDirectory(), // WorkDir is as it was spelled
                           .records_folder = workspace_.RecordsFolder};
    if (ShowBuilt(preview_, wish, workspace_.machine(), {written_, is_whole},
                  [this](std::function<void()> task) { Post(std::move(task)); }))
        TellAddress();
}

void LiveSite::TellAddress() const
{
    std::string told = "Preview: " + FromUtf8(preview_.session->Address());
    if (preview_.is_above)
        told += " (root " + FromUtf8(preview_.root) + ")";
    workspace_.machine().reporter.Status(told);
}

void LiveSite::Follow()
{
    if (directory_ != workspace_.WorkDir) {
        Stop();
        if (!directory_.empty())
            workspace_.BuildsOnSave = false;
        directory_ = workspace_.WorkDir;
        build_ = BuildWorkDir;
    }
    is_watched_ = is_watched_ && workspace_.BuildsOnSave;
}

bool LiveSite::IsBuildDue()
{
    if (!workspace_.BuildsOnSave || !is_watched_)
        return workspace_.BuildsOnSave;
    const Watcher::Tick tick = watcher_.Look();
    if (tick.refused)
        workspace_.machine().reporter.Status(tick.refused->text);
    if (tick.is_back)
        workspace_.machine().reporter.Status(std::string(kReadableAgain));
    wait_ = tick.wait;
    return tick.build;
}

void LiveSite::Post(std::function<void()> task)
{
    tasks_.Post(std::move(task));
    wake_();
}

bool LiveSite::IsActive() const
{
    return workspace_.BuildsOnSave || IsShown();
}

std::string LiveSite::FirstPage() const
{
    const auto page = std::ranges::find_if(
        written_, [](const WrittenFile& file) { return IsPageName(NameOf(file.path)); });
    return page == written_.end() ? std::string() : page->path;
}

std::string LiveSite::AddressOf(const std::string& page) const
{
    if (!IsShown())
        return {};
    const std::string wanted = page.empty() ? FirstPage() : page;
    return wanted.empty() ? preview_.session->Address()
                          : preview_.session->AddressOf(drives_.ToNative(wanted));
}

void LiveSite::OpenBrowser(const std::string& page)
{
    workspace_.machine().programs.Start(BrowserLaunch(AddressOf(page)));
}

void LiveSite::Stop()
{
    preview_ = {};
    tasks_.Clear();
}

} // namespace kiv
