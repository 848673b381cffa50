#include "preview/live_state.h"

#include "platform/native_files.h"
#include "preview/content_marks.h"
#include "preview/json_text.h"
#include "text/joined_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kMostWatched = 4000;

/// "[" and the texts and "]".
template <typename Texts>
std::string JsonList(const Texts& texts)
{
    std::string json = "[";
    for (const std::string& text : texts)
        json.append(json.size() > 1 ? "," : "").append(JsonText(text));
    return json.append("]");
}

std::string JsonOfBuild(const BuildNews& build)
{
    return Joined({"{\"failed\":", build.has_failed ? "true" : "false", ",\"warnings\":",
                   std::to_string(build.warnings), ",\"text\":", JsonText(build.text),
                   ",\"place\":", JsonText(build.place), ",\"hint\":", JsonText(build.hint), "}"});
}

FileStamp StampOf(const ServedState& served)
{
    return served.is_folder ? NativeFolderStamp(served.native) : NativeStamp(served.native);
}

std::optional<ContentMark> ContentOf(const ServedState& served)
{
    return served.is_folder ? MarkOfFolder(served.native) : MarkOfFile(served.native);
}

bool IsSameContent(const std::optional<ContentMark>& one, const std::optional<ContentMark>& other)
{
    return one && other && *one == *other;
}

std::set<std::string> Without(const std::set<std::string>& some,
                              const std::set<std::string>& others)
{
    std::set<std::string> left;
    std::ranges::set_difference(some, others, std::inserter(left, left.end()));
    return left;
}

} // namespace

std::uint64_t LiveState::Version() const
{
    const std::scoped_lock lock(mutex_);
    return version_;
}

void LiveState::Watch(const std::string& site_path, ServedState served)
{
    const std::scoped_lock lock(mutex_);
    if (watched_.size() >= kMostWatched && !watched_.contains(site_path))
        watched_.erase(watched_.begin());
    const bool is_new = !watched_.contains(site_path);
    Watched& file = watched_[site_path];
    const bool is_same = served.stamp == file.seen.stamp;
    if (is_same && !served.content)
        served.content = file.seen.content;
    if (!is_new && !is_same && !IsSameContent(served.content, file.seen.content)) {
        file.changed_in = ++version_; // others who have it do not know yet
        untold_.push_back(site_path);
    }
    file.last = served.stamp;
    file.seen = std::move(served);
}

bool LiveState::Knows(const std::string& site_path, const FileStamp& stamp) const
{
    const std::scoped_lock lock(mutex_);
    const auto found = watched_.find(site_path);
    return found != watched_.end() && found->second.seen.stamp == stamp &&
           found->second.seen.content;
}

void LiveState::BuildBegins()
{
    const std::scoped_lock lock(mutex_);
    is_building_ = true;
}

void LiveState::BuildEnds(BuildNews news)
{
    const std::scoped_lock lock(mutex_);
    // One that failed may not have come to all of its pages.
    if (!news.has_failed)
        NoteMade(news.made);
    else
        news.made = std::move(build_.made);
    build_ = std::move(news);
    is_building_ = false;
    is_built_ = true;
}

void LiveState::NoteMade(const std::set<std::string>& made)
{
    const std::set<std::string> gone = Without(build_.made, made);
    if (!gone.empty())
        new_ = Without(made, build_.made);
    gone_.insert(gone.begin(), gone.end());
    gone_ = Without(gone_, made);
}

/// A change counts when a second look finds the file as the first one did: what is being saved is
/// not shown half. After a build nothing is.
bool LiveState::HasChanged(Watched& file) const
{
    const FileStamp now = StampOf(file.seen);
    const bool is_settled = is_built_ || now == file.last;
    file.last = now;
    if (now == file.seen.stamp || !is_settled)
        return false;
    file.seen.stamp = now;
    const std::optional<ContentMark> former = file.seen.content;
    if (former)
        file.seen.content = ContentOf(file.seen);
    return !IsSameContent(former, file.seen.content);
}

std::string LiveState::News()
{
    const std::scoped_lock lock(mutex_);
    if (is_building_)
        return {};
    std::vector<std::string> changed = std::exchange(untold_, {});
    const std::size_t known = changed.size();
    for (auto& [site_path, file] : watched_) {
        if (!HasChanged(file))
            continue;
        file.changed_in = version_ + 1;
        changed.push_back(site_path);
    }
    if (changed.empty() && !is_built_)
        return {};
    if (changed.size() > known || is_built_)
        ++version_;
    is_built_ = false;
    return Event(changed);
}

std::string LiveState::Since(std::uint64_t version) const
{
    const std::scoped_lock lock(mutex_);
    std::vector<std::string> changed;
    for (const auto& [site_path, file] : watched_)
        if (file.changed_in > version)
            changed.push_back(site_path);
    return Event(changed);
}

std::string LiveState::Event(const std::vector<std::string>& changed) const
{
    return Joined({"data: {\"run\":", JsonText(run_), ",\"version\":", std::to_string(version_),
                   ",\"changed\":", JsonList(changed), ",\"build\":", JsonOfBuild(build_),
                   ",\"gone\":", JsonList(gone_), ",\"fresh\":", JsonList(new_), "}\n\n"});
}

} // namespace kiv
