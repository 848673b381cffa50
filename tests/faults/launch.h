// Starting the program under attack, and what became of it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <sys/resource.h>
#include <sys/types.h>
#include <vector>

namespace kiv::faults {

struct Launch {
    std::string program;
    std::vector<std::string> arguments;
    std::string directory; // the process's own
    std::string input;
    std::vector<std::string> variables;  // NAME=VALUE
    unsigned closed_streams = 0;         // bit n: standard stream n is closed
    bool broken_pipe = false;            // nobody reads standard output
    std::optional<rlim_t> most_bytes;    // no file may become longer
    std::optional<int> memory_control{}; // an open file that the program is to keep
};

struct Ending {
    int exit_code = -1; // -1: it did not end by itself
    int signal = 0;
    bool killed = false;     // by the attack
    bool hung = false;       // it took more than kMostWork, or did not end
    double seconds_busy = 0; // of the processor's time
    std::string out;
    std::string err;
};

/// More processor time than this for a run over a few small files counts as hanging.
constexpr double kMostWork = 1.0;
/// A run that still waits for something after this time hangs as well; the machine may be busy.
constexpr double kLongestWait = 10.0;

/// A child process with its standard streams in memory.
class Child {
  public:
    explicit Child(const Launch& launch);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    /// `before` runs in the child, right before the program takes its place.
    void Start(const std::function<void()>& before = {});
    pid_t Id() const { return id_; }
    void Kill();
    /// Whether it has ended; if so, its end is noted.
    bool HasEnded();
    /// Waits for its end, and kills it when it hangs.
    void Wait();
    /// Whether it sleeps: waits for another, as for a lock.
    bool Sleeps() const;
    /// Notes how it ended, for one who waited by other means.
    void NoteEnd(int status, const struct rusage& usage);
    Ending& End();

  private:
    [[noreturn]] void Become(const std::function<void()>& before);
    void TakeStreams() const;

    const Launch& launch_;
    std::vector<char*> arguments_;
    std::vector<char*> variables_;
    int in_ = -1;
    int out_ = -1;
    int err_ = -1;
    pid_t id_ = -1;
    bool ended_ = false;
    Ending ending_;
};

/// Starts, waits, and tells.
Ending RunOnce(const Launch& launch);

/// Wakes whoever waits in a system call of this process again and again, so that a time limit can
/// be looked at.
class Ticking {
  public:
    Ticking();
    Ticking(const Ticking&) = delete;
    Ticking& operator=(const Ticking&) = delete;
    ~Ticking();
};

/// Seconds of a clock that only goes forward.
double SecondsNow();

/// The end of a child that was met while waiting for another.
void KeepEnd(pid_t id, int status, const struct rusage& usage);

} // namespace kiv::faults
