#include "preview/watcher.h"

#include "platform/drives.h"

#include <utility>

namespace kiv {

namespace {

/// Some pages never come to rest, such as one that takes in its own former text.
constexpr int kMostRepeats = 3;

/// A file that another program holds: tried again after one second, two, four, …
constexpr int kMostRetries = 5;
constexpr std::chrono::seconds kFirstRetry{1};

RunError ErrorOf(const std::string& absolute, const PlaceState& state)
{
    try {
        Drives::RefuseLook(absolute, state);
    } catch (RunError& error) {
        error.where.file = absolute;
        return std::move(error);
    }
}

} // namespace

void Watcher::TellRefused(const SourceWatch::Sight& sight, Tick& tick)
{
    const bool is_refused = sight.refused.has_value();
    if (is_refused && !is_refused_)
        tick.refused = ErrorOf(*sight.refused, sight.refused_state);
    tick.is_back = is_refused_ && !is_refused;
    is_refused_ = is_refused;
}

void Watcher::End(SourceWatch::Ended ended, Instant now, bool may_pass)
{
    sources_.End(ended, now);
    is_behind_ = ended == SourceWatch::Ended::whole && !sources_.Outdated().empty();
    retry_.reset();
    if (!may_pass)
        retried_ = 0;
    else if (retried_ < kMostRetries)
        retry_ = now + kFirstRetry * (1 << retried_);
}

/// Whether the build is to be done over because of what it wrote itself.
bool Watcher::WantsAnother()
{
    const bool wants = std::exchange(is_behind_, false) && repeated_ < kMostRepeats;
    repeated_ = wants ? repeated_ + 1 : 0;
    return wants;
}

/// Whether the build that failed is tried again now.
bool Watcher::IsTriedAgain(Instant now)
{
    if (!retry_ || now < *retry_)
        return false;
    retry_.reset();
    ++retried_;
    return true;
}

Watcher::Tick Watcher::Look(Instant now)
{
    Tick tick;
    if (is_behind_ && WantsAnother()) {
        tick.build = true;
        tick.sources = sources_.Outdated();
        return tick;
    }
    const Instant begin = std::chrono::steady_clock::now();
    SourceWatch::Sight sight = sources_.Look(now);
    const auto took = std::chrono::steady_clock::now() - begin;
    TellRefused(sight, tick);
    const BuildPacer::Advice advice = pacer_.After(sight, now);
    tick.build = advice.build;
    if (tick.build) {
        repeated_ = 0;
        retried_ = 0;
    }
    if (sight.changed.empty())
        tick.build = IsTriedAgain(now);
    tick.wait = sight.changed.empty() ? pacer_.RestAfter(took) : advice.wait;
    tick.sources = std::move(sight.changed);
    return tick;
}

} // namespace kiv
