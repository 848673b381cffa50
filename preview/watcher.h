// Everything that is watched for a site, step by step: for a face with a timer of its own, which
// must not be held up. WatchLoop goes round with it for those that have none.
#pragma once

#include "platform/run_error.h"
#include "preview/build_pacer.h"
#include "preview/source_watch.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What is told when a place that was refused can be looked at again.
inline constexpr std::string_view kReadableAgain = "the sources can be read again";

/// In the thread of the drives.
///
///     { WatchedBuild build(watcher); … build … }
///     tick = watcher.Look();  every tick.wait, and build when tick.build says so
class Watcher {
  public:
    using Instant = SourceWatch::Instant;

    explicit Watcher(Drives& drives) : sources_(drives) {}

    SourceWatch& Sources() { return sources_; }

    /// A build begins and ends; WatchedBuild sees to both. `may_pass`: it failed by something that
    /// another program may be the cause of, and is tried again a few times.
    void Begin(Instant now) { sources_.Begin(now); }
    void End(SourceWatch::Ended ended, Instant now, bool may_pass = false);

    /// What a look has shown. Paths are absolute drive paths.
    struct Tick {
        bool build = false;                    // one is due
        std::vector<std::string> sources = {}; // what is not as the last build read it; none for
                                               // one that is tried again
        std::optional<RunError> refused = {};  // a place cannot be looked at any more; told once
        bool is_back = false;                  // every place can be looked at again
        BuildPacer::Duration wait = {};        // until the next look
    };
    /// One look at everything; takes as long as a system call a file. Throws nothing but for lack
    /// of memory.
    Tick Look(Instant now = std::chrono::steady_clock::now());

  private:
    void TellRefused(const SourceWatch::Sight& sight, Tick& tick);
    bool WantsAnother();
    bool IsTriedAgain(Instant now);

    SourceWatch sources_;
    BuildPacer pacer_;
    bool is_refused_ = false;
    bool is_behind_ = false;       // the last build would make something else now
    int repeated_ = 0;             // how many builds in a row were for that alone
    std::optional<Instant> retry_; // when the last build, which failed, is tried again
    int retried_ = 0;              // how many builds in a row were for that alone
};

/// A build that is going on: what the drives are asked while this lives are its sources.
class WatchedBuild {
  public:
    explicit WatchedBuild(Watcher& watcher) : watcher_(watcher)
    {
        watcher_.Begin(std::chrono::steady_clock::now());
    }
    WatchedBuild(const WatchedBuild&) = delete;
    WatchedBuild& operator=(const WatchedBuild&) = delete;
    ~WatchedBuild() { watcher_.End(ended_, std::chrono::steady_clock::now(), may_pass_); }

    /// In another way than whole.
    void EndsAs(SourceWatch::Ended ended) { ended_ = ended; }
    void FailsBy(const RunError& error)
    {
        ended_ = SourceWatch::Ended::failed;
        may_pass_ = error.may_pass;
    }

  private:
    Watcher& watcher_;
    SourceWatch::Ended ended_ = SourceWatch::Ended::whole;
    bool may_pass_ = false;
};

} // namespace kiv
