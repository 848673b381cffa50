// Runs that nothing disturbs, each looked at once for all attacks.
#pragma once

#include "faults/tracer.h"
#include "faults/workbench.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace kiv::faults {

class UndisturbedRuns {
  public:
    /// `all_kinds`: each scenario is met on every kind of file system; else on a plain one and on
    /// another, which `seed` chooses.
    UndisturbedRuns(bool all_kinds, unsigned seed) : all_kinds_(all_kinds), seed_(seed) {}

    /// On which kinds the scenario of this number is met, as indices of kSurroundings.
    std::vector<std::size_t> KindsFor(std::size_t scenario) const;

    /// The calls of a case's run on one of these.
    const std::vector<Noted>& CallsOf(const Workbench& bench, const Case& with, std::size_t kind);

  private:
    using Key = std::pair<std::string, std::size_t>; // the scenario's name, the kind

    bool all_kinds_;
    unsigned seed_;
    std::map<Key, std::vector<Noted>> calls_;
};

} // namespace kiv::faults
