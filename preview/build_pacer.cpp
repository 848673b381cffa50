#include "preview/build_pacer.h"

#include <algorithm>

namespace kiv {

/// Forgets what was waited for.
BuildPacer::Advice BuildPacer::Rest()
{
    changed_since_.reset();
    missing_since_.reset();
    return {};
}

BuildPacer::Duration BuildPacer::RestAfter(std::chrono::nanoseconds look)
{
    looks_[next_look_] = look;
    next_look_ = (next_look_ + 1) % looks_.size();
    const std::chrono::nanoseconds shortest = *std::ranges::min_element(looks_);
    return std::clamp(std::chrono::duration_cast<Duration>(250 * shortest), kQuiet, kLongest);
}

BuildPacer::Advice BuildPacer::After(const SourceWatch::Sight& sight, Instant now)
{
    if (sight.changed.empty())
        return Rest();
    if (!changed_since_)
        changed_since_ = now;
    if (!sight.is_missing)
        missing_since_.reset();
    else if (!missing_since_)
        missing_since_ = now;
    const bool is_awaited = missing_since_ && now - *missing_since_ < kMissing;
    if ((sight.is_moving || is_awaited) && now - *changed_since_ < kPatience)
        return {false, kUnrest};
    Rest();
    return {true, Duration::zero()};
}

} // namespace kiv
