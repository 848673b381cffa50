// Every call fails in every way that fits it, and the program is killed before and after each.
#include "faults/attack.h"
#include "faults/judge.h"

#include <initializer_list>
#include <sys/syscall.h>
#include <utility>

namespace kiv::faults {

namespace {

constexpr std::array kOnward = {EIO, ESTALE, ENOSPC, EROFS};

bool IsOutput(const Call& call)
{
    return call.kind->role == Role::write && (call.arguments[0] == 1 || call.arguments[0] == 2);
}

/// All the ways to strike at one call.
std::vector<Strike> StrikesAt(const Noted& noted, std::uint16_t at)
{
    std::vector<Strike> strikes;
    const auto add = [&](Deed deed, int error = 0) {
        strikes.push_back({deed, at, static_cast<std::int16_t>(error)});
    };
    for (const int error : ErrorsOf(noted.call))
        add(Deed::fail, error);
    for (const int error : LateErrorsOf(noted.call))
        add(Deed::fail_late, error);
    for (const int error : kOnward)
        add(Deed::fail_onward, error);
    if (MayFallShort(noted.call))
        add(Deed::shorten);
    add(Deed::kill_before);
    add(Deed::kill_after);
    return strikes;
}

class CallAttack : public Attack {
  public:
    explicit CallAttack(SharedRuns runs) : runs_(std::move(runs)) {}

    std::string Name() const override { return "calls"; }
    std::string WhyLeftOut() override { return WhyNotTraced(); }
    unsigned Share() const override { return 40; }
    void AddTries(const Workbench& bench, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override;
    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override;

  private:
    SharedRuns runs_;
};

void CallAttack::AddTries(const Workbench& bench, const std::vector<Case>& cases,
                          std::vector<Try>& tries)
{
    for (std::size_t scenario = 0; scenario < cases.size(); ++scenario)
        for (const std::size_t kind : runs_->KindsFor(scenario)) {
            const std::vector<Noted>& noted = runs_->CallsOf(bench, cases[scenario], kind);
            for (std::size_t at = 0; at < noted.size(); ++at)
                for (const Strike& strike :
                     StrikesAt(noted[at], static_cast<std::uint16_t>(at + 1)))
                    tries.push_back({0, static_cast<std::uint8_t>(scenario),
                                     static_cast<std::uint8_t>(kind), strike, 0});
        }
}

Verdict CallAttack::Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one)
{
    const Case& with = cases[one.scenario];
    Noted noted = runs_->CallsOf(bench, with, one.surroundings)[one.strike.at - 1U];
    bench.LayBefore(with);
    Plan plan;
    plan.surroundings = kSurroundings[one.surroundings];
    plan.strike = one.strike;
    const Outcome outcome = RunTraced(bench.LaunchOf(with.scenario), plan);
    // Threads make the same calls in another order each time, and seldom one more or less.
    if (outcome.struck) {
        noted = *outcome.struck;
        noted.text = bench.Plain(noted.text);
    }
    Circumstances circumstances;
    circumstances.output_failed = IsOutput(noted.call);
    circumstances.tidying_failed =
        one.strike.deed == Deed::fail_onward || noted.call.kind->role == Role::unlink;
    Verdict verdict{noted.text, Judge(bench, with, outcome.ending, circumstances)};
    if (!outcome.struck && !Workbench::HasThreads())
        verdict.complaints.push_back({Kind::unfinished, "the run was not the same twice"});
    return verdict;
}

} // namespace

std::unique_ptr<Attack> MakeCallAttack(SharedRuns runs)
{
    return std::make_unique<CallAttack>(std::move(runs));
}

} // namespace kiv::faults
