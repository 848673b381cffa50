// Builds a site whenever one of its sources has changed, until it is asked to stop.
#pragma once

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/machine.h"
#include "platform/run_error.h"
#include "preview/posted_tasks.h"
#include "preview/watcher.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kiv {

class Drives;
class StopRequest;
class Workspace;

/// What became of a build.
struct BuildRecord {
    DateTime time;                         // at which it began
    std::chrono::milliseconds took{0};     //
    std::vector<std::string> sources = {}; // that had changed, absolute drive paths; at first none
    std::vector<WrittenFile> written = {};
    std::optional<RunError> error = {};
    bool was_stopped = false; // it was asked to stop and ended between two files
};

/// What goes on, told in the thread of the loop.
class WatchFace {
  public:
    WatchFace() = default;
    WatchFace(const WatchFace&) = delete;
    WatchFace& operator=(const WatchFace&) = delete;
    virtual ~WatchFace() = default;

    /// A build begins. Gives the reporter for what it tells, which lasts until `Built` returns.
    virtual Reporter& Begin() = 0;
    /// Builds the workspace's working directory, or its group.
    virtual void Build(Workspace& workspace) = 0;
    virtual void Built(const BuildRecord& record) = 0;
    /// A source cannot be looked at for now, as on a network that is away: told once. Then: all of
    /// them can again.
    virtual void Refused(const RunError& error) = 0;
    virtual void IsBack() = 0;
    /// Nothing is to be built for now. Comes several times a second.
    virtual void Waits() {}
};

class WatchLoop {
  public:
    struct Site {
        std::string directory;             // an absolute drive path
        std::string records_folder;        // as Workspace::RecordsFolder
        bool renames_are_reported = false; // as in the workspace
    };

    /// Each build is like that of a program of its own: it has a new workspace, and `machine` with
    /// the face's reporter. All of them outlive the loop; `drives` are the machine's files.
    WatchLoop(Drives& drives, const Machine& machine, Site site, WatchFace& face,
              const StopRequest& stop);

    /// Builds, and builds again, until `stop` is asked, which may take as long as a page and a
    /// look. Whether the last build was whole, or has failed by itself; false: it was stopped.
    bool Run();

    /// From any thread: has the loop run `task` in its own as soon as no build is at work. A task
    /// may use the drives and the watcher.
    void Post(std::function<void()> task) { tasks_.Post(std::move(task)); }

    Watcher& Watched() { return watcher_; }

  private:
    bool Build(std::vector<std::string> sources);
    void RunBuild(Reporter& reporter, BuildRecord& record);
    void Tell(const Watcher::Tick& tick);

    Drives& drives_;
    Machine machine_;
    const Site site_;
    WatchFace& face_;
    const StopRequest& stop_;
    Watcher watcher_;
    PostedTasks tasks_;
};

} // namespace kiv
