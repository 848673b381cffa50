// What `kiv-cli` shows while a command runs.
#pragma once

#include "cli/message_printer.h"
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

/// Collects messages and keeps the last status text. In plain output every warning goes to standard
/// error when it comes, shown in a box elsewhere or not.
class CliReporter : public Reporter {
  public:
    /// `printer` is null when nothing is printed.
    CliReporter(MessagePrinter* printer, TerminalLine& terminal_line)
        : printer_(printer), terminal_line_(terminal_line)
    {
    }

    const std::vector<std::string>& Messages() const { return messages_; }
    const std::string& FinalStatus() const { return status_; }
    /// The last status text since BeginPart; "" when there was none.
    const std::string& PartStatus() const { return part_status_; }
    void BeginPart() { part_status_.clear(); }

    void Status(std::string_view text) override { status_ = part_status_ = text; }

  protected:
    void ShowStep(int done, int all) override { terminal_line_.Show(done, all); }
    void Show(std::string_view text) override { messages_.emplace_back(text); }
    void Take(const Warning& warning) override;

  private:
    MessagePrinter* printer_;
    TerminalLine& terminal_line_;
    std::vector<std::string> messages_;
    std::string status_;
    std::string part_status_;
};

} // namespace kiv
