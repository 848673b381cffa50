// `kiv-cli watch` and `preview` as processes of their own.
#pragma once

#include "tests/support/folders.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <regex>
#include <string>
#include <thread>
#include <vector>

namespace kiv::test {

/// Waits until something is so, with a pause after each look; false when that takes longer than
/// `longest`.
inline bool Becomes(const std::function<bool()>& is_so,
                    std::chrono::milliseconds pause = std::chrono::milliseconds(10),
                    std::chrono::milliseconds longest = std::chrono::seconds(20))
{
    const auto end = std::chrono::steady_clock::now() + longest;
    while (!is_so()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(pause);
    }
    return true;
}

/// Text with a match of an ECMAScript pattern; GoogleTest's own have no classes of characters on
/// Windows.
MATCHER_P(HasPattern, pattern, "has a match of " + testing::PrintToString(pattern))
{
    return std::regex_search(arg, std::regex(pattern));
}

/// How a process comes to its end.
enum class Ending {
    own,         // by itself
    interrupted, // Ctrl+C
    terminated,  // asked to go; on Windows Ctrl+Break, as there is nothing else
    hung_up,     // its terminal is closed; not on Windows
    killed,
};

/// A run of kiv-cli on a drive C:, whose output goes to the files "out" and "err" of that drive.
class CliProcess {
  public:
    /// `own_out`: a descriptor that is standard output instead of the file; not on Windows.
    CliProcess(const DriveFolder& drive, const std::vector<std::string>& arguments,
               int own_out = -1);
    CliProcess(const CliProcess&) = delete;
    CliProcess& operator=(const CliProcess&) = delete;
    ~CliProcess(); // kills it

    /// What End returns where the system has no way to ask: Wine's consoles pass no Ctrl+Break on.
    /// The process is killed then.
    static constexpr int kCannotAsk = -1;

    /// Asks for the end and waits for it: the exit code, or 1000 and the signal that ended it.
    int End(Ending ending);

    std::string Out() const { return drive_.Content("out"); }
    std::string Err() const { return drive_.Content("err"); }
    std::size_t Lines() const
    {
        const std::string out = Out();
        return static_cast<std::size_t>(std::count(out.begin(), out.end(), '\n'));
    }
    /// Waits until standard output has so many lines.
    bool HasLines(std::size_t count) const
    {
        return Becomes([&] { return Lines() >= count; });
    }

  private:
    class Child;

    const DriveFolder& drive_;
    std::unique_ptr<Child> child_; // null: it has ended
};

/// The exit code of a process that was asked to end.
inline auto IsAsked(int code)
{
    return testing::AnyOf(code, CliProcess::kCannotAsk);
}

} // namespace kiv::test
