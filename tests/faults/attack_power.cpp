// The power is cut while a command runs, or right behind it: what was not flushed is lost, or here
// and there is not.
#include "faults/attack.h"
#include "faults/cuttable_disk.h"
#include "faults/disk_mounts.h"
#include "faults/judge.h"
#include "faults/system.h"

#include <fcntl.h>
#include <iostream>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kiv::faults {

namespace {

/// How the cut comes; `other` numbers them.
struct Cut {
    Survivors survivors;
    bool nudged; // another program has flushed a file of its own, and with it the journal
};

constexpr std::array kCuts = std::to_array<Cut>({
    {Survivors::none, false},
    {Survivors::some, false},
    {Survivors::all, false},
    {Survivors::none, true},
    {Survivors::some, true},
    {Survivors::all, true},
});

class PowerAttack : public Attack {
  public:
    explicit PowerAttack(SharedRuns runs) : runs_(std::move(runs)) {}

    std::string Name() const override { return "power"; }
    unsigned Share() const override { return 1; }
    std::string WhyLeftOut() override;
    void AddTries(const Workbench& bench, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override;
    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override;

  private:
    /// Runs up to the cut. What is on the disk then goes into an image.
    Outcome RunToCut(const Workbench& bench, const Case& with, const Try& one,
                     const std::string& image) const;

    SharedRuns runs_;
};

/// An empty file system. Each workbench has its own: two with one identity are not mounted at once.
/// "" when it cannot be made.
std::string ImageOf(const Workbench& bench, const FileSystem& system)
{
    const std::string image = bench.Folder() + "/" + std::string(system.name) + ".img";
    const bool there = ::access(image.c_str(), F_OK) == 0;
    return there || MakeImage(system, image) ? image : std::string();
}

std::string PowerAttack::WhyLeftOut()
{
    if (std::string why = WhyNoMounts(); !why.empty())
        return why;
    for (const char* const device : {"/dev/fuse", "/dev/loop-control"})
        if (::access(device, R_OK | W_OK) != 0)
            return std::string("there is no ") + device;
    return WhyNotTraced();
}

/// Files that somebody wrote are at stake, or names; one build stands for all that is made anew.
/// The program's records do not lie on the disk that is cut.
bool IsAtStake(const Scenario& scenario)
{
    if (scenario.needs_records)
        return false;
    return !scenario.sources.empty() || scenario.renames || scenario.name == "build-over-old";
}

/// The calls before which a cut may matter: 0 is the end of the run.
std::vector<std::uint16_t> MomentsOf(const std::vector<Noted>& noted)
{
    std::vector<std::uint16_t> moments = {0};
    for (std::size_t at = 0; at < noted.size(); ++at) {
        const Call& call = noted[at].call;
        if (Writes(call) || call.kind->role == Role::flush)
            moments.push_back(static_cast<std::uint16_t>(at + 1));
    }
    return moments;
}

void PowerAttack::AddTries(const Workbench& bench, const std::vector<Case>& cases,
                           std::vector<Try>& tries)
{
    std::vector<std::uint8_t> systems;
    for (std::size_t i = 0; i < FileSystems().size(); ++i) {
        const FileSystem& system = FileSystems()[i];
        if (!ImageOf(bench, system).empty())
            systems.push_back(static_cast<std::uint8_t>(i));
        else
            std::cout << "power: " << system.name << " is left out: no " << system.tool << '\n';
    }
    for (std::size_t scenario = 0; scenario < cases.size(); ++scenario) {
        if (!IsAtStake(cases[scenario].scenario))
            continue;
        for (const std::uint16_t moment : MomentsOf(runs_->CallsOf(bench, cases[scenario], 0)))
            for (const std::uint8_t system : systems)
                for (std::size_t cut = 0; cut < kCuts.size(); ++cut)
                    tries.push_back({0,
                                     static_cast<std::uint8_t>(scenario),
                                     system,
                                     {moment == 0 ? Deed::none : Deed::pause, moment, 0},
                                     static_cast<std::uint16_t>(cut)});
    }
}

/// Another program's file, on the same disk.
std::string OthersFile(const Workbench& bench)
{
    return bench.Drive() + "/.others";
}

/// What another program does: it flushes a file of its own.
void Nudge(const std::string& file)
{
    const int fd = ::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (fd < 0 || ::write(fd, "x", 1) != 1 || ::fsync(fd) != 0)
        Fail("cannot write " + file);
    ::close(fd);
}

void SyncFileSystem(const std::string& folder)
{
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0 || ::syncfs(fd) != 0)
        Fail("cannot sync " + folder);
    ::close(fd);
}

Outcome PowerAttack::RunToCut(const Workbench& bench, const Case& with, const Try& one,
                              const std::string& image) const
{
    const FileSystem& system = FileSystems()[one.surroundings];
    const Cut& how = kCuts[one.other];
    CuttableDisk disk(bench.Folder() + "/disk", ImageOf(bench, system));
    std::optional<Mounted> mounted(std::in_place, system, disk.Path(), bench.Drive());
    bench.LayBefore(with);
    SyncFileSystem(bench.Drive());
    const auto cut = [&] {
        if (how.nudged)
            Nudge(OthersFile(bench));
        disk.Cut(how.survivors, one.strike.at + 1U, image);
    };
    Plan plan;
    plan.strike = one.strike;
    plan.record = true;
    plan.at_pause = cut;
    Outcome outcome = RunTraced(bench.LaunchOf(with.scenario), plan);
    if (!outcome.struck) // the end is meant, or threads have made fewer calls than another time
        cut();
    mounted.reset();
    return outcome;
}

Verdict PowerAttack::Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one)
{
    const Case& with = cases[one.scenario];
    const FileSystem& system = FileSystems()[one.surroundings];
    const std::string image = bench.Folder() + "/cut.img";
    const Outcome outcome = RunToCut(bench, with, one, image);
    Verdict verdict;
    verdict.place = std::string(system.name) + ", " +
                    (outcome.struck ? bench.Plain(outcome.struck->text) : "the end");
    const Mounted mounted(system, image, bench.Drive());
    ::unlink(OthersFile(bench).c_str());
    verdict.complaints = JudgeSources(with, bench.Look(), !outcome.struck);
    for (const Complaint& complaint : JudgeNextRun(bench, with, outcome.ending))
        verdict.complaints.push_back(complaint);
    return verdict;
}

} // namespace

std::unique_ptr<Attack> MakePowerAttack(SharedRuns runs)
{
    return std::make_unique<PowerAttack>(std::move(runs));
}

} // namespace kiv::faults
