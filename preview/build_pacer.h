// When changed sources are to be built: a save may take several steps.
#pragma once

#include "preview/source_watch.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>

namespace kiv {

class BuildPacer {
  public:
    using Instant = SourceWatch::Instant;
    using Duration = std::chrono::milliseconds;

    /// From look to look while nothing changes, and while something does.
    static constexpr Duration kQuiet{200};
    static constexpr Duration kUnrest{100};
    /// At most from look to look, however many places there are: a save is to be on the page within
    /// a second.
    static constexpr Duration kLongest{800};
    /// The rest after a look in which nothing had changed: two hundred and fifty times what the
    /// shortest of the last three took. Looking at a thousand files may not cost more than looking
    /// at ten, and a look that the system has interrupted says nothing.
    Duration RestAfter(std::chrono::nanoseconds look);
    /// How long a source that has gone is waited for: some editors delete first and write then.
    static constexpr Duration kMissing{1000};
    /// How long all the waiting may take: something may never come to rest.
    static constexpr Duration kPatience{3000};

    struct Advice {
        bool build = false;
        Duration wait = kQuiet; // before the next look, when nothing is built
    };
    /// What to do after a look.
    Advice After(const SourceWatch::Sight& sight, Instant now);

  private:
    Advice Rest();

    std::optional<Instant> changed_since_;
    std::optional<Instant> missing_since_;
    std::array<std::chrono::nanoseconds, 3> looks_{}; // how long the last ones took
    std::size_t next_look_ = 0;
};

} // namespace kiv
