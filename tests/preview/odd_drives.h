// Drives as a coarse file system has them, or one on a network that is away.
#pragma once

#include "tests/support/memory_drives.h"

#include <cstdint>
#include <set>
#include <string>

namespace kiv::test {

/// Drives whose looks tell what the test wants them to.
class OddDrives : public MemoryDrives {
  public:
    PlaceState StateNow(const std::string& absolute) override
    {
        if (refused.contains(absolute))
            return {.kind = PlaceState::Kind::refused, .error = 5};
        PlaceState state = MemoryDrives::StateNow(absolute);
        state.changed = 0;
        state.identity = makes_up_identities ? ++identity_ : 0;
        return state;
    }

    std::set<std::string> refused;
    bool makes_up_identities = false;

  private:
    std::uint64_t identity_ = 0;
};

} // namespace kiv::test
