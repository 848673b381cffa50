// Strikes by chance: kills at any moment, and two strikes one after the other.
#include "faults/attack.h"
#include "faults/judge.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>
#include <utility>

namespace kiv::faults {

namespace {

constexpr unsigned kMoments = 200; // for each scenario

/// `other` numbers the moment, in parts of the run's usual length.
class RandomKillAttack : public Attack {
  public:
    explicit RandomKillAttack(unsigned seed) : chance_(seed) {}

    std::string Name() const override { return "kills"; }

    void AddTries(const Workbench& /*bench*/, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override
    {
        std::uniform_int_distribution<unsigned> moment(0, kWhole + kWhole / 5);
        for (std::size_t scenario = 0; scenario < cases.size(); ++scenario)
            for (unsigned i = 0; i < kMoments; ++i)
                tries.push_back({0,
                                 static_cast<std::uint8_t>(scenario),
                                 0,
                                 {},
                                 static_cast<std::uint16_t>(moment(chance_))});
    }

    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override
    {
        const Case& with = cases[one.scenario];
        bench.LayBefore(with);
        const Launch launch = bench.LaunchOf(with.scenario);
        Child child(launch);
        child.Start();
        std::this_thread::sleep_for(
            std::chrono::duration<double>(with.seconds * one.other / kWhole));
        child.Kill();
        child.Wait();
        Ending& ending = child.End();
        ending.killed = ending.exit_code < 0;
        return {"any moment", Judge(bench, with, ending, {})};
    }

  private:
    static constexpr unsigned kWhole = 10'000; // the usual length

    std::mt19937 chance_;
};

/// A run is struck, then the next one, and only the third is left alone. `strike` is the first;
/// the second is a kill before the call `other`.
class SecondFaultAttack : public Attack {
  public:
    SecondFaultAttack(SharedRuns runs, unsigned seed) : runs_(std::move(runs)), seed_(seed) {}

    std::string Name() const override { return "twice"; }
    std::string WhyLeftOut() override { return WhyNotTraced(); }

    void AddTries(const Workbench& bench, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override
    {
        for (std::size_t scenario = 0; scenario < cases.size(); ++scenario)
            for (const std::size_t kind : runs_->KindsFor(scenario))
                AddFor(bench, cases[scenario], scenario, kind, tries);
    }

    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override
    {
        const Case& with = cases[one.scenario];
        bench.LayBefore(with);
        Plan plan;
        plan.surroundings = kSurroundings[one.surroundings];
        plan.strike = one.strike;
        const Launch launch = bench.LaunchOf(with.scenario);
        const Outcome first = RunTraced(launch, plan);
        Complaints complaints = JudgeEnding(with.scenario, first.ending, {.output_failed = true});
        plan.strike = {Deed::kill_before, one.other, 0};
        Ending second = RunTraced(launch, plan).ending;
        second.killed = true; // whether it came to that or not: its success was asked for before
        for (const Complaint& complaint : Judge(bench, with, second, {.tidying_failed = true}))
            complaints.push_back(complaint);
        return {"two calls", std::move(complaints)};
    }

  private:
    static constexpr unsigned kPairs = 150; // for each scenario and surroundings

    void AddFor(const Workbench& bench, const Case& with, std::size_t scenario, std::size_t kind,
                std::vector<Try>& tries)
    {
        const std::size_t calls = runs_->CallsOf(bench, with, kind).size();
        std::uniform_int_distribution<std::size_t> any(1, calls);
        // The same moments, whatever other scenarios and kinds there are.
        const std::string text = with.scenario.name + std::to_string(kind) + std::to_string(seed_);
        std::seed_seq numbers(text.begin(), text.end());
        std::mt19937 chance(numbers);
        for (unsigned i = 0; i < kPairs; ++i) {
            const bool kill = i % 2 == 0;
            const Strike strike{kill ? Deed::kill_after : Deed::fail_onward,
                                static_cast<std::uint16_t>(any(chance)),
                                static_cast<std::int16_t>(kill ? 0 : ENOSPC)};
            tries.push_back({0, static_cast<std::uint8_t>(scenario),
                             static_cast<std::uint8_t>(kind), strike,
                             static_cast<std::uint16_t>(any(chance))});
        }
    }

    SharedRuns runs_;
    unsigned seed_;
};

} // namespace

std::unique_ptr<Attack> MakeRandomKillAttack(unsigned seed)
{
    return std::make_unique<RandomKillAttack>(seed);
}

std::unique_ptr<Attack> MakeSecondFaultAttack(SharedRuns runs, unsigned seed)
{
    return std::make_unique<SecondFaultAttack>(std::move(runs), seed);
}

} // namespace kiv::faults
