#include "faults/attack.h"

namespace kiv::faults {

namespace {

constexpr std::array<std::string_view, 8> kDeeds = {
    "none", "fail", "fail-late", "fail-onward", "shorten", "kill-before", "kill-after", "pause"};

} // namespace

std::string TextOf(const Try& one, const std::string& attack, const std::string& scenario)
{
    std::string text = attack + ":" + scenario + ":" + std::to_string(one.surroundings) + ":" +
                       std::string(kDeeds[static_cast<std::size_t>(one.strike.deed)]) + ":" +
                       std::to_string(one.strike.at);
    text += ":" + (one.strike.error == 0 ? "0" : ErrorName(one.strike.error));
    return text + ":" + std::to_string(one.other);
}

Attacks AllAttacks(const Settings& settings)
{
    const auto runs = std::make_shared<UndisturbedRuns>(settings.all_kinds, settings.seed);
    Attacks attacks;
    attacks.push_back(MakeCallAttack(runs));
    attacks.push_back(MakeSecondFaultAttack(runs, settings.seed));
    attacks.push_back(MakeRandomKillAttack(settings.seed));
    attacks.push_back(MakeStreamAttack());
    attacks.push_back(MakeLimitAttack());
    attacks.push_back(MakeFullDiskAttack());
    attacks.push_back(MakeMemoryAttack(settings.memory_program));
    attacks.push_back(MakePairAttack(runs));
    attacks.push_back(MakeEditorAttack(runs));
    attacks.push_back(MakePowerAttack(runs));
    return attacks;
}

} // namespace kiv::faults
