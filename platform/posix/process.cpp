#include "platform/process.h"

#include <climits>
#include <csignal>
#include <fcntl.h>
#include <pthread.h>
#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

namespace kiv {

void PrepareProcess()
{
    // The lowest free number is the one that is closed. What is to be read from it is opened for
    // writing, and the other way round.
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; ++standard)
        if (::fcntl(standard, F_GETFD) < 0) {
            const int mode = standard == STDIN_FILENO ? O_WRONLY : O_RDONLY;
            if (::open("/dev/null", mode) != standard)
                break; // the machine is in a bad way: the streams stay as they are
        }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

std::uint64_t WaitsOfThread()
{
#ifdef RUSAGE_THREAD
    rusage used{};
    if (::getrusage(RUSAGE_THREAD, &used) == 0)
        return static_cast<std::uint64_t>(used.ru_nvcsw);
#endif
    thread_local std::uint64_t calls = 0;
    return ++calls;
}

std::size_t MostOpenFiles()
{
    rlimit limit{};
    return ::getrlimit(RLIMIT_NOFILE, &limit) == 0 ? static_cast<std::size_t>(limit.rlim_cur)
                                                   : _POSIX_OPEN_MAX;
}

void KeepApart([[maybe_unused]] std::thread& thread)
{
#ifdef __linux__
    cpu_set_t others;
    if (::sched_getaffinity(0, sizeof others, &others) != 0)
        return;
    CPU_CLR(static_cast<std::size_t>(::sched_getcpu()), &others);
    if (CPU_COUNT(&others) > 0)
        ::pthread_setaffinity_np(thread.native_handle(), sizeof others, &others);
#endif
}

} // namespace kiv
