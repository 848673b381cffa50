// Starting programs. No shell runs a command line: it is cut into program and arguments and started
// directly.
#pragma once

#include "platform/files.h"

#include <optional>
#include <string>
#include <string_view>
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
    explicit SystemPrograms(Files& files) : files_(files) {}
    void Start(const std::string& command_line, bool minimised = false) override;

  private:
    Files& files_;
};

/// A command line cut into words by the Windows rules: blanks and tabs part, double quotes hold
/// together, 2n backslashes before a quote are n, 2n+1 are n and the quote itself. The first word
/// ends at its closing quote or first blank and knows no backslash rule.
std::vector<std::string> CutCommandLine(std::string_view command_line);

/// The ways to read an unquoted program path with blanks, in the order tried: "C:\a b\c.exe -m" may
/// be "C:\a", "C:\a b\c.exe" or the whole. Each with the position (0-based) where its arguments
/// begin.
struct ProgramReading {
    std::string program;
    std::size_t arguments = 0;
};
std::vector<ProgramReading> ProgramReadings(std::string_view command_line);

/// The folder X, blanks and all, of "explorer X"; none when the line starts another program.
std::optional<std::string_view> ExplorerFolder(std::string_view command_line);

/// Whether a word of a command line is an absolute drive path.
bool IsDrivePath(std::string_view word);

} // namespace kiv
