#include "faults/campaign.h"

#include "faults/judge.h"
#include "faults/system.h"

#include <algorithm>
#include <cerrno>
#include <iomanip>
#include <iostream>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv::faults {

namespace {

bool IsWanted(const std::vector<std::string>& names, const std::string& name)
{
    return names.empty() || std::find(names.begin(), names.end(), name) != names.end();
}

/// The row of the table in which a try counts: kills apart from failures.
std::string RowOf(const Attack& attack, const Try& one)
{
    const bool kills = one.strike.deed == Deed::kill_before || one.strike.deed == Deed::kill_after;
    return attack.Name() + (kills ? ", killed" : "");
}

struct Planned {
    double round;
    Try what;
};

class Campaign {
  public:
    explicit Campaign(const Wishes& wishes)
        : wishes_(wishes), bench_(wishes.settings.program, wishes.settings.folder + "/first"),
          attacks_(AllAttacks(wishes.settings))
    {
    }

    void MakeCases();
    void MakeTries();
    void Run();
    bool RunOne(const std::string& text);
    const Tally& Found() const { return tally_; }

  private:
    Verdict RunTry(const Workbench& bench, const Try& one);
    void Work(int worker, double end);
    std::string TextOfTry(const Try& one) const;
    std::string ResultPath(int worker) const
    {
        return wishes_.settings.folder + "/result-" + std::to_string(worker);
    }

    const Wishes& wishes_;
    Workbench bench_;
    Attacks attacks_;
    std::vector<Case> cases_;
    std::vector<Planned> tries_;
    Tally tally_;
};

void Campaign::MakeCases()
{
    for (const Scenario& scenario : AllScenarios()) {
        const bool wanted = (wishes_.command.empty() || CommandOf(scenario) == wishes_.command) &&
                            (wishes_.scenario.empty() || scenario.name == wishes_.scenario);
        if (!wanted)
            continue;
        Verdict verdict;
        cases_.push_back(MakeCase(bench_, scenario, verdict.complaints));
        tally_.Count("nothing", scenario.name, "none", verdict);
    }
    if (cases_.empty())
        throw std::runtime_error("no such scenario");
}

void Campaign::MakeTries()
{
    for (std::size_t i = 0; i < attacks_.size(); ++i) {
        Attack& attack = *attacks_[i];
        if (!IsWanted(wishes_.attacks, attack.Name()))
            continue;
        if (const std::string why = attack.WhyLeftOut(); !why.empty()) {
            std::cout << attack.Name() << " is left out: " << why << '\n';
            continue;
        }
        std::vector<Try> tries;
        attack.AddTries(bench_, cases_, tries);
        std::cout << attack.Name() << ": " << tries.size() << " tries\n";
        std::shuffle(tries.begin(), tries.end(), std::mt19937(wishes_.settings.seed));
        for (std::size_t n = 0; n < tries.size(); ++n) {
            tries[n].attack = static_cast<std::uint8_t>(i);
            tries_.push_back({static_cast<double>(n) / attack.Share(), tries[n]});
        }
    }
    // The first try of each comes first; then each has its share, however short the time is.
    std::stable_sort(tries_.begin(), tries_.end(),
                     [](const Planned& a, const Planned& b) { return a.round < b.round; });
    std::cout.flush();
}

std::string Campaign::TextOfTry(const Try& one) const
{
    const Attack& attack = *attacks_[one.attack];
    return TextOf(one, attack.Name(), attack.ScenarioName(cases_, one));
}

Verdict Campaign::RunTry(const Workbench& bench, const Try& one)
{
    return attacks_[one.attack]->Run(bench, cases_, one);
}

/// What one of the processes does: every so-many-th try. Its result goes into a file.
void Campaign::Work(int worker, double end)
{
    const Workbench bench(wishes_.settings.program,
                          wishes_.settings.folder + "/bench-" + std::to_string(worker));
    Tally tally;
    for (std::size_t i = static_cast<std::size_t>(worker);
         i < tries_.size() && (end <= 0 || SecondsNow() < end);
         i += static_cast<std::size_t>(wishes_.jobs)) {
        const Try& one = tries_[i].what;
        const Attack& attack = *attacks_[one.attack];
        tally.Count(RowOf(attack, one), attack.ScenarioName(cases_, one), TextOfTry(one),
                    RunTry(bench, one));
    }
    WriteWholeFile(ResultPath(worker), tally.Written());
}

int ExitCodeOf(pid_t id)
{
    int status = 0;
    while (::waitpid(id, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void Campaign::Run()
{
    const double start = SecondsNow();
    const double end = wishes_.budget > 0 ? start + wishes_.budget : 0;
    std::vector<pid_t> workers;
    for (int worker = 0; worker < wishes_.jobs; ++worker) {
        const pid_t id = ::fork();
        if (id == 0) {
            try {
                Work(worker, end);
            } catch (const std::exception& error) {
                std::cerr << "faults: " << error.what() << std::endl;
                ::_exit(1);
            }
            ::_exit(0);
        }
        workers.push_back(id);
    }
    bool well = true;
    for (const pid_t id : workers)
        well = ExitCodeOf(id) == 0 && well;
    if (!well)
        throw std::runtime_error("an attacking process came to grief");
    const long before = tally_.Tries();
    for (int worker = 0; worker < wishes_.jobs; ++worker)
        tally_.Add(BytesOfFile(ResultPath(worker)));
    const double seconds = SecondsNow() - start;
    const auto done = static_cast<double>(tally_.Tries() - before);
    std::cout << std::fixed << std::setprecision(1) << done << " tries in " << seconds << " s, "
              << done / seconds << " a second\n\n";
}

bool Campaign::RunOne(const std::string& text)
{
    const auto found = std::find_if(tries_.begin(), tries_.end(), [&](const Planned& one) {
        return TextOfTry(one.what) == text;
    });
    if (found == tries_.end())
        throw std::runtime_error("no such try: " + text);
    const Verdict verdict = RunTry(bench_, found->what);
    std::cout << text << ", at " << verdict.place << '\n';
    for (const Complaint& complaint : verdict.complaints)
        std::cout << kKindNames[static_cast<std::size_t>(complaint.kind)] << ": " << complaint.text
                  << '\n';
    std::cout << "files: " << bench_.Drive() << '\n';
    return verdict.complaints.empty();
}

/// The attack and the scenario that a try's text names.
Wishes NarrowedTo(Wishes wishes, const std::string& text)
{
    const std::size_t first = text.find(':');
    const std::size_t second = text.find(':', first + 1);
    if (second == std::string::npos)
        throw std::runtime_error("a try looks like calls:build:0:fail:12:EIO:0, not " + text);
    wishes.attacks = {text.substr(0, first)};
    return wishes;
}

} // namespace

bool RunCampaign(const Wishes& wishes)
{
    Campaign campaign(wishes);
    campaign.MakeCases();
    campaign.MakeTries();
    campaign.Run();
    std::cout << campaign.Found().Tables();
    return !campaign.Found().FoundAny();
}

bool RunOneTry(const Wishes& wishes, const std::string& text)
{
    const Wishes narrowed = NarrowedTo(wishes, text);
    Campaign campaign(narrowed);
    campaign.MakeCases();
    campaign.MakeTries();
    return campaign.RunOne(text);
}

} // namespace kiv::faults
