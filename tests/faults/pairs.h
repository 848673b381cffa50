// Two commands that somebody runs at once.
#pragma once

#include "faults/scenario.h"

#include <string>
#include <vector>

namespace kiv::faults {

struct Pair {
    std::string name;
    Scenario first;
    Scenario second; // its own tree is not used
    /// The second one only reads what the first one changes: it may have come too early, and is
    /// right when it is run once more.
    bool second_follows = false;
};

std::vector<Pair> AllPairs();

} // namespace kiv::faults
