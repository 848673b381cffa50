// This process as the machine gives it to the program.
#pragma once

#include <cstdint>

namespace kiv {

/// To be called first. Standard streams that are closed become streams that fail, so that no file
/// gets their number by chance; and a reader that has gone, or a file that may not grow any more,
/// becomes an error instead of the process's end.
void PrepareProcess();

/// How often this thread has stood still for something else than a processor: a disk, a server,
/// another thread. Where the system does not count that, another number at each call.
std::uint64_t WaitsOfThread();

} // namespace kiv
