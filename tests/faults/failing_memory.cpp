// kiv-cli with a memory that fails when it is told to: every request, of the C library and the C++
// library, passes through here (the linker's --wrap). Requests count from main on.
#include "faults/memory_control.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <sys/mman.h>

// The names are the linker's.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* old, std::size_t size);
int __real_main(int count, char** arguments);
}

namespace {

kiv::faults::MemoryControl* control = nullptr;

bool IsToFail()
{
    if (control == nullptr)
        return false;
    const std::uint64_t number = ++control->requests;
    const bool onward = control->onward != 0 && control->fail_at != 0;
    const bool fails = number == control->fail_at || (onward && number > control->fail_at);
    if (fails)
        errno = ENOMEM; // who asked hands that on
    return fails;
}

void TakeControl()
{
    const char* const file = std::getenv(kiv::faults::kMemoryControl);
    if (file == nullptr)
        return;
    void* const page =
        ::mmap(nullptr, sizeof *control, PROT_READ | PROT_WRITE, MAP_SHARED, std::atoi(file), 0);
    if (page != MAP_FAILED)
        control = static_cast<kiv::faults::MemoryControl*>(page);
}

} // namespace

extern "C" {

void* __wrap_malloc(std::size_t size)
{
    return IsToFail() ? nullptr : __real_malloc(size);
}

void* __wrap_calloc(std::size_t count, std::size_t size)
{
    return IsToFail() ? nullptr : __real_calloc(count, size);
}

void* __wrap_realloc(void* old, std::size_t size)
{
    return IsToFail() ? nullptr : __real_realloc(old, size);
}

int __wrap_main(int count, char** arguments)
{
    TakeControl();
    const int code = __real_main(count, arguments);
    control = nullptr;
    return code;
}
}
// NOLINTEND(bugprone-reserved-identifier)
