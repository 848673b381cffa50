#include "preview/watch_loop.h"

#include "platform/drives.h"
#include "platform/stop_request.h"
#include "shell/rename_records.h"
#include "shell/workspace.h"

#include <utility>

namespace kiv {

WatchLoop::WatchLoop(Drives& drives, const Machine& machine, Site site, WatchFace& face,
                     const StopRequest& stop)
    : drives_(drives), machine_(machine), site_(std::move(site)), face_(face), stop_(stop),
      watcher_(drives)
{
}

bool WatchLoop::Run()
{
    bool is_whole = Build({});
    while (!stop_.IsAsked()) {
        tasks_.Run();
        Watcher::Tick tick = watcher_.Look();
        Tell(tick);
        if (tick.build) {
            is_whole = Build(std::move(tick.sources));
        } else {
            face_.Waits();
            tasks_.Wait(tick.wait);
        }
    }
    return is_whole;
}

bool WatchLoop::Build(std::vector<std::string> sources)
{
    BuildRecord record{.time = machine_.clock.Now(), .sources = std::move(sources)};
    const auto begin = std::chrono::steady_clock::now();
    Reporter& reporter = face_.Begin();
    reporter.StopWhen(&stop_);
    RunBuild(reporter, record);
    record.took = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - begin);
    record.written = drives_.WrittenFiles();
    face_.Built(record);
    return !record.was_stopped;
}

/// As the command for one build goes about it.
void WatchLoop::RunBuild(Reporter& reporter, BuildRecord& record)
{
    Machine machine{machine_.files,     machine_.native_paths, machine_.clock,
                    machine_.clipboard, machine_.programs,     reporter,
                    machine_.pictures};
    Workspace workspace(machine);
    workspace.RecordsFolder = site_.records_folder;
    workspace.RenamesAreReported = site_.renames_are_reported;
    WatchedBuild watched(watcher_);
    try {
        record.error = workspace.Run([&] {
            workspace.StartUp(site_.directory);
            TellOfUnfinishedRenames(machine);
            face_.Build(workspace);
        });
        if (record.error)
            watched.FailsBy(*record.error);
    } catch (const Stopped&) {
        record.was_stopped = true;
        watched.EndsAs(SourceWatch::Ended::stopped);
    }
}

void WatchLoop::Tell(const Watcher::Tick& tick)
{
    if (tick.refused)
        face_.Refused(*tick.refused);
    if (tick.is_back)
        face_.IsBack();
}

} // namespace kiv
