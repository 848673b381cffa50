#include "faults/launch.h"

#include "faults/system.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <map>
#include <sys/mman.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace kiv::faults {

namespace {

struct Ended {
    int status;
    struct rusage usage;
};

std::map<pid_t, Ended>& KeptEnds()
{
    static std::map<pid_t, Ended> ends;
    return ends;
}

int MemoryFile(const char* name)
{
    const int fd = ::memfd_create(name, MFD_CLOEXEC);
    if (fd < 0)
        Fail("no memory for a stream");
    return fd;
}

/// The writing end of a pipe that nobody reads.
int BrokenPipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        Fail("no pipe");
    ::close(ends[0]);
    return ends[1];
}

std::vector<char*> Pointers(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 2);
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str())); // as execve wants them
    pointers.push_back(nullptr);
    return pointers;
}

double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

void SetLimit(decltype(RLIMIT_CPU) what, rlim_t most)
{
    const struct rlimit limit {
        most, most
    };
    ::setrlimit(what, &limit);
}

void OnTick(int /*signal*/) {}

void SetTicks(suseconds_t microseconds)
{
    const itimerval timer{{0, microseconds}, {0, microseconds}};
    ::setitimer(ITIMER_REAL, &timer, nullptr);
}

} // namespace

double SecondsNow()
{
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

Ticking::Ticking()
{
    struct sigaction action {};
    action.sa_handler = OnTick; // without SA_RESTART: a call that waits comes back
    ::sigaction(SIGALRM, &action, nullptr);
    SetTicks(100'000);
}

Ticking::~Ticking()
{
    SetTicks(0);
}

void KeepEnd(pid_t id, int status, const struct rusage& usage)
{
    KeptEnds()[id] = {status, usage};
}

Child::Child(const Launch& launch)
    : launch_(launch), arguments_(Pointers(launch.arguments)),
      variables_(Pointers(launch.variables)), in_(MemoryFile("in")),
      out_(launch.broken_pipe ? BrokenPipe() : MemoryFile("out")), err_(MemoryFile("err"))
{
    arguments_.insert(arguments_.begin(), const_cast<char*>(launch.program.c_str()));
    if (::pwrite(in_, launch.input.data(), launch.input.size(), 0) < 0)
        Fail("cannot lay down the input");
}

Child::~Child()
{
    if (id_ > 0 && !ended_) {
        Kill();
        Wait();
    }
    for (const int fd : {in_, out_, err_})
        ::close(fd);
}

void Child::Start(const std::function<void()>& before)
{
    id_ = ::fork();
    if (id_ == 0)
        Become(before);
    if (id_ < 0)
        Fail("cannot start a process");
}

void Child::TakeStreams() const
{
    const std::array<int, 3> streams = {in_, out_, err_};
    for (int stream = 0; stream < 3; ++stream)
        ::dup2(streams[static_cast<std::size_t>(stream)], stream);
    for (unsigned stream = 0; stream < 3; ++stream)
        if ((launch_.closed_streams >> stream & 1U) != 0)
            ::close(static_cast<int>(stream));
}

void Child::Become(const std::function<void()>& before)
{
    constexpr rlim_t kSeconds = 3;
    SetLimit(RLIMIT_CPU, kSeconds);
    SetLimit(RLIMIT_CORE, 0);
    if (launch_.most_bytes)
        SetLimit(RLIMIT_FSIZE, *launch_.most_bytes);
    if (!launch_.directory.empty() && ::chdir(launch_.directory.c_str()) != 0)
        ::_exit(127);
    if (launch_.memory_control)
        ::fcntl(*launch_.memory_control, F_SETFD, 0);
    TakeStreams();
    if (before)
        before();
    ::execve(launch_.program.c_str(), arguments_.data(), variables_.data());
    ::_exit(127);
}

void Child::Kill()
{
    ::kill(id_, SIGKILL);
}

void Child::NoteEnd(int status, const struct rusage& usage)
{
    ended_ = true;
    ending_.seconds_busy = Seconds(usage.ru_utime) + Seconds(usage.ru_stime);
    ending_.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    ending_.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    ending_.hung = ending_.hung || ending_.seconds_busy > kMostWork || ending_.signal == SIGXCPU;
}

bool Child::HasEnded()
{
    if (ended_)
        return true;
    if (const auto kept = KeptEnds().find(id_); kept != KeptEnds().end()) {
        NoteEnd(kept->second.status, kept->second.usage);
        KeptEnds().erase(kept);
        return true;
    }
    int status = 0;
    struct rusage usage {};
    if (::wait4(id_, &status, WNOHANG, &usage) == id_)
        NoteEnd(status, usage);
    return ended_;
}

void Child::Wait()
{
    const Ticking ticking;
    const double start = SecondsNow();
    while (!HasEnded()) {
        int status = 0;
        struct rusage usage {};
        if (::wait4(id_, &status, 0, &usage) == id_) {
            NoteEnd(status, usage);
        } else if (SecondsNow() - start > kLongestWait) {
            ending_.hung = true;
            Kill();
        }
    }
}

bool Child::Sleeps() const
{
    std::ifstream file("/proc/" + std::to_string(id_) + "/stat");
    std::string stat;
    std::getline(file, stat);
    const std::size_t name_end = stat.rfind(')');
    return name_end != std::string::npos && name_end + 2 < stat.size() && stat[name_end + 2] == 'S';
}

Ending& Child::End()
{
    if (!launch_.broken_pipe)
        ending_.out = BytesOf(out_);
    ending_.err = BytesOf(err_);
    return ending_;
}

Ending RunOnce(const Launch& launch)
{
    Child child(launch);
    child.Start();
    child.Wait();
    return std::move(child.End());
}

} // namespace kiv::faults
