// What a program on the command line gets from the system: its terminal, its arguments, its
// variables.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

/// While it lives, what the program prints in UTF-8 is shown as it is, and a terminal knows the
/// codes that a line is drawn over with. Afterwards the terminal is as it was.
class Console {
  public:
    Console() = default;
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    virtual ~Console() = default;

    /// Whether standard error is a terminal on which a line can be drawn over.
    virtual bool HasLine() const = 0;
    /// Whether standard output is a terminal.
    virtual bool OutIsTerminal() const = 0;
    /// Whether standard output may still be read by somebody: false when it is a pipe whose other
    /// end is closed. On Windows only writing tells, so it is always true there.
    virtual bool OutIsRead() const = 0;
};

std::unique_ptr<Console> OpenConsole();

/// The arguments of the process in UTF-8, without the program's name, and makes its streams those
/// of bytes. The parameters are those of main.
std::vector<std::string> ProgramArguments(int count, char** arguments);

/// A variable of the process's environment, in UTF-8; nothing when it is not set.
std::optional<std::string> ProcessVariable(const char* name);

} // namespace kiv
