// Standard streams that are closed, a standard output that nobody reads, files that may not grow.
#include "faults/attack.h"
#include "faults/judge.h"

namespace kiv::faults {

namespace {

constexpr unsigned kAllClosed = 7;

/// `other` says which streams are closed, bit by bit; kAllClosed + 1: nobody reads.
class StreamAttack : public Attack {
  public:
    std::string Name() const override { return "streams"; }

    void AddTries(const Workbench& /*bench*/, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override
    {
        for (std::size_t scenario = 0; scenario < cases.size(); ++scenario)
            for (unsigned streams = 1; streams <= kAllClosed + 1; ++streams)
                tries.push_back({0,
                                 static_cast<std::uint8_t>(scenario),
                                 0,
                                 {},
                                 static_cast<std::uint16_t>(streams)});
    }

    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override
    {
        const Case& with = cases[one.scenario];
        bench.LayBefore(with);
        Launch launch = bench.LaunchOf(with.scenario);
        launch.broken_pipe = one.other > kAllClosed;
        launch.closed_streams = launch.broken_pipe ? 0 : one.other;
        const Ending ending = RunOnce(launch);
        Circumstances circumstances;
        constexpr unsigned kOutput = 2;
        circumstances.output_failed = launch.broken_pipe || (launch.closed_streams & kOutput) != 0;
        return {launch.broken_pipe ? "a broken pipe" : "closed streams",
                Judge(bench, with, ending, circumstances)};
    }
};

/// No file may become longer than `other` bytes.
class LimitAttack : public Attack {
  public:
    std::string Name() const override { return "limits"; }

    void AddTries(const Workbench& /*bench*/, const std::vector<Case>& cases,
                  std::vector<Try>& tries) override
    {
        for (std::size_t scenario = 0; scenario < cases.size(); ++scenario)
            for (const rlim_t bytes : Lengths(cases[scenario]))
                tries.push_back({0,
                                 static_cast<std::uint8_t>(scenario),
                                 0,
                                 {},
                                 static_cast<std::uint16_t>(bytes)});
    }

    Verdict Run(const Workbench& bench, const std::vector<Case>& cases, const Try& one) override
    {
        const Case& with = cases[one.scenario];
        bench.LayBefore(with);
        Launch launch = bench.LaunchOf(with.scenario);
        launch.most_bytes = one.other;
        const Ending ending = RunOnce(launch);
        Circumstances circumstances;
        circumstances.output_failed = ending.out.size() >= one.other;
        return {"a limit on the length of files", Judge(bench, with, ending, circumstances)};
    }

  private:
    /// Each at which one more of the written files fits.
    static std::set<rlim_t> Lengths(const Case& with)
    {
        std::set<rlim_t> lengths = {0, 1, with.out.size() / 2};
        for (const std::string& path : with.scenario.changes)
            if (const auto file = with.after.find(path); file != with.after.end())
                for (const std::size_t less : {1U, 0U})
                    if (file->second.bytes.size() > less)
                        lengths.insert(file->second.bytes.size() - less);
        return lengths;
    }
};

} // namespace

std::unique_ptr<Attack> MakeStreamAttack()
{
    return std::make_unique<StreamAttack>();
}

std::unique_ptr<Attack> MakeLimitAttack()
{
    return std::make_unique<LimitAttack>();
}

} // namespace kiv::faults
