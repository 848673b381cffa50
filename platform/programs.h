// Starting programs. No shell runs a command line: it is cut into the program and its arguments,
// and the program is started directly.
#pragma once

#include "platform/drives.h"

#include <string>
#include <vector>

namespace kiv {

/// What is started: a command line, in which the name of a file may stand.
struct Launch {
    std::string command;      // the program and what stands before the file's name, a blank at last
    std::string file = {};    // drive path, blanks and all, without quotes; empty: none
    std::string options = {}; // what stands behind the file's name, beginning with a blank
    bool minimised = false;

    /// The whole line, as reports show it.
    std::string Text() const { return command + file + options; }
};

class Programs {
  public:
    Programs() = default;
    Programs(const Programs&) = delete;
    Programs& operator=(const Programs&) = delete;
    virtual ~Programs() = default;

    /// Starts a program in this program's current directory and does not wait for it. The program
    /// gets the words of `command`, the native path of `file` as one argument, whatever is in it,
    /// and the words of `options`. Throws RunError of kind `file` when there is no such program.
    virtual void Start(const Launch& launch) = 0;
};

/// Keeps a list of the command lines and hands them on to `next`, when there is one.
class ProgramList : public Programs {
  public:
    explicit ProgramList(Programs* next = nullptr) : next_(next) {}
    void Start(const Launch& launch) override;
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

  private:
    Drives& drives_;
};

} // namespace kiv
