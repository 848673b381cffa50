#include "cli/no_memory.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

namespace kiv {

namespace {

// A handler has no arguments.
bool wants_json = false;
std::terminate_handler former_handler = nullptr;

[[noreturn]] void OnTerminate()
{
    try {
        if (std::current_exception())
            throw;
    } catch (const std::bad_alloc&) {
        const std::string_view text = NoMemoryText(wants_json);
        std::FILE* const stream = wants_json ? stdout : stderr;
        std::fwrite(text.data(), 1, text.size(), stream);
        std::fflush(stream);
        std::_Exit(1);
    } catch (...) {
        former_handler(); // it tells of the exception
    }
    std::abort();
}

} // namespace

std::string_view NoMemoryText(bool json)
{
    return json ? R"({"status": "", "messages": [], "error": {"kind": "memory", "text": "there is )"
                  R"(not enough memory", "where": "", "hint": ""}, "files": [], "written": [], )"
                  R"("launched": [], "warnings": []})"
                  "\n"
                : "kiv: error: there is not enough memory\n";
}

void EndWellWithoutMemory(int count, const char* const* arguments)
{
    wants_json =
        std::find(arguments, arguments + count, std::string_view("--json")) != arguments + count;
    former_handler = std::set_terminate(OnTerminate);
}

} // namespace kiv
