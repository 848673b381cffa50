#include "platform/posix/temporaries.h"

#include "platform/posix/folders.h"
#include "platform/posix/paths.h"
#include "platform/temporary_names.h"

#include <cerrno>
#include <csignal>
#include <unistd.h>
#include <vector>

namespace kiv {

namespace {

bool IsGone(pid_t process)
{
    return ::kill(process, 0) != 0 && errno == ESRCH;
}

} // namespace

std::string TemporaryName(const std::string& native)
{
    return JoinNative(NativeFolderOf(native), NewTemporaryName(::getpid()));
}

void DeleteLeftTemporaries(const std::string& folder)
{
    std::vector<std::string> left;
    // What cannot be listed stays for another run.
    ForEachName(folder, [&](std::string_view name, unsigned char) {
        if (const pid_t process = ProcessOfTemporary(name); process != 0 && IsGone(process))
            left.push_back(JoinNative(folder, name));
    });
    for (const std::string& native : left)
        ::unlink(native.c_str());
}

} // namespace kiv
