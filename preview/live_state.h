// What the browsers are to know: which served files have changed, and how the last build went.
#pragma once

#include "platform/files.h"
#include "platform/former_files.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kiv {

/// How a build ended, for those who look at its pages. Texts are UTF-8.
struct BuildNews {
    bool has_failed = false;
    std::size_t warnings = 0;
    std::string text;           // the error or the first warning
    std::string place;          // its place, "_html.txt:12"; "": none
    std::string hint;           // what can be done
    std::set<std::string> made; // what was written, as paths from the root on, "/about.htm"
};

/// What was served.
struct ServedState {
    std::string native;
    FileStamp stamp;                         // from before it was read
    std::optional<ContentMark> content = {}; // a new stamp alone is no change
    bool is_folder = false;
};

/// Called by the thread that builds and by the one that serves.
class LiveState {
  public:
    /// `run` tells this run of the program from others.
    explicit LiveState(std::string run) : run_(std::move(run)) {}

    const std::string& Run() const { return run_; }
    /// The number of the last change.
    std::uint64_t Version() const;

    /// A file, one that is missing, or a folder is served: it is watched from now on.
    void Watch(const std::string& site_path, ServedState served);
    /// Whether the content behind such a stamp is known already.
    bool Knows(const std::string& site_path, const FileStamp& stamp) const;

    /// While a build is at work its pages are left alone.
    void BuildBegins();
    void BuildEnds(BuildNews news);

    /// What has come up since the last call, as an event; "" when nothing has.
    std::string News();
    /// All that has come up since a version.
    std::string Since(std::uint64_t version) const;

  private:
    struct Watched {
        ServedState seen;             // when it was served, or when it was told of
        FileStamp last;               // at the last look
        std::uint64_t changed_in = 0; // version
    };

    void NoteMade(const std::set<std::string>& made);
    bool HasChanged(Watched& file) const;
    std::string Event(const std::vector<std::string>& changed) const;

    const std::string run_;
    mutable std::mutex mutex_;
    std::uint64_t version_ = 1;
    std::map<std::string, Watched> watched_; // by site path
    bool is_building_ = false;
    bool is_built_ = false;           // since the last news
    std::vector<std::string> untold_; // that were found changed when they were served
    BuildNews build_;
    std::set<std::string> gone_; // that a build made once and the last one did not
    std::set<std::string> new_;  // that came when these went
};

} // namespace kiv
