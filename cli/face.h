// What `kiv-cli` shows while a command runs.
#pragma once

#include "platform/reporter.h"

#include <chrono>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A line on the terminal that tells how far a long command is.
class TerminalLine {
  public:
    using Instant = std::chrono::steady_clock::time_point;

    /// `terminal` is null when there is none; `now` tells the time.
    explicit TerminalLine(std::ostream* terminal,
                          Instant (*now)() = std::chrono::steady_clock::now);
    void Show(int done, int all);
    void Clear();

  private:
    std::ostream* terminal_;
    Instant (*now_)();
    Instant next_;
    bool is_shown_ = false;
};

/// Collects messages and keeps the last status text; in plain output each message goes to standard
/// error at once.
class CliReporter : public Reporter {
  public:
    CliReporter(std::ostream* err, TerminalLine& terminal_line)
        : err_(err), terminal_line_(terminal_line)
    {
    }

    const std::vector<std::string>& Messages() const { return messages_; }
    const std::string& FinalStatus() const { return status_; }

    void Status(std::string_view text) override { status_ = text; }
    void Step(int done, int all) override { terminal_line_.Show(done, all); }

  protected:
    void Show(std::string_view text) override;

  private:
    std::ostream* err_;
    TerminalLine& terminal_line_;
    std::vector<std::string> messages_;
    std::string status_;
};

} // namespace kiv
