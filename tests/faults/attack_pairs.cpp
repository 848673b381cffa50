// Two at once: the first command stands still before one of its calls while the second has its
// turn, at each call in turn.
#include "faults/attack.h"
#include "faults/judge.h"
#include "faults/pairs.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <thread>
#include <utility>

namespace kiv::faults {

namespace {

/// A pair with all that may come of it.
struct PairCase {
    Pair pair;
    Tree before;
    std::string first_out;
    std::string second_out;
    std::array<Tree, 2> alone; // one of them only
    std::array<Tree, 2> both;  // first and second, second and first
};

bool Holds(const Tree& tree, const std::string& path, const Entry& entry)
{
    const auto found = tree.find(path);
    return found != tree.end() && found->second.bytes == entry.bytes;
}

/// What a file may be: as before, or as any order makes it.
bool IsKnown(const PairCase& with, const std::string& path, const Entry& entry)
{
    const auto holds = [&](const Tree& tree) { return Holds(tree, path, entry); };
    return holds(with.before) || std::any_of(with.alone.begin(), with.alone.end(), holds) ||
           std::any_of(with.both.begin(), with.both.end(), holds) ||
           with.pair.first.passing.contains(path) || with.pair.first.growing.contains(path);
}

void AskOfKnown(const PairCase& with, const Tree& found, Complaints& complaints)
{
    for (const auto& [path, entry] : found)
        if (entry.kind == Entry::Kind::file && !IsOurs(path) && !IsKnown(with, path, entry))
            complaints.push_back({Kind::loss, path + " is what neither of them makes"});
    for (const auto& [path, entry] : with.before)
        if (entry.kind == Entry::Kind::file && !found.contains(path) &&
            with.both[0].contains(path) && !with.pair.first.growing.contains(path))
            complaints.push_back({Kind::loss, path + " is gone"});
}

void AskOfNames(const PairCase& with, const Tree& found, Complaints& complaints)
{
    for (const auto& [path, entry] : with.before) {
        const auto is_it = [&known = entry](const auto& other) {
            return other.second.bytes == known.bytes;
        };
        if (entry.kind != Entry::Kind::folder && std::none_of(found.begin(), found.end(), is_it))
            complaints.push_back({Kind::loss, "what was in " + path + " is gone"});
    }
}

void AddNew(Complaints& complaints, const Complaints& more)
{
    for (const Complaint& complaint : more)
        if (std::find(complaints.begin(), complaints.end(), complaint) == complaints.end())
            complaints.push_back(complaint);
}

/// Until the child has ended, or waits for the one that stands still.
void GiveTurn(Child& child)
{
    constexpr int kSure = 5;
    child.Start();
    for (int sleeping = 0; sleeping < kSure && !child.HasEnded();) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        sleeping = child.Sleeps() ? sleeping + 1 : 0;
    }
}

class PairAttack : public Attack {
  public:
    explicit PairAttack(SharedRuns runs) : runs_(std::move(runs)) {}

