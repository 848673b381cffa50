// Whole builds and checks by the command line program, timed from its start to its end.
//
// The sites are made in a new folder below KIV_BENCH_DIR (default: /dev/shm, else the folder for
// temporary files).
#include "bench/outputs.h"
#include "bench/process.h"
#include "bench/site_generator.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

/// A folder of our own, gone at the end.
class Scratch {
  public:
    Scratch() : path_(Root() / ("kiv-bench-" + std::to_string(getpid())))
    {
        fs::create_directories(path_);
    }
    ~Scratch()
    {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    const fs::path& Path() const { return path_; }

  private:
    static fs::path Root()
    {
        if (const char* chosen = std::getenv("KIV_BENCH_DIR"); chosen != nullptr && *chosen != '\0')
            return chosen;
        return fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
    }

    fs::path path_;
};

/// One generated site. Its folder lies in a drive C: of its own, away from anybody's settings.
class Site {
  public:
    Site(const kiv::SiteSize& size, const fs::path& drive)
        : size_(size), drive_(drive), dir_(drive / "site")
    {
        fs::create_directories(dir_);
        kiv::WriteSite(size_, dir_, edition_);
    }

    kiv::Usage Build() const
    {
        kiv::Usage usage =
            kiv::RunProgram({KIV_CLI, "--drive-c", drive_.string(), "build", dir_.string()});
        if (usage.exit_code != 0)
            throw std::runtime_error("the build ended with exit code " +
                                     std::to_string(usage.exit_code));
        return usage;
    }

    /// Pictures that a generated page shows are not there: the check finds them missing.
    kiv::Usage Check() const
    {
        return kiv::RunProgram(
            {KIV_CLI, "--drive-c", drive_.string(), "check", dir_.string(), "--fail-on", "never"});
    }

    std::vector<kiv::Output> Outputs() const { return kiv::FindOutputs(dir_); }
    void RemoveOutputs() const { kiv::RemoveOutputs(dir_, Outputs()); }
    void ChangeOnePage() { kiv::WriteSite(size_, dir_, ++edition_); }

  private:
    kiv::SiteSize size_;
    fs::path drive_;
    fs::path dir_;
    int edition_ = 0;
};

/// The sites by name, each made when a scenario first asks for it.
class Sites {
  public:
    Site& Of(const kiv::SiteSize& size)
    {
        const std::string name(size.name);
        return sites_.try_emplace(name, size, scratch_.Path() / name).first->second;
    }

  private:
    Scratch scratch_;
    std::map<std::string, Site> sites_;
};

// What comes before each build and is not timed.
using Prepare = void (*)(Site& site);

void Measure(benchmark::State& state, Site& site, Prepare prepare)
{
    double cpu_ms = 0;
    long peak = 0;
    std::uintmax_t bytes = 0;
    site.Build();
    while (state.KeepRunning()) {
        prepare(site);
        const std::vector<kiv::Output> before = site.Outputs();
        const kiv::Usage usage = site.Build();
        state.SetIterationTime(usage.wall_ms / 1000);
        cpu_ms += usage.cpu_ms;
        peak = std::max(peak, usage.peak_rss_kib);
        bytes = kiv::BytesWritten(before, site.Outputs());
    }
    state.counters["cpu_ms"] = benchmark::Counter(cpu_ms, benchmark::Counter::kAvgIterations);
    state.counters["peak_KiB"] = static_cast<double>(peak);
    state.counters["bytes"] = static_cast<double>(bytes);
}

/// One for the program's whole run: Google Benchmark calls a scenario several times and hands
/// nothing of ours on.
Site& SiteOf(std::string_view size)
{
    static Sites sites;
    return sites.Of(*kiv::FindSiteSize(size));
}

void Check(benchmark::State& state, std::string_view size)
{
    const Site& site = SiteOf(size);
    long peak = 0;
    double cpu_ms = 0;
    while (state.KeepRunning()) {
        const kiv::Usage usage = site.Check();
        if (usage.exit_code != 0)
            return state.SkipWithError("the check failed");
        state.SetIterationTime(usage.wall_ms / 1000);
        cpu_ms += usage.cpu_ms;
        peak = std::max(peak, usage.peak_rss_kib);
    }
    state.counters["cpu_ms"] = benchmark::Counter(cpu_ms, benchmark::Counter::kAvgIterations);
    state.counters["peak_KiB"] = static_cast<double>(peak);
}

void Run(benchmark::State& state, std::string_view size, Prepare prepare)
{
    try {
        Measure(state, SiteOf(size), prepare);
    } catch (const std::exception& error) {
        state.SkipWithError(error.what());
    }
}

void EmptyFolder(benchmark::State& state, std::string_view size)
{
    Run(state, size, [](Site& site) { site.RemoveOutputs(); });
}

void NothingChanged(benchmark::State& state, std::string_view size)
{
    Run(state, size, [](Site&) {});
}

void OnePageChanged(benchmark::State& state, std::string_view size)
{
    Run(state, size, [](Site& site) { site.ChangeOnePage(); });
}

#define KIV_BENCH_SIZE(scenario, size)                                                             \
    BENCHMARK_CAPTURE(scenario, size, #size)->UseManualTime()->Unit(benchmark::kMillisecond)

KIV_BENCH_SIZE(EmptyFolder, S);
KIV_BENCH_SIZE(EmptyFolder, M);
KIV_BENCH_SIZE(EmptyFolder, L);
KIV_BENCH_SIZE(EmptyFolder, X);
KIV_BENCH_SIZE(NothingChanged, S);
KIV_BENCH_SIZE(NothingChanged, M);
KIV_BENCH_SIZE(NothingChanged, L);
KIV_BENCH_SIZE(NothingChanged, X);
KIV_BENCH_SIZE(OnePageChanged, S);
KIV_BENCH_SIZE(OnePageChanged, M);
KIV_BENCH_SIZE(OnePageChanged, L);
KIV_BENCH_SIZE(OnePageChanged, X);
KIV_BENCH_SIZE(Check, S);
KIV_BENCH_SIZE(Check, M);
KIV_BENCH_SIZE(Check, L);
KIV_BENCH_SIZE(Check, X);

} // namespace

BENCHMARK_MAIN();
