#include "bench/process.h"

#include <cerrno>
#include <chrono>
#include <system_error>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kiv {
namespace {

double Milliseconds(const timeval& time)
{
    return 1000.0 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1000.0;
}

pid_t Start(std::vector<char*>& arguments)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        throw std::system_error(error, std::generic_category(), arguments[0]);
    return child;
}

} // namespace

Usage RunProgram(const std::vector<std::string>& words)
{
    std::vector<std::string> copies = words;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : copies)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    const auto begin = std::chrono::steady_clock::now();
    const pid_t child = Start(arguments);
    int status = 0;
    rusage used{};
    while (wait4(child, &status, 0, &used) < 0)
        if (errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "wait4");
    const auto end = std::chrono::steady_clock::now();

    Usage usage;
    usage.wall_ms = std::chrono::duration<double, std::milli>(end - begin).count();
    usage.cpu_ms = Milliseconds(used.ru_utime) + Milliseconds(used.ru_stime);
    usage.peak_rss_kib = used.ru_maxrss;
    usage.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return usage;
}

} // namespace kiv
