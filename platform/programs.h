// Starting programs. No shell runs a command line: it is cut into program and arguments and started
// directly.
#pragma once

#include "platform/drives.h"

#include <string>
#include <vector>

namespace kiv {

class Programs {
  public:
    Programs() = default;
    Programs(const Programs&) = delete;
    Programs& operator=(const Programs&) = delete;
    virtual ~Programs() = default;

    /// Starts a program from a command line in the system's current directory and does not wait for
    /// it. Throws RunError of kind `file` when there is no such program.
    virtual void Start(const std::string& command_line, bool minimised = false) = 0;
};

/// Keeps a list of the command lines and hands them on to `next`, when there is one.
class ProgramList : public Programs {
  public:
    explicit ProgramList(Programs* next = nullptr) : next_(next) {}
    void Start(const std::string& command_line, bool minimised = false) override;
    const std::vector<std::string>& Launched() const { return launched_; }

  private:
    Programs* next_;
    std::vector<std::string> launched_;
};

/// Starts programs for real.
class SystemPrograms : public Programs {
  public:
    explicit SystemPrograms(Drives& drives) : drives_(drives) {}
    void Start(const std::string& command_line, bool minimised = false) override;

  private:
    Drives& drives_;
};

} // namespace kiv
