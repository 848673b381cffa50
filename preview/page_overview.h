// The pages of a window's working directory, read again when their lists change, each with what the
// last build did with it.
#pragma once

#include "platform/run_error.h"
#include "preview/source_watch.h"
#include "shell/page_fates.h"
#include "shell/site_pages.h"

#include <optional>
#include <string>

namespace kiv {

class Drives;
class Workspace;

/// All of it is done between commands, in the thread of the drives.
class PageOverview {
  public:
    /// `drives` are the workspace's files; both outlive this.
    PageOverview(Drives& drives, Workspace& workspace)
        : drives_(drives), workspace_(workspace), watch_(drives)
    {
    }

    const SitePages& Pages() const { return pages_; }
    /// After each command; `error` is the one that ended it. Returns whether the pages were read
    /// again: another folder, a build, or lists that have changed.
    bool FollowCommand(const std::optional<RunError>& error);
    void ReadAgain();
    /// Whether the lists, or what they bring in, are not what they were when they were read. Costs
    /// a system call a file.
    bool IsOutdated();

  private:
    Drives& drives_;
    Workspace& workspace_;
    SourceWatch watch_;
    PageFates fates_;
    SitePages pages_;
    std::string directory_; // that was read
};

} // namespace kiv
