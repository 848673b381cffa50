// What a trace costs: builds in memory that nobody, somebody for one page, or somebody for every
// page asks about.
#include "bench/site_generator.h"
#include "builder/build_driver.h"
#include "builder/trace.h"
#include "platform/drives.h"
#include "platform/unwritten_files.h"

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class SilentReporter : public kiv::Reporter {
  protected:
    void Show(std::string_view) override {}
};

/// Asks for one page, or for all, and looks at what it gets.
class Listener : public kiv::Trace {
  public:
    explicit Listener(int page) : page_(page) {}

    bool BeginPage(const kiv::TracedPage& page) override
    {
        return page_ == 0 || page.number == page_;
    }
    void TakeLine(const kiv::LineStory& story) override { steps_ += story.steps.size(); }
    void TakeUnused(const kiv::LineStory&) override {}
    std::size_t Steps() const { return steps_; }

  private:
    int page_; // 0: all
    std::size_t steps_ = 0;
};

/// A site on a drive C: of its own, gone at the end.
class Site {
  public:
    explicit Site(const kiv::SiteSize& size)
        : root_((fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path()) /
                ("kiv-trace-bench-" + std::to_string(getpid())))
    {
        fs::create_directories(root_ / "site");
        kiv::WriteSite(size, root_ / "site", 0);
    }
    ~Site() { fs::remove_all(root_); }
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    void Build(kiv::Trace* trace) const
    {
        const std::unique_ptr<kiv::Drives> disk = kiv::MakeDriveFiles({{'C', root_.string()}});
        disk->ChangeDirectory("C:\\site");
        kiv::UnwrittenFiles files(*disk);
        kiv::SystemClock clock;
        kiv::HeldClipboard clipboard;
        kiv::SystemPrograms programs(*disk);
        SilentReporter reporter;
        kiv::HeaderPictureLoader pictures(files);
        kiv::Machine machine{files, *disk, clock, clipboard, programs, reporter, pictures};
        kiv::BuildOptions options;
        options.program_start = clock.Now();
        options.trace = trace;
        kiv::BlockMemory blocks;
        kiv::OutputRoots roots;
        kiv::BuildSite(machine, options, blocks, roots);
    }

  private:
    fs::path root_;
};

/// `page`: 1-based; 0: every page is asked for, -1: nobody asks.
void L(benchmark::State& state, int page)
{
    static const Site site(*kiv::FindSiteSize("L"));
    std::size_t steps = 0;
    while (state.KeepRunning()) {
        Listener listener(page);
        site.Build(page < 0 ? nullptr : &listener);
        steps = listener.Steps();
    }
    state.counters["steps"] = static_cast<double>(steps);
}

BENCHMARK_CAPTURE(L, nobody, -1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(L, one page, 500)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(L, every page, 0)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
