#include "faults/undisturbed.h"

#include "faults/attack.h"

#include <numeric>

namespace kiv::faults {

std::vector<std::size_t> UndisturbedRuns::KindsFor(std::size_t scenario) const
{
    if (!all_kinds_)
        return {0, 1 + (scenario + seed_) % (kSurroundings.size() - 1)};
    std::vector<std::size_t> all(kSurroundings.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return all;
}

const std::vector<Noted>& UndisturbedRuns::CallsOf(const Workbench& bench, const Case& with,
                                                   std::size_t kind)
{
    const auto [place, is_new] = calls_.try_emplace({with.scenario.name, kind});
    if (is_new) {
        bench.LayBefore(with);
        Plan plan;
        plan.surroundings = kSurroundings[kind];
        plan.record = true;
        place->second = RunTraced(bench.LaunchOf(with.scenario), plan).noted;
        for (Noted& one : place->second)
            one.text = bench.Plain(one.text);
    }
    return place->second;
}

} // namespace kiv::faults
