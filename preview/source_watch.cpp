#include "preview/source_watch.h"

#include "platform/drive_path.h"
#include "platform/drives.h"
#include "platform/run_error.h"

#include <utility>

namespace kiv {

namespace {

using Kind = PlaceState::Kind;

/// Not every file system tells by a folder's state that a name in it has changed.
constexpr std::chrono::seconds kNamesAreTrusted{5};

} // namespace

void SourceWatch::Begin(Instant now)
{
    // The list before is still wanted when two builds begin and only one ends.
    if (!is_listening_)
        former_ = std::exchange(entries_, {});
    begun_ = now;
    written_.clear();
    written_paths_.clear();
    outdated_.clear();
    is_listening_ = true;
    drives_.TellLooksTo(this);
}

void SourceWatch::Quit()
{
    if (is_listening_)
        drives_.TellLooksTo(nullptr);
    is_listening_ = false;
}

void SourceWatch::End(Ended ended, Instant now)
{
    Quit();
    TakeOwn();
    if (ended == Ended::stopped)
        entries_.merge(former_);
    former_.clear();
    written_.clear();
    written_paths_.clear();
    NoteFolders(now);
}

SourceWatch::Entry& SourceWatch::EntryOf(const std::string& absolute)
{
    const auto [place, is_new] = entries_.try_emplace(absolute);
    Entry& entry = place->second;
    if (!is_new)
        return entry;
    entry.state = entry.last = drives_.StateNow(absolute);
    entry.since = begun_;
    const auto before = former_.find(absolute);
    if (before != former_.end() && before->second.state == entry.state) {
        entry.since = before->second.since;
        entry.is_sure = before->second.is_sure;
    }
    return entry;
}

void SourceWatch::Looks(const std::string& absolute)
{
    EntryOf(absolute);
}

void SourceWatch::Opens(const std::string& absolute)
{
    EntryOf(absolute).is_read = true;
}

void SourceWatch::HasRead(const std::string& absolute, std::string_view bytes)
{
    Entry& entry = EntryOf(absolute);
    const ContentMark content(bytes);
    // What is read twice and is another one then was changed in between.
    if (entry.content && *entry.content != content)
        entry.is_sure = false;
    else if (!std::exchange(entry.content, content))
        entry.is_own = written_paths_.contains(absolute);
    const auto before = former_.find(absolute);
    if (before == former_.end() || before->second.content != entry.content)
        entry.is_sure = false;
}

void SourceWatch::HasWritten(const OutputFile& file, const std::string_view* bytes)
{
    written_paths_.insert(file.path);
    written_.push_back({file.path, file.native,
                        bytes == nullptr ? std::nullopt : std::optional(ContentMark(*bytes))});
}

/// Only where something is not as it was before the build it matters who has changed it.
void SourceWatch::TakeOwn()
{
    std::optional<OwnFiles> own;
    for (auto& [absolute, entry] : entries_) {
        const PlaceState now = drives_.StateNow(absolute);
        if (now == entry.state)
            continue;
        if (!own)
            own = PlacesOfWritten();
        if (!IsOwn(absolute, *own))
            continue;
        if (IsOutdated(absolute, entry, now))
            outdated_.push_back(absolute);
        entry.state = entry.last = now;
        entry.content.reset();
    }
}

SourceWatch::OwnFiles SourceWatch::PlacesOfWritten() const
{
    OwnFiles own;
    for (const Written& written : written_)
        own.insert_or_assign(drives_.PlaceOf({written.path, written.native}), written.content);
    return own;
}

/// Whether the build has made what is there now.
bool SourceWatch::IsOwn(const std::string& absolute, const OwnFiles& own)
{
    try {
        const auto found = own.find(drives_.PlaceOf(drives_.Open(absolute)));
        return found != own.end() &&
               (!found->second || Holds(absolute, *found->second).value_or(false));
    } catch (const RunError&) { // a folder, or where none can be
        for (const Written& written : written_)
            if (written.path == absolute)
                return true;
        return false;
    }
}

/// Whether another build would find something else in a place that is the build's own by now.
bool SourceWatch::IsOutdated(const std::string& absolute, const Entry& entry, const PlaceState& now)
{
    // `entry.state` was there before the build's first look, so that look was in vain.
    if (entry.state.kind == Kind::absent && !entry.content)
        return now.kind != Kind::absent;
    return entry.content && !entry.is_own && !Holds(absolute, *entry.content).value_or(true);
}

/// Whether a file holds this; nothing when it cannot be read.
std::optional<bool> SourceWatch::Holds(const std::string& absolute, const ContentMark& content)
{
    try {
        return ContentMark(drives_.ReadFile(absolute)) == content;
    } catch (const RunError&) {
        return std::nullopt;
    }
}

/// A folder that is not there may appear under a name that differs in case, and so may each folder
/// on the way to it.
void SourceWatch::NoteFolders(Instant now)
{
    folders_.clear();
    for (const auto& [absolute, entry] : entries_) {
        std::string_view folder = FolderOf(absolute);
        while (!folders_.contains(std::string(folder))) {
            const PlaceState state = drives_.StateNow(std::string(folder));
            folders_.emplace(folder, Folder{state, now});
            if (state.kind == Kind::folder || NameOf(folder).empty())
                break;
            folder = FolderOf(folder);
        }
    }
    names_known_since_ = now;
}

/// Forgets the names in folders when they may be others.
void SourceWatch::LookAtFolders(Instant now)
{
    bool is_doubtful = now - names_known_since_ >= kNamesAreTrusted;
    for (auto& [absolute, folder] : folders_) {
        const PlaceState state = drives_.StateNow(absolute);
        if (state != folder.state)
            folder = {state, now};
        is_doubtful = is_doubtful || now - folder.since < kYoung;
    }
    if (!is_doubtful)
        return;
    drives_.ForgetNames();
    names_known_since_ = now;
}

SourceWatch::Sight SourceWatch::Look(Instant now)
{
    Sight sight;
    LookAtFolders(now);
    for (auto& [absolute, entry] : entries_) {
        const PlaceState state = drives_.StateNow(absolute);
        if (state.kind == Kind::refused && entry.state.kind != Kind::refused) {
            sight.refused = absolute;
            sight.refused_state = state;
            continue;
        }
        if (IsOther(absolute, entry, state, now)) {
            sight.changed.push_back(absolute);
            sight.is_moving = sight.is_moving || state != entry.last;
            sight.is_missing = sight.is_missing || state.kind == Kind::absent;
        }
        entry.last = state;
    }
    return sight;
}

bool SourceWatch::IsOther(const std::string& absolute, Entry& entry, const PlaceState& state,
                          Instant now)
{
    if (state.kind != entry.state.kind)
        return true;
    if (!entry.is_read || state.kind != Kind::file)
        return false;
    if (!state.HasStampsOf(entry.state))
        return true;
    // Some file systems make identities up anew.
    const bool is_known =
        state.identity == entry.state.identity && (entry.is_sure || now - entry.since < kYoung);
    if (is_known || !entry.content)
        return false;
    const std::optional<bool> same = Holds(absolute, *entry.content);
    if (!same || !*same)
        return same.has_value();
    entry.state.identity = state.identity;
    entry.is_sure = now - entry.since >= kYoung;
    return false;
}

std::vector<std::string> SourceWatch::Places() const
{
    std::vector<std::string> places;
    places.reserve(entries_.size());
    for (const auto& [absolute, entry] : entries_)
        places.push_back(absolute);
    return places;
}

} // namespace kiv
