#include "faults/workbench.h"

#include <cstdlib>
#include <sys/stat.h>
#include <utility>

namespace kiv::faults {

namespace {

/// How many threads the program may have. Without them a run makes the same calls each time.
std::string Threads()
{
    const char* const given = std::getenv("KIV_THREADS");
    return given == nullptr ? "1" : given;
}

} // namespace

bool Workbench::HasThreads()
{
    return Threads() != "1";
}

Workbench::Workbench(std::string program, std::string folder)
    : program_(std::move(program)), folder_(std::move(folder))
{
    ::mkdir(folder_.c_str(), 0755);
    ::mkdir(Drive().c_str(), 0755);
}

const Tree& Workbench::RecordsFor(const Scenario& scenario) const
{
    const auto [place, is_new] = records_.try_emplace(scenario.name);
    if (is_new && scenario.needs_records) {
        Lay(scenario.tree);
        for (const Arguments& arguments : scenario.prepare)
            RunOnce(LaunchOf(scenario, arguments));
        place->second = Records();
    }
    return place->second;
}

void Workbench::LayBefore(const Case& with) const
{
    const Tree& records = RecordsFor(with.scenario);
    Lay(with.before, records);
}

Launch Workbench::LaunchOf(const Scenario& scenario, const Arguments& arguments) const
{
    Launch launch;
    launch.program = program_;
    launch.arguments = {"--drive-c", Drive(), "--now", "2005-10-24T12:00:00"};
    if (scenario.json)
        launch.arguments.emplace_back("--json");
    launch.arguments.insert(launch.arguments.end(), arguments.begin(), arguments.end());
    launch.directory = Drive() + "/site";
    launch.input = scenario.input;
    launch.variables = {"PATH=/usr/bin:/bin",
                        "HOME=" + folder_,
                        "XDG_STATE_HOME=" + State(),
                        "KIV_THREADS=" + Threads(),
                        "ASAN_OPTIONS=detect_leaks=0:exitcode=99",
                        "UBSAN_OPTIONS=print_stacktrace=1"};
    return launch;
}

std::string Workbench::Plain(std::string text) const
{
    for (std::size_t at = text.find(folder_); at != std::string::npos; at = text.find(folder_))
        text.replace(at, folder_.size() + 1, "");
    // Behind these come numbers of the process, of the file.
    for (const std::string_view mark : {".kiv-", "/#", ":["})
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at)) {
            at += mark.size();
            const std::size_t end = text.find_first_not_of("0123456789-", at);
            text.replace(at, end - at, "*");
        }
    return text;
}

} // namespace kiv::faults
