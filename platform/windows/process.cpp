#include "platform/process.h"

#include <limits>

namespace kiv {

void PrepareProcess()
{
    // Windows ends no process for a stream or a file, and gives no file a stream's number.
}

std::uint64_t WaitsOfThread()
{
    thread_local std::uint64_t calls = 0;
    return ++calls;
}

std::size_t MostOpenFiles()
{
    return std::numeric_limits<std::size_t>::max(); // as many as there is memory for
}

void KeepApart(std::thread&)
{
    // Threads that share a processor from the start have not been met on Windows.
}

} // namespace kiv