    std::string Name() const override { return "pairs"; }
    std::string WhyLeftOut() override { return WhyNotTraced(); }
    std::string ScenarioName(const std::vector<Case>& /*cases*/, const Try& one) const override
    {
        return pairs_[one.scenario].pair.name;
    }
    void AddTries(const Workbench& bench, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override;
    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override;

  private:
    static PairCase MakePairCase(const Workbench& bench, Pair pair);
    static Complaints AskAtEnd(const Workbench& bench, const PairCase& with,
                               const std::array<Ending, 2>& endings);

    SharedRuns runs_;
    std::vector<PairCase> pairs_;
};

bool IsSameCall(const Scenario& first, const Scenario& second)
{
    return first.arguments == second.arguments && first.input == second.input &&
           first.json == second.json;
}

PairCase PairAttack::MakePairCase(const Workbench& bench, Pair pair)
{
    PairCase made;
    made.pair = std::move(pair);
    made.before = made.pair.first.tree;
    const Launch first = bench.LaunchOf(made.pair.first);
    const Launch second = bench.LaunchOf(made.pair.second);
    bench.Lay(made.before);
    made.first_out = RunOnce(first).out;
    made.alone[0] = bench.Look();
    RunOnce(second);
    made.both[0] = bench.Look();
    if (IsSameCall(made.pair.first, made.pair.second)) {
        made.second_out = made.first_out;
        made.alone[1] = made.alone[0];
        made.both[1] = made.both[0];
        return made;
    }
    bench.Lay(made.before);
    made.second_out = RunOnce(second).out;
    made.alone[1] = bench.Look();
    RunOnce(first);
    made.both[1] = bench.Look();
    return made;
}

void PairAttack::AddTries(const Workbench& bench, const std::vector<Case>& cases,
                          std::vector<Try>& tries)
{
    for (Pair& pair : AllPairs()) {
        const auto with = std::find_if(cases.begin(), cases.end(), [&](const Case& one) {
            return one.scenario.name == pair.first.name;
        });
        if (with == cases.end())
            continue;
        pairs_.push_back(MakePairCase(bench, std::move(pair)));
        for (const std::size_t kind :
             runs_->KindsFor(static_cast<std::size_t>(with - cases.begin()))) {
            const std::size_t calls = runs_->CallsOf(bench, *with, kind).size();
            for (std::size_t at = 1; at <= calls; ++at)
                tries.push_back({0,
                                 static_cast<std::uint8_t>(pairs_.size() - 1),
                                 static_cast<std::uint8_t>(kind),
                                 {Deed::pause, static_cast<std::uint16_t>(at), 0},
                                 0});
        }
    }
}

/// Of two that do not wait for each other: what the one that came too early has made besides.
Tree WithoutEarlier(const PairCase& with, Tree found)
{
    if (with.pair.second_follows)
        std::erase_if(found, [&](const auto& named) {
            return !with.both[0].contains(named.first) && with.alone[1].contains(named.first);
        });
    return found;
}

/// Each comes to its end; one after the other, if it has to be.
void AskOfEnds(const std::array<Ending, 2>& endings, Complaints& complaints)
{
    for (const Ending& ending : endings)
        if (ending.exit_code == 1)
            complaints.push_back({Kind::unfinished, "one fails because of the other"});
}

/// Who has said that it could not is run again; then all has to be there.
Complaints PairAttack::AskAtEnd(const Workbench& bench, const PairCase& with,
                                const std::array<Ending, 2>& endings)
{
    const bool told_done = endings[0].exit_code == 0 && endings[1].exit_code == 0;
    if (endings[0].exit_code != 0)
        RunOnce(bench.LaunchOf(with.pair.first));
    if (endings[1].exit_code != 0 || with.pair.second_follows)
        RunOnce(bench.LaunchOf(with.pair.second));
    const Tree found = bench.Look();
    const Tree rest = WithoutEarlier(with, WithoutOurs(found));
    Complaints complaints;
    AskOfEnds(endings, complaints);
    if (!SameBytes(with.both[0], rest) && !SameBytes(with.both[1], rest))
        complaints.push_back({told_done ? Kind::loss : Kind::unfinished,
                              FirstDifference(with.both[0], rest) +
                                  (told_done ? ", though both said done" : " at the end")});
    if (const std::string ours = FirstOfOurs(found); !ours.empty())
        complaints.push_back({Kind::left_over, bench.Plain(ours) + " stays"});
    return complaints;
}

Verdict PairAttack::Run(const Workbench& bench, const std::vector<Case>& /*cases*/, const Try& one)
{
    const PairCase& with = pairs_[one.scenario];
    bench.Lay(with.before);
    const Launch second_launch = bench.LaunchOf(with.pair.second);
    Child second(second_launch);
    Plan plan;
    plan.surroundings = kSurroundings[one.surroundings];
    plan.strike = one.strike;
    plan.record = true;
    plan.at_pause = [&] { GiveTurn(second); };
    const Outcome first = RunTraced(bench.LaunchOf(with.pair.first), plan);
    if (second.Id() < 0)
        second.Start();
    second.Wait();
    const std::array<Ending, 2> endings = {first.ending, second.End()};
    Complaints complaints = JudgeEnding(with.pair.first, endings[0], {});
    AddNew(complaints, JudgeEnding(with.pair.second, endings[1], {}));
    const bool other_result = (endings[0].exit_code == 0 && endings[0].out != with.first_out) ||
                              (endings[1].exit_code == 0 && endings[1].out != with.second_out);
    if (!with.pair.first.json && other_result)
        complaints.push_back({Kind::false_success, "another result"});
    if (with.pair.first.renames)
        AskOfNames(with, bench.Look(), complaints);
    else
        AskOfKnown(with, bench.Look(), complaints);
    AddNew(complaints, AskAtEnd(bench, with, endings));
    const std::size_t at = one.strike.at - 1U;
    return {at < first.noted.size() ? bench.Plain(first.noted[at].text) : "", complaints};
}

} // namespace

std::unique_ptr<Attack> MakePairAttack(SharedRuns runs)
{
    return std::make_unique<PairAttack>(std::move(runs));
}

} // namespace kiv::faults
