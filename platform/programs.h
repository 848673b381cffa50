// Starting programs. No shell runs a command line: it is cut into the program and its arguments,
// and the program is started directly.
#pragma once

#include "platform/drives.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What is started: a command line, in which the name of a file may stand.
struct Launch {
    std::string command;      // the program and what stands before the file's name, a blank at last
    std::string file = {};    // drive path, blanks and all, without quotes; empty: none
    std::string options = {}; // what stands behind the file's name, beginning with a blank
    bool minimised = false;
    /// The line to be shown, 1-based, by an editor: then the marks of file_marks.h are filled in,
    /// and the file stands at the end only when `command` has no mark for it. 0: there are none.
    int line = 0;

    /// Whether `command` has marks that are to be filled in.
    bool HasMarks() const;
    /// Whether the file stands in a word of `command`.
    bool HasFileMark() const;
    /// The whole line, as reports show it.
    std::string Text() const;
};

/// Looks in while a program is waited for, again and again. What it throws ends the program and
/// goes on to who waits.
using WhileRunning = std::function<void()>;

class Programs {
  public:
    Programs() = default;
    Programs(const Programs&) = delete;
    Programs& operator=(const Programs&) = delete;
    virtual ~Programs() = default;

    /// Starts a program in this program's current directory and does not wait for it. The program
    /// gets the words of `command`, the native path of `file` as one argument, whatever is in it,
    /// and the words of `options`. A mark is filled in when the words are cut. Throws RunError of
    /// kind `file` when there is no such program.
    virtual void Start(const Launch& launch) = 0;
    /// Starts a program so and waits for its end. It reads `input` and nothing else; what it says
    /// goes to this program's standard error. Returns its exit code, which is 0 when all went well;
    /// of one that a signal ended it is 128 and the signal's number. Throws as Start does.
    virtual int Run(const Launch& launch, std::string_view input,
                    const WhileRunning& while_running) = 0;
    /// Whether Start would find the program of a command line.
    virtual bool Finds(std::string_view command) = 0;
};

/// What shows an address, "http://127.0.0.1:8098/", in the user's browser.
Launch BrowserLaunch(const std::string& address);

/// Keeps a list of the command lines and hands them on to `next`, when there is one. Without it no
/// program is found.
class ProgramList : public Programs {
  public:
    explicit ProgramList(Programs* next = nullptr) : next_(next) {}
    void Start(const Launch& launch) override;
    /// Without `next` the program is taken to have gone well.
    int Run(const Launch& launch, std::string_view input,
            const WhileRunning& while_running) override;
    bool Finds(std::string_view command) override;
    const std::vector<std::string>& Launched() const { return launched_; }

  private:
    Programs* next_;
    std::vector<std::string> launched_;
};

/// Starts programs for real.
class SystemPrograms : public Programs {
  public:
    explicit SystemPrograms(Drives& drives) : drives_(drives) {}
    void Start(const Launch& launch) override;
    int Run(const Launch& launch, std::string_view input,
            const WhileRunning& while_running) override;
    bool Finds(std::string_view command) override;

  private:
    Drives& drives_;
};

} // namespace kiv
