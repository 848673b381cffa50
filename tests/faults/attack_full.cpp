// A disk that fills up: the site lies on a file system in memory that takes so many pages and
// files more, and not one beyond.
#include "faults/attack.h"
#include "faults/judge.h"
#include "faults/system.h"

#include <sys/mount.h>
#include <sys/statfs.h>
#include <utility>

namespace kiv::faults {

namespace {

constexpr unsigned kMostPages = 12;
constexpr unsigned kMostFiles = 12;

/// `other` is the number of pages that are free, or, from kMostPages on, of files.
class FullDiskAttack : public Attack {
  public:
    std::string Name() const override { return "full-disk"; }
    std::string WhyLeftOut() override { return WhyNoMounts(); }
    void AddTries(const Workbench& bench, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override;
    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override;

  private:
    static void Limit(const Workbench& bench, const std::string& limits, unsigned long flags);
    static void FillUpTo(const Workbench& bench, unsigned free);
};

void FullDiskAttack::AddTries(const Workbench& /*bench*/, const std::vector<Case>& cases,
                              std::vector<Try>& tries)
{
    for (std::size_t scenario = 0; scenario < cases.size(); ++scenario)
        for (unsigned free = 0; free < kMostPages + kMostFiles; ++free)
            tries.push_back(
                {0, static_cast<std::uint8_t>(scenario), 0, {}, static_cast<std::uint16_t>(free)});
}

void FullDiskAttack::Limit(const Workbench& bench, const std::string& limits, unsigned long flags)
{
    if (::mount("kiv-faults", bench.Drive().c_str(), "tmpfs", flags, limits.c_str()) != 0)
        Fail("cannot mount with " + limits);
}

void FullDiskAttack::FillUpTo(const Workbench& bench, unsigned free)
{
    struct statfs state {};
    if (::statfs(bench.Drive().c_str(), &state) != 0)
        Fail("cannot look at " + bench.Drive());
    const auto pages = state.f_blocks - state.f_bfree + free;
    const auto files = state.f_files - state.f_ffree + free - kMostPages;
    Limit(bench,
          free < kMostPages ? "nr_blocks=" + std::to_string(pages)
                            : "nr_inodes=" + std::to_string(files),
          MS_REMOUNT);
}

Verdict FullDiskAttack::Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one)
{
    const Case& with = cases[one.scenario];
    Limit(bench, "size=16m,mode=755", 0);
    bench.LayBefore(with);
    FillUpTo(bench, one.other);
    const Ending ending = RunOnce(bench.LaunchOf(with.scenario));
    Complaints complaints = JudgeRun(bench, with, ending, {});
    Limit(bench, "size=16m,nr_inodes=10000", MS_REMOUNT); // somebody has made room
    for (const Complaint& complaint : JudgeNextRun(bench, with, ending))
        complaints.push_back(complaint);
    if (::umount2(bench.Drive().c_str(), MNT_DETACH) != 0)
        Fail("cannot unmount " + bench.Drive());
    const bool pages = one.other < kMostPages;
    return {pages ? "a full disk" : "a disk with too many files", std::move(complaints)};
}

} // namespace

std::unique_ptr<Attack> MakeFullDiskAttack()
{
    return std::make_unique<FullDiskAttack>();
}

} // namespace kiv::faults
