#include "faults/tracer.h"

#include "faults/call_filter.h"
#include "faults/system.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <elf.h>
#include <fcntl.h>
#include <fstream>
#include <set>
#include <stdexcept>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace kiv::faults {

namespace {

using Registers = struct user_regs_struct;

constexpr int kOptions = PTRACE_O_EXITKILL | PTRACE_O_TRACESECCOMP | PTRACE_O_TRACEEXEC |
                         PTRACE_O_TRACEFORK | PTRACE_O_TRACEVFORK | PTRACE_O_TRACECLONE |
                         PTRACE_O_TRACESYSGOOD;
constexpr int kCallDone = SIGTRAP | 0x80;
constexpr unsigned long kBreakpoint = 0xCC;

long Ptrace(decltype(PTRACE_CONT) request, pid_t id, unsigned long address, unsigned long data)
{
    return ::ptrace(request, id, address, data);
}

Registers RegistersOf(pid_t id)
{
    Registers registers{};
    ::ptrace(PTRACE_GETREGS, id, nullptr, &registers);
    return registers;
}

void SetRegisters(pid_t id, const Registers& registers)
{
    ::ptrace(PTRACE_SETREGS, id, nullptr, &registers);
}

/// Where the program begins, as the system tells each process.
unsigned long FirstInstruction(pid_t id)
{
    std::ifstream vector("/proc/" + std::to_string(id) + "/auxv", std::ios::binary);
    std::array<unsigned long, 2> pair{};
    while (vector.read(reinterpret_cast<char*>(pair.data()), sizeof pair))
        if (pair[0] == AT_ENTRY)
            return pair[1];
    throw std::runtime_error("a traced program does not tell where it begins");
}

Call CallOf(const Registers& registers)
{
    return {
        KindOf(static_cast<long>(registers.orig_rax)),
        {registers.rdi, registers.rsi, registers.rdx, registers.r10, registers.r8, registers.r9}};
}

std::string TextAt(pid_t id, std::uint64_t address)
{
    std::array<char, 256> text{};
    iovec here{text.data(), text.size() - 1};
    // An address of the other process. NOLINTNEXTLINE(performance-no-int-to-ptr)
    iovec there{reinterpret_cast<void*>(address), text.size() - 1};
    if (::process_vm_readv(id, &here, 1, &there, 1, 0) < 0) {
        // What begins close to the end of its page cannot be had in one piece.
        there.iov_len = 4096 - address % 4096;
        ::process_vm_readv(id, &here, 1, &there, 1, 0);
    }
    return text.data();
}

std::string PathOf(pid_t id, const Call& call)
{
    return call.kind->path < 0 ? "" : TextAt(id, call.arguments[call.kind->path]);
}

std::string OpenPath(pid_t id, std::uint64_t fd)
{
    const std::string link = "/proc/" + std::to_string(id) + "/fd/" + std::to_string(fd);
    std::array<char, 256> path{};
    const ssize_t size = ::readlink(link.c_str(), path.data(), path.size());
    return std::string(path.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
}

CallText TextOf(pid_t id, const Call& call)
{
    std::string path = PathOf(id, call);
    if (path.empty() && call.kind->role != Role::start)
        path = OpenPath(id, call.arguments[call.kind->role == Role::map ? 4 : 0]);
    return std::string(call.kind->name) + " " + path;
}

bool IsStandardStream(const Call& call)
{
    const Role role = call.kind->role;
    return (role == Role::read || role == Role::write) && call.arguments[0] <= 2;
}

/// A name for an open file by way of /proc.
bool ByProc(pid_t id, const Call& call)
{
    return call.kind->number == SYS_linkat && TextAt(id, call.arguments[1]).starts_with("/proc/");
}

/// Whether an open file is handed on to programs that are started.
bool IsHandedOn(pid_t id, std::uint64_t fd)
{
    std::ifstream file("/proc/" + std::to_string(id) + "/fdinfo/" + std::to_string(fd));
    for (std::string word; file >> word;)
        if (int flags = 0; word == "flags:" && file >> std::oct >> flags)
            return (flags & O_CLOEXEC) == 0;
    return false;
}

/// What the sanitizers do for themselves: they find out by a pipe whether memory can be read, and
/// end a program that has none. The program hands no pipe of its own on.
bool IsOfSanitizers(pid_t id, const Call& call)
{
    const long number = call.kind->number;
    if (number == SYS_pipe2)
        return (call.arguments[1] & O_CLOEXEC) == 0;
    const bool may_be = number == SYS_write || number == SYS_close;
    const std::uint64_t fd = call.arguments[0];
    return may_be && fd > 2 && OpenPath(id, fd).starts_with("pipe:") && IsHandedOn(id, fd);
}

/// Of fcntl, locks alone count; what else it does cannot fail.
bool IsOther(pid_t id, const Call& call)
{
    if (IsOfSanitizers(id, call))
        return true;
    if (call.kind->number != SYS_fcntl)
        return false;
    const auto command = static_cast<int>(call.arguments[1]);
    constexpr std::array kLocks = {F_SETLK, F_SETLKW, F_OFD_SETLK, F_OFD_SETLKW};
    return std::find(kLocks.begin(), kLocks.end(), command) == kLocks.end();
}

class Tracer {
  public:
    Tracer(const Launch& launch, const Plan& plan) : plan_(plan), child_(launch) {}

    Outcome Run()
    {
        const Ticking ticking;
        start_ = SecondsNow();
        Begin();
        while (!outcome_ended_)
            Step();
        EndOthers();
        const bool killed = outcome_.ending.killed;
        outcome_.ending = std::move(child_.End());
        outcome_.ending.killed = killed;
        outcome_.ending.hung = outcome_.ending.hung || out_of_time_;
        return std::move(outcome_);
    }

  private:
    void Begin();
    void Step();
    /// The next child that has stopped or ended; -1 when there is none any more.
    pid_t Wait(int& status);
    void OnEnd(pid_t id, int status, const struct rusage& usage);
    void OnStop(pid_t id, int status);
    void OnNewProcess(pid_t parent);
    void OnExec(pid_t id);
    bool OnBreakpoint(pid_t id);
    void OnCall(pid_t id);
    void OnCallDone(pid_t id);
    bool IsForbidden(pid_t id, const Call& call, int& error) const;
    void Do(pid_t id, Registers& registers, const Call& call);
    bool FailsOnward(const Call& call) const;
    void Continue(pid_t id, int signal = 0) { Ptrace(PTRACE_CONT, id, 0, SignalOf(signal)); }
    void ContinueToEndOfCall(pid_t id) { Ptrace(PTRACE_SYSCALL, id, 0, 0); }
    void KillAll();
    void EndOthers();
    static unsigned long SignalOf(int signal) { return static_cast<unsigned long>(signal); }

    const Plan& plan_;
    Child child_;
    Outcome outcome_;
    bool outcome_ended_ = false;
    bool out_of_time_ = false;
    double start_ = 0;
    std::set<pid_t> traced_;
    std::set<pid_t> to_come_; // processes that were made and have not stopped yet
    std::set<pid_t> others_;  // programs that the program has started
    unsigned long entry_ = 0;
    unsigned long entry_word_ = 0;
    bool counting_ = false;
    Registers before_call_{}; // of the call whose end is waited for
    struct rusage usage_ {};
};

void SkipCall(pid_t id, Registers registers, int error)
{
    registers.orig_rax = ~0ULL;
    registers.rax = static_cast<unsigned long long>(-static_cast<long long>(error));
    SetRegisters(id, registers);
}

void Tracer::Begin()
{
    child_.Start([] {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        StopAtCalls();
    });
    const pid_t id = child_.Id();
    int status = 0;
    while (::waitpid(id, &status, __WALL) < 0 && errno == EINTR) {
    }
    if (!WIFSTOPPED(status) || Ptrace(PTRACE_SETOPTIONS, id, 0, kOptions) != 0)
        Fail("cannot trace");
    traced_.insert(id);
    Continue(id);
}

pid_t Tracer::Wait(int& status)
{
    for (;;) {
        const pid_t id = ::wait4(-1, &status, __WALL, &usage_);
        if (id > 0)
            return id;
        if (errno == ECHILD)
            return -1;
        if (errno != EINTR)
            Fail("cannot wait");
        if (SecondsNow() - start_ > kLongestWait && !out_of_time_) {
            out_of_time_ = true;
            KillAll();
        }
    }
}

void Tracer::Step()
{
    int status = 0;
    const pid_t id = Wait(status);
    if (id < 0)
        Fail("the traced program is gone");
    if (WIFSTOPPED(status))
        OnStop(id, status);
    else
        OnEnd(id, status, usage_);
}

void Tracer::OnEnd(pid_t id, int status, const struct rusage& usage)
{
    const bool ours = traced_.erase(id) > 0;
    if (id == child_.Id()) {
        child_.NoteEnd(status, usage);
        outcome_ended_ = true;
    } else if (!ours) {
        KeepEnd(id, status, usage);
    }
}

void Tracer::OnStop(pid_t id, int status)
{
    const int signal = WSTOPSIG(status);
    const int event = status >> 16;
    const bool is_new = traced_.insert(id).second || to_come_.erase(id) > 0;
    if (event == PTRACE_EVENT_SECCOMP)
        OnCall(id);
    else if (event == PTRACE_EVENT_EXEC)
        OnExec(id);
    else if (event == PTRACE_EVENT_FORK || event == PTRACE_EVENT_VFORK ||
             event == PTRACE_EVENT_CLONE)
        OnNewProcess(id);
    else if (signal == kCallDone)
        OnCallDone(id);
    else if (event != 0 || (is_new && signal == SIGSTOP))
        Continue(id);
    else if (signal != SIGTRAP || !OnBreakpoint(id))
        Continue(id, signal);
}

/// The new one is known from here on, so that it ends with the others.
void Tracer::OnNewProcess(pid_t parent)
{
    unsigned long id = 0;
    const bool told = ::ptrace(PTRACE_GETEVENTMSG, parent, nullptr, &id) == 0 && id != 0;
    if (told && traced_.insert(static_cast<pid_t>(id)).second)
        to_come_.insert(static_cast<pid_t>(id));
    Continue(parent);
}

void Tracer::OnExec(pid_t id)
{
    if (id != child_.Id()) {
        others_.insert(id);
    } else if (entry_ == 0) {
        // Calls count from the program's first instruction on: the loader is not under attack.
        entry_ = FirstInstruction(id);
        entry_word_ = static_cast<unsigned long>(Ptrace(PTRACE_PEEKTEXT, id, entry_, 0));
        Ptrace(PTRACE_POKETEXT, id, entry_, (entry_word_ & ~0xFFUL) | kBreakpoint);
    }
    Continue(id);
}

bool Tracer::OnBreakpoint(pid_t id)
{
    Registers registers = RegistersOf(id);
    if (counting_ || registers.rip != entry_ + 1)
        return false;
    Ptrace(PTRACE_POKETEXT, id, entry_, entry_word_);
    registers.rip = entry_;
    SetRegisters(id, registers);
    counting_ = true;
    Continue(id);
    return true;
}

bool Tracer::IsForbidden(pid_t id, const Call& call, int& error) const
{
    const Surroundings& here = plan_.surroundings;
    const long number = call.kind->number;
    constexpr std::uint64_t kUnnamed = O_TMPFILE & ~O_DIRECTORY;
    const bool unnamed = (number == SYS_openat && (call.arguments[2] & kUnnamed) != 0) ||
                         (number == SYS_open && (call.arguments[1] & kUnnamed) != 0);
    const bool replacing = number == SYS_renameat2 && call.arguments[4] != 0;
    const bool empty_path = number == SYS_linkat && (call.arguments[4] & AT_EMPTY_PATH) != 0;
    const bool links = number == SYS_link || number == SYS_linkat;
    error = 0;
    if (here.no_unnamed && unnamed)
        error = EOPNOTSUPP;
    else if (here.no_replacing && replacing)
        error = EINVAL;
    else if (here.no_links && links)
        error = EPERM;
    else if ((here.no_empty_path && empty_path) || (here.no_proc && ByProc(id, call)))
        error = ENOENT;
    return error != 0;
}

void Tracer::OnCall(pid_t id)
{
    Registers registers = RegistersOf(id);
    const Call call = CallOf(registers);
    int error = 0;
    if (!counting_ || others_.contains(id) || call.kind == nullptr || IsOther(id, call)) {
        Continue(id);
    } else if (IsForbidden(id, call, error)) {
        SkipCall(id, registers, error);
        Continue(id);
    } else {
        ++outcome_.calls;
        if (plan_.record)
            outcome_.noted.push_back({call, TextOf(id, call)});
        Do(id, registers, call);
    }
}

bool Tracer::FailsOnward(const Call& call) const
{
    const Strike& strike = plan_.strike;
    if (strike.deed != Deed::fail_onward || outcome_.calls < strike.at || IsStandardStream(call))
        return false;
    const Role role = call.kind->role;
    // What only takes away or closes works on a full disk.
    const bool takes_room = Writes(call) && role != Role::unlink;
    const bool needs_room = strike.error == ENOSPC || strike.error == EDQUOT;
    if (needs_room)
        return takes_room;
    if (strike.error == EROFS)
        return Writes(call);
    return role != Role::close && role != Role::start && role != Role::where;
}

/// Whether the call is made, and its end is waited for.
bool IsDoneFirst(Deed deed)
{
    return deed == Deed::shorten || deed == Deed::fail_late || deed == Deed::kill_after;
}

void Tracer::Do(pid_t id, Registers& registers, const Call& call)
{
    const Strike& strike = plan_.strike;
    const bool here = strike.at == outcome_.calls;
    if (here && strike.deed != Deed::none)
        outcome_.struck = Noted{call, TextOf(id, call)};
    if (FailsOnward(call) || (here && strike.deed == Deed::fail)) {
        SkipCall(id, registers, strike.error);
    } else if (here && strike.deed == Deed::kill_before) {
        outcome_.ending.killed = true;
        KillAll();
        return;
    } else if (here && strike.deed == Deed::pause) {
        plan_.at_pause();
        start_ = SecondsNow();
    } else if (here && IsDoneFirst(strike.deed)) {
        before_call_ = registers;
        if (strike.deed == Deed::shorten) {
            registers.rdx = (registers.rdx + 1) / 2;
            SetRegisters(id, registers);
        }
        ContinueToEndOfCall(id);
        return;
    }
    Continue(id);
}

void Tracer::OnCallDone(pid_t id)
{
    const Strike& strike = plan_.strike;
    if (strike.deed == Deed::kill_after) {
        outcome_.ending.killed = true;
        KillAll();
        return;
    }
    Registers registers = RegistersOf(id);
    if (strike.deed == Deed::shorten) // the program never sees that its argument was another
        registers.rdx = before_call_.rdx;
    else
        registers.rax = static_cast<unsigned long long>(-static_cast<long long>(strike.error));
    SetRegisters(id, registers);
    Continue(id);
}

void Tracer::KillAll()
{
    for (const pid_t id : traced_)
        ::kill(id, SIGKILL);
}

/// Programs that were started outlive the one that started them, but not the try.
void Tracer::EndOthers()
{
    KillAll();
    while (!traced_.empty()) {
        int status = 0;
        const pid_t id = Wait(status);
        if (id < 0)
            return; // an end may be met before the news of the beginning
        if (WIFSTOPPED(status))
            ::kill(id, SIGKILL);
        else
            OnEnd(id, status, usage_);
    }
}

} // namespace

Outcome RunTraced(const Launch& launch, const Plan& plan)
{
    return Tracer(launch, plan).Run();
}

std::string WhyNotTraced()
{
    const Launch launch{"/bin/true", {}, {}, {}, {}, 0, false, {}, {}};
    try {
        const Outcome outcome = RunTraced(launch, {});
        return outcome.ending.exit_code == 0 ? "" : "a traced program does not end well";
    } catch (const std::exception& error) {
        return error.what();
    }
}

} // namespace kiv::faults
