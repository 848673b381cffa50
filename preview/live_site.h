// The site of a window: built again when its sources are saved, and shown to the browsers of this
// machine. Nothing in here waits: the window calls it step by step.
#pragma once

#include "platform/files.h"
#include "preview/posted_tasks.h"
#include "preview/preview_start.h"
#include "preview/watcher.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

class Drives;
class Workspace;

/// All but what the server's thread posts is done in the thread of the drives, between commands or,
/// where it says so, in one. `Workspace::BuildsOnSave` is the switch.
class LiveSite {
  public:
    using BuildCommand = void (*)(Workspace& workspace);

    /// `wake` is called from another thread when RunTasks has something to do. `drives` are the
    /// workspace's files; both outlive this.
    LiveSite(Drives& drives, Workspace& workspace, std::function<void()> wake);

    /// In a command: builds the working directory, and tells the browsers. Throws what it throws.
    void Build(BuildCommand build);
    /// The same build as last time in this folder.
    void BuildAgain() { Build(build_); }
    /// In a command: builds the working directory and begins to show it, also when the build has
    /// failed; its error is thrown then. From now on saves are built.
    void BuildAndShow();

    /// After each command: another working directory ends all, and the switch with it.
    void Follow();
    /// Whether saved sources are to be built now; to be asked again after Wait().
    bool IsBuildDue();
    BuildPacer::Duration Wait() const { return wait_; }
    /// Answers what browsers have asked.
    void RunTasks() { tasks_.Run(); }
    /// Whether IsBuildDue or RunTasks may have something to do.
    bool IsActive() const;

    bool IsShown() const { return preview_.session != nullptr; }
    /// Where the browser finds a page (a drive path); "": the first one of the last build. "" when
    /// nothing is shown.
    std::string AddressOf(const std::string& page) const;
    /// In a command: opens that address. Throws RunError when there is no browser.
    void OpenBrowser(const std::string& page);
    /// Ends the server.
    void Stop();

  private:
    void BuildAnd(BuildCommand build, bool show);
    std::optional<RunError> RunBuild(BuildCommand build);
    void Post(std::function<void()> task);
    void Show(bool is_whole);
    void TellAddress() const;
    std::string FirstPage() const;

    Drives& drives_;
    Workspace& workspace_;
    const std::function<void()> wake_;
    std::string directory_;
    BuildCommand build_;
    Watcher watcher_;
    bool is_watched_ = false; // the watcher knows what a build has read
    BuildPacer::Duration wait_ = BuildPacer::kQuiet;
    std::vector<WrittenFile> written_;
    PostedTasks tasks_;
    StartedPreview preview_; // last: its thread ends before the rest goes
};

} // namespace kiv
