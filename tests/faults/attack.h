// What all attacks have in common: they make tries, and run them one by one.
#pragma once

#include "faults/findings.h"
#include "faults/tracer.h"
#include "faults/undisturbed.h"
#include "faults/workbench.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::faults {

/// One try. What `surroundings`, `strike` and `other` mean is the attack's business.
struct Try {
    std::uint8_t attack = 0;
    std::uint8_t scenario = 0;
    std::uint8_t surroundings = 0;
    Strike strike;
    std::uint16_t other = 0;
    bool operator==(const Try&) const = default;
};

/// "calls:news:0:fail:12:EIO:0", and back again. `names` are those of the scenarios.
std::string TextOf(const Try& one, const std::string& attack, const std::string& scenario);

struct Settings {
    std::string program;
    std::string memory_program; // "" : there is none
    std::string folder;
    unsigned seed = 1;
    bool all_kinds = true; // of file systems for each scenario; see UndisturbedRuns
};

class Attack {
  public:
    Attack() = default;
    Attack(const Attack&) = delete;
    Attack& operator=(const Attack&) = delete;
    virtual ~Attack() = default;

    virtual std::string Name() const = 0;
    /// Why it cannot be made here; "" when it can.
    virtual std::string WhyLeftOut() { return {}; }
    /// How many of its tries come in a round with those of the others, when time is short.
    virtual unsigned Share() const { return 4; }
    /// Adds its tries on these cases; scenarios are their indices.
    virtual void AddTries(const Workbench& bench, const std::vector<Case>& cases,
                          std::vector<Try>& tries) = 0;
    virtual Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) = 0;
    /// How a try's scenario is called.
    virtual std::string ScenarioName(const std::vector<Case>& cases, const Try& one) const
    {
        return cases[one.scenario].scenario.name;
    }
};

using Attacks = std::vector<std::unique_ptr<Attack>>;
Attacks AllAttacks(const Settings& settings);

using SharedRuns = std::shared_ptr<UndisturbedRuns>;
std::unique_ptr<Attack> MakeCallAttack(SharedRuns runs);
std::unique_ptr<Attack> MakeSecondFaultAttack(SharedRuns runs, unsigned seed);
std::unique_ptr<Attack> MakeRandomKillAttack(unsigned seed);
std::unique_ptr<Attack> MakeStreamAttack();
std::unique_ptr<Attack> MakeLimitAttack();
std::unique_ptr<Attack> MakeFullDiskAttack();
std::unique_ptr<Attack> MakeMemoryAttack(const std::string& program);
std::unique_ptr<Attack> MakePairAttack(SharedRuns runs);
std::unique_ptr<Attack> MakeEditorAttack(SharedRuns runs);
std::unique_ptr<Attack> MakePowerAttack(SharedRuns runs);

/// The kinds of file systems.
constexpr std::array kSurroundings = std::to_array<Surroundings>({
    {.name = "plain"},
    {.name = "no-unnamed", .no_unnamed = true},
    {.name = "no-replacing", .no_unnamed = true, .no_replacing = true},
    {.name = "no-links", .no_unnamed = true, .no_replacing = true, .no_links = true},
    {.name = "by-proc", .no_empty_path = true},
    {.name = "no-names", .no_empty_path = true, .no_proc = true},
});

} // namespace kiv::faults
