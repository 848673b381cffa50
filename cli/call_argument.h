// Paths as arguments of calls that are shown, to be copied into a shell.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// A native path (not empty) as a word of a POSIX shell: in single quotes where it needs them, and
/// never an option.
std::string PosixArgument(std::string_view path);

/// The same for the shells of Windows, in double quotes.
std::string WindowsArgument(std::string_view path);

/// The same for this system's shell.
std::string CallArgument(std::string_view path);

} // namespace kiv
