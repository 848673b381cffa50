// Command lines as text, by the rules of Windows.
#pragma once

#include "platform/programs.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The ways to read an unquoted program path with blanks, in the order tried: "C:\a b\c.exe -m" may
/// be "C:\a", "C:\a b\c.exe" or the whole. Each with the position of its arguments (0-based).
struct ProgramReading {
    std::string program;
    std::size_t arguments = 0;
};
std::vector<ProgramReading> ProgramReadings(std::string_view command_line);

/// The words of a command line behind its program, by the Windows rules: blanks and tabs separate
/// them, double quotes hold together, 2n backslashes before a quote are n, 2n+1 are n and the quote
/// itself.
std::vector<std::string> CutArguments(std::string_view arguments);

/// The folder that the file manager is to show: X, blanks and all, of "explorer X", or the file of
/// the launch. None when another program is started.
std::optional<std::string> ExplorerFolder(const Launch& launch);

/// Whether a word of a command line is an absolute drive path.
bool IsDrivePath(std::string_view word);

} // namespace kiv
