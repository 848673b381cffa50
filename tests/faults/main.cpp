// Attacks on kiv-cli; README.md tells of them.
#include "faults/campaign.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace kiv::faults {

namespace {

constexpr const char* kUsage =
    "usage: faults [OPTION ...]\n"
    "  --budget SECONDS   stop after so long (default: 20)\n"
    "  --all              every try there is, however long that takes\n"
    "  --command NAME     only the scenarios of this command of kiv-cli\n"
    "  --scenario NAME    only this scenario\n"
    "  --attack NAME      only this attack; may be given more than once\n"
    "  --jobs N           so many processes (default: 2)\n"
    "  --seed N           another order, other moments\n"
    "  --try TEXT         one try, as a finding names it; its files stay\n"
    "  --program FILE     the kiv-cli to attack\n"
    "  --memory-program FILE  the one whose memory fails at will; none: that attack is left out\n";

using Taker = std::function<void(const std::string&)>;

/// A folder in memory, where there is one: thousands of tries a minute are no work for a disk.
std::string NewFolder()
{
    std::string name = (std::filesystem::is_directory("/dev/shm") ? "/dev/shm" : "/tmp");
    name += "/kiv-faults-XXXXXX";
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("cannot make " + name);
    return name;
}

/// The program is started from another folder.
std::string Absolute(const std::string& path)
{
    return std::filesystem::absolute(path).string();
}

struct Task {
    Wishes wishes;
    std::string one_try;
};

Task TaskOf(const std::vector<std::string>& arguments)
{
    Task task;
    Wishes& wishes = task.wishes;
    wishes.settings.program = KIV_CLI;
    wishes.settings.memory_program = KIV_CLI_MEMORY;
    const std::map<std::string, Taker> takers = {
        {"--budget", [&](const std::string& value) { wishes.budget = std::stod(value); }},
        {"--command", [&](const std::string& value) { wishes.command = value; }},
        {"--scenario", [&](const std::string& value) { wishes.scenario = value; }},
        {"--attack", [&](const std::string& value) { wishes.attacks.push_back(value); }},
        {"--jobs", [&](const std::string& value) { wishes.jobs = std::stoi(value); }},
        {"--seed",
         [&](const std::string& value) {
             wishes.settings.seed = static_cast<unsigned>(std::stoul(value));
         }},
        {"--try", [&](const std::string& value) { task.one_try = value; }},
        {"--program", [&](const std::string& value) { wishes.settings.program = Absolute(value); }},
        {"--memory-program",
         [&](const std::string& value) { wishes.settings.memory_program = Absolute(value); }},
    };
    for (std::size_t i = 0; i < arguments.size(); i += 2) {
        if (arguments[i] == "--all") {
            wishes.budget = 0;
            --i; // it has no value
            continue;
        }
        const auto taker = takers.find(arguments[i]);
        if (taker == takers.end() || i + 1 == arguments.size())
            throw std::invalid_argument(kUsage);
        taker->second(arguments[i + 1]);
    }
    // A short sample has no time to look at all of them first. A single try may be of any.
    constexpr double kLong = 60;
    wishes.settings.all_kinds =
        wishes.budget <= 0 || wishes.budget >= kLong || !task.one_try.empty();
    return task;
}

bool Do(Task task)
{
    ::umask(022);
    task.wishes.settings.folder = NewFolder();
    if (!task.one_try.empty())
        return RunOneTry(task.wishes, task.one_try);
    const bool clean = RunCampaign(task.wishes);
    std::filesystem::remove_all(task.wishes.settings.folder);
    return clean;
}

} // namespace

} // namespace kiv::faults

int main(int count, char** arguments)
{
    try {
        return kiv::faults::Do(kiv::faults::TaskOf({arguments + 1, arguments + count})) ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "faults: " << error.what() << '\n';
        return 2;
    }
}
