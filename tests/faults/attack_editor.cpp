// Somebody saves a list in an editor while the command is at work on it. What he has written must
// be there in the end.
#include "faults/attack.h"
#include "faults/judge.h"
#include "faults/system.h"

#include <array>
#include <cstdio>
#include <utility>

namespace kiv::faults {

namespace {

constexpr std::string_view kEdit = ";edited by hand\r\n";

/// How an editor saves.
enum Saving : std::uint16_t { by_renaming, in_place, kSavings };

struct EditedList {
    std::string_view scenario;
    std::string_view path;
    std::string_view line; // what is written at its end
};

constexpr std::array kEditedLists = std::to_array<EditedList>({
    {"news", "site/_html.txt", kEdit},
    {"news", "site/news/_html.txt", kEdit},
    {"news-alone", "site/news/_html.txt", kEdit},
    {"pictures", "site/_alt.txt", "new.gif|Written by hand|and|kept\r\n"},
});

void Edit(const std::string& native, std::string_view line, std::uint16_t saving)
{
    const std::string bytes = BytesOfFile(native) + std::string(line);
    if (saving == in_place) {
        WriteWholeFile(native, bytes);
        return;
    }
    WriteWholeFile(native + "~", bytes);
    if (std::rename((native + "~").c_str(), native.c_str()) != 0)
        Fail("cannot save " + native);
}

/// `other`: the list, and how it is saved.
class EditorAttack : public Attack {
  public:
    explicit EditorAttack(SharedRuns runs) : runs_(std::move(runs)) {}

    std::string Name() const override { return "editor"; }
    std::string WhyLeftOut() override { return WhyNotTraced(); }
    void AddTries(const Workbench& bench, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override;
    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override;

  private:
    SharedRuns runs_;
};

void EditorAttack::AddTries(const Workbench& bench, const std::vector<Case>& cases,
                            std::vector<Try>& tries)
{
    for (std::size_t scenario = 0; scenario < cases.size(); ++scenario)
        for (std::size_t list = 0; list < kEditedLists.size(); ++list) {
            if (cases[scenario].scenario.name != kEditedLists[list].scenario)
                continue;
            const std::size_t calls = runs_->CallsOf(bench, cases[scenario], 0).size();
            for (std::size_t at = 1; at <= calls; ++at)
                for (std::uint16_t saving = 0; saving < kSavings; ++saving)
                    tries.push_back({0,
                                     static_cast<std::uint8_t>(scenario),
                                     0,
                                     {Deed::pause, static_cast<std::uint16_t>(at), 0},
                                     static_cast<std::uint16_t>(list * kSavings + saving)});
        }
}

Verdict EditorAttack::Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one)
{
    const Case& with = cases[one.scenario];
    const EditedList& list = kEditedLists[one.other / kSavings];
    const std::string path(list.path);
    bench.LayBefore(with);
    Plan plan;
    plan.strike = one.strike;
    plan.record = true;
    plan.at_pause = [&] { Edit(bench.Drive() + "/" + path, list.line, one.other % kSavings); };
    const Outcome outcome = RunTraced(bench.LaunchOf(with.scenario), plan);
    Complaints complaints = JudgeEnding(with.scenario, outcome.ending, {});
    Ending ending = outcome.ending;
    if (ending.exit_code != 0)
        ending = RunOnce(bench.LaunchOf(with.scenario));
    if (ending.exit_code != 0)
        complaints.push_back({Kind::unfinished, "it does not end well the second time"});
    const Tree found = bench.Look();
    const auto file = found.find(path);
    // The edit may have come before the list was read, and be told in the list's own way then.
    const std::string_view words = list.line.substr(0, list.line.find('\r'));
    const std::string bytes = file == found.end() ? "" : file->second.bytes;
    if (bytes.find(words) == std::string::npos)
        complaints.push_back({Kind::loss, path + " lost what was written by hand"});
    const std::size_t at = one.strike.at - 1U;
    return {at < outcome.noted.size() ? bench.Plain(outcome.noted[at].text) : "",
            std::move(complaints)};
}

} // namespace

std::unique_ptr<Attack> MakeEditorAttack(SharedRuns runs)
{
    return std::make_unique<EditorAttack>(std::move(runs));
}

} // namespace kiv::faults
