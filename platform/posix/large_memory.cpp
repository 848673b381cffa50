#include "platform/posix/large_memory.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace kiv {

namespace {

/// The whole pages in a buffer.
[[maybe_unused]] std::span<char> PagesIn(std::span<char> buffer)
{
    static const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t skipped = page - reinterpret_cast<std::uintptr_t>(buffer.data()) % page;
    return buffer.subspan(skipped, (buffer.size() - skipped) / page * page);
}

} // namespace

void Populate([[maybe_unused]] std::span<char> buffer)
{
#ifdef MADV_POPULATE_WRITE
    constexpr std::size_t kLarge = std::size_t{256} * 1024;
    if (buffer.size() < kLarge)
        return;
    const std::span<char> pages = PagesIn(buffer);
    ::madvise(pages.data(), pages.size(), MADV_POPULATE_WRITE);
#endif
}

void GrowHeapFor([[maybe_unused]] std::size_t content)
{
#if defined(__GLIBC__) && defined(MADV_HUGEPAGE)
    constexpr std::size_t kLarge = std::size_t{1} << 20U;
    constexpr std::size_t kTimes = 8;
    constexpr std::size_t kLargePage = std::size_t{2} << 20U; // of most machines
    constexpr std::size_t kMost = std::size_t{24} << 20U;
    constexpr int kApart = 32 << 20; // the most that can be set: what is larger is no part of it
    static std::atomic<bool> is_done = false;
    if (content < kLarge || is_done.exchange(true))
        return;
    ::mallopt(M_MMAP_THRESHOLD, kApart);
    ::mallopt(M_TRIM_THRESHOLD, kApart);
    const std::size_t size = kLargePage + std::min(kTimes * content, kMost);
    char* const heap = static_cast<char*>(std::malloc(size));
    if (heap == nullptr)
        return;
    const std::span<char> pages = PagesIn({heap, size});
    ::madvise(pages.data(), pages.size(), MADV_HUGEPAGE);
    // What lies before the first large page would be had in small ones: it is kept, and never used.
    const std::size_t before = kLargePage - reinterpret_cast<std::uintptr_t>(heap) % kLargePage;
    static const std::unique_ptr<void, decltype(&std::free)> kept(std::realloc(heap, before),
                                                                  &std::free);
#endif
}

} // namespace kiv
