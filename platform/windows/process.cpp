#include "platform/process.h"

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

void KeepApart(std::thread&)
{
    // Threads that share a processor from the start have not been met on Windows.
}

} // namespace kiv
