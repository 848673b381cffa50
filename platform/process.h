// This process as the machine gives it to the program.
#pragma once

#include <cstddef>
#include <cstdint>
#include <thread>

namespace kiv {

/// To be called first. Standard streams that are closed become streams that fail, so that no file
/// gets their number by chance; and a reader that has gone, or a file that may not grow any more,
/// becomes an error instead of the process's end.
void PrepareProcess();

/// How often this thread has stood still for something else than a processor: a disk, a server,
/// another thread. Where the system does not count that, another number at each call.
std::uint64_t WaitsOfThread();

/// How many files this process may have open at a time, those that it has among them.
std::size_t MostOpenFiles();

/// Has a new thread run on other processors than the one the caller is on, where there are some. A
/// system may else leave it where it was made for as long as a small build takes: to a virtual
/// machine a processor that sleeps can look busy.
void KeepApart(std::thread& thread);

} // namespace kiv
