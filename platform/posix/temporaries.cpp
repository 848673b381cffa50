#include "platform/posix/temporaries.h"

#include "platform/posix/folders.h"
#include "platform/posix/paths.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <unistd.h>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kBegin = ".kiv-";
constexpr std::string_view kEnd = ".tmp";

/// The process that a temporary name tells of; 0 when it is no such name.
pid_t ProcessOf(std::string_view name)
{
    if (!name.starts_with(kBegin) || !name.ends_with(kEnd))
        return 0;
    name.remove_prefix(kBegin.size());
    name.remove_suffix(kEnd.size());
    pid_t process = 0;
    unsigned number = 0;
    const char* const end = name.data() + name.size();
    const auto [dash, fault] = std::from_chars(name.data(), end, process);
    if (fault != std::errc() || process <= 0 || dash == end || *dash != '-')
        return 0;
    const auto [rest, other_fault] = std::from_chars(dash + 1, end, number);
    return other_fault == std::errc() && rest == end ? process : 0;
}

bool IsGone(pid_t process)
{
    return ::kill(process, 0) != 0 && errno == ESRCH;
}

} // namespace

std::string TemporaryName(const std::string& native)
{
    static std::atomic<unsigned> number{0};
    std::string name(kBegin);
    name.append(std::to_string(::getpid())).append("-").append(std::to_string(++number));
    return JoinNative(NativeFolderOf(native), name.append(kEnd));
}

bool IsTemporaryName(std::string_view name)
{
    return ProcessOf(name) != 0;
}

void DeleteLeftTemporaries(const std::string& folder)
{
    std::vector<std::string> left;
    // What cannot be listed stays for another run.
    ForEachName(folder, [&](std::string_view name, unsigned char) {
        if (const pid_t process = ProcessOf(name); process != 0 && IsGone(process))
            left.push_back(JoinNative(folder, name));
    });
    for (const std::string& native : left)
        ::unlink(native.c_str());
}

} // namespace kiv
