// Memory that is refused: once, or from some request on.
#include "faults/attack.h"
#include "faults/judge.h"
#include "faults/memory_control.h"
#include "faults/system.h"

#include <cerrno>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace kiv::faults {

namespace {

/// The page that is shared with one run.
class SharedControl {
  public:
    explicit SharedControl(const MemoryControl& control)
        : fd_(::memfd_create("control", MFD_CLOEXEC))
    {
        if (fd_ < 0 || ::pwrite(fd_, &control, sizeof control, 0) != sizeof control)
            Fail("no page to share");
    }
    SharedControl(const SharedControl&) = delete;
    SharedControl& operator=(const SharedControl&) = delete;
    ~SharedControl() { ::close(fd_); }

    void GiveTo(Launch& launch) const
    {
        launch.memory_control = fd_;
        launch.variables.push_back(std::string(kMemoryControl) + "=" + std::to_string(fd_));
    }
    std::uint64_t Requests() const
    {
        MemoryControl control;
        if (::pread(fd_, &control, sizeof control, 0) != sizeof control)
            Fail("no page to share");
        return control.requests;
    }

  private:
    int fd_;
};

class MemoryAttack : public Attack {
  public:
    explicit MemoryAttack(std::string program) : program_(std::move(program)) {}

    std::string Name() const override { return "memory"; }
    unsigned Share() const override { return 8; }
    std::string WhyLeftOut() override
    {
        const bool there = ::access(program_.c_str(), X_OK) == 0;
        return there ? "" : "kiv-cli is not linked statically here";
    }

    void AddTries(const Workbench& bench, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override
    {
        for (std::size_t scenario = 0; scenario < cases.size(); ++scenario) {
            bench.LayBefore(cases[scenario]);
            std::uint64_t requests = 0;
            RunWith(bench, cases[scenario], {}, requests);
            for (std::uint64_t at = 1; at <= requests; ++at)
                for (const Deed deed : {Deed::fail, Deed::fail_onward})
                    tries.push_back({0,
                                     static_cast<std::uint8_t>(scenario),
                                     0,
                                     {deed, static_cast<std::uint16_t>(at), ENOMEM},
                                     0});
        }
    }

    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override
    {
        const Case& with = cases[one.scenario];
        const bool onward = one.strike.deed == Deed::fail_onward;
        bench.LayBefore(with);
        std::uint64_t requests = 0;
        const Ending ending = RunWith(bench, with, {one.strike.at, onward ? 1U : 0U, 0}, requests);
        Circumstances circumstances;
        circumstances.output_failed = onward; // a report takes memory
        circumstances.tidying_failed = true;  // so does tidying; the next run does it
        return {"a request for memory", Judge(bench, with, ending, circumstances)};
    }

  private:
    Ending RunWith(const Workbench& bench, const Case& with, const MemoryControl& control,
                   std::uint64_t& requests) const
    {
        const SharedControl shared(control);
        Launch launch = bench.LaunchOf(with.scenario);
        launch.program = program_;
        shared.GiveTo(launch);
        Ending ending = RunOnce(launch);
        requests = shared.Requests();
        return ending;
    }

    std::string program_;
};

} // namespace

std::unique_ptr<Attack> MakeMemoryAttack(const std::string& program)
{
    return std::make_unique<MemoryAttack>(program);
}

} // namespace kiv::faults
