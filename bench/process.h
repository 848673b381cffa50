// Running a program and what the run took. POSIX only.
#pragma once

#include <string>
#include <vector>

namespace kiv {

struct Usage {
    double wall_ms = 0;
    double cpu_ms = 0; // user and system
    /// The system counts the caller's own peak in, since the child is the caller until it becomes
    /// the program: keep the measuring program small.
    long peak_rss_kib = 0;
    int exit_code = 0;
};

/// Runs `words[0]` with the arguments that follow and waits for it. Its standard output is dropped.
/// Throws std::system_error when it cannot be started; an end by a signal gives 128 and its number
/// as exit code.
Usage RunProgram(const std::vector<std::string>& words);

} // namespace kiv
