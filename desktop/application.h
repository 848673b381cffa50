// The program `kiv`.
#pragma once

namespace kiv {

/// Runs the program; returns its exit code.
int RunDesktop(int count, char** arguments);

} // namespace kiv
