// What a build looked at, and whether it is still as the build found it.
#pragma once

#include "platform/former_files.h"
#include "platform/look_log.h"

#include <chrono>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kiv {

class Drives;

/// Files that were read count by their state, and by their content where a state can hide a change;
/// what was only looked for counts by being there or not. What the build itself wrote is as the
/// build left it. It all happens in one thread, that of the drives.
class SourceWatch : public LookLog {
  public:
    using Instant = std::chrono::steady_clock::time_point;

    /// A state that is younger may be that of two contents: the clocks of file systems are coarse.
    static constexpr std::chrono::seconds kYoung{3};

    explicit SourceWatch(Drives& drives) : drives_(drives) {}
    ~SourceWatch() override { Quit(); }

    /// A build begins: what it looks at makes a new list. Each state is that before the first look.
    void Begin(Instant now);
    /// The build is over. One that was stopped has not come to all of its sources: those of the
    /// build before stay on the list, too. One that failed has seen all that made it fail.
    enum class Ended { whole, failed, stopped };
    void End(Ended ended, Instant now);

    /// What the build has read and then written itself, with other content, or has looked for in
    /// vain and then made: another build would read that. So a page that shows the site map is one
    /// build behind.
    const std::vector<std::string>& Outdated() const { return outdated_; }

    /// How the places of the list are now.
    struct Sight {
        std::vector<std::string> changed = {};   // absolute drive paths: not as the build saw them
        bool is_moving = false;                  // something is not as at the last sight
        bool is_missing = false;                 // what was there for the build has gone
        std::optional<std::string> refused = {}; // a place that cannot be looked at any more; its
        PlaceState refused_state = {};           // state counts as unchanged
    };
    /// One look at each place. Throws nothing but for lack of memory.
    Sight Look(Instant now);

    /// The absolute drive paths of the list, in order.
    std::vector<std::string> Places() const;

    void Looks(const std::string& absolute) override;
    void Opens(const std::string& absolute) override;
    void HasRead(const std::string& absolute, std::string_view bytes) override;
    void HasWritten(const OutputFile& file, const std::string_view* bytes) override;

  private:
    struct Entry {
        PlaceState state; // before the build looked first
        PlaceState last;  // at the last look
        bool is_read = false;
        std::optional<ContentMark> content = {}; // that was read
        bool is_own = false;                     // the build itself had made what it read
        bool is_sure = false; // the state was old when the content was compared with it
        Instant since;        // when this state was seen first
    };
    /// What the build wrote, by where it lies; no content where that is not known.
    using OwnFiles = std::unordered_map<std::string, std::optional<ContentMark>>;
    struct Written {
        std::string path;
        std::string native;
        std::optional<ContentMark> content;
    };
    struct Folder {
        PlaceState state;
        Instant since; // when this state was seen first
    };

    Entry& EntryOf(const std::string& absolute);
    void Quit();
    void TakeOwn();
    bool IsOwn(const std::string& absolute, const OwnFiles& own);
    bool IsOutdated(const std::string& absolute, const Entry& entry, const PlaceState& now);
    OwnFiles PlacesOfWritten() const;
    void NoteFolders(Instant now);
    void LookAtFolders(Instant now);
    bool IsOther(const std::string& absolute, Entry& entry, const PlaceState& state, Instant now);
    std::optional<bool> Holds(const std::string& absolute, const ContentMark& content);

    Drives& drives_;
    bool is_listening_ = false;
    Instant begun_;
    std::map<std::string, Entry> entries_;
    std::map<std::string, Entry> former_; // of the build before
    std::vector<Written> written_;
    std::unordered_set<std::string> written_paths_; // the same
    std::vector<std::string> outdated_;
    std::unordered_map<std::string, Folder> folders_; // that the entries lie in
    Instant names_known_since_;
};

} // namespace kiv
