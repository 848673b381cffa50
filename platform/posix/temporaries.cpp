#include "platform/posix/temporaries.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/folders.h"
#include "platform/posix/moving.h"
#include "platform/posix/paths.h"
#include "platform/temporary_names.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kiv {

namespace {

bool IsGone(pid_t process)
{
    return ::kill(process, 0) != 0 && errno == ESRCH;
}

/// The mark of what a file holds; none when it cannot be read.
std::optional<std::uint64_t> MarkOfFile(const std::string& native)
{
    const Descriptor file(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    struct stat state {};
    std::string bytes;
    if (!file.IsOpen() || ::fstat(file.Get(), &state) != 0 || !S_ISREG(state.st_mode) ||
        ReadBytes(file.Get(), 0, static_cast<std::size_t>(state.st_size), bytes) != 0)
        return std::nullopt;
    return MarkOf(bytes);
}

/// Deletes what was left in a swap when it is what a run that was killed can spare, else saves it.
/// Returns the name that it was given then.
std::string ClearSwap(const std::string& native, const SwapName& swap)
{
    const std::optional<std::uint64_t> mark = MarkOfFile(native);
    if (!mark)
        return {}; // stays for another run
    if (mark != swap.old_mark && mark != swap.draft_mark)
        return SaveBeside(native, JoinNative(NativeFolderOf(native), swap.name));
    ::unlink(native.c_str());
    return {};
}

} // namespace

std::string TemporaryName(const std::string& native)
{
    return JoinNative(NativeFolderOf(native), NewTemporaryName(::getpid()));
}

std::string TemporarySwapName(const std::string& native, std::string_view old_content,
                              std::string_view draft)
{
    return JoinNative(NativeFolderOf(native),
                      NewSwapName(::getpid(), NativeNameOf(native), old_content, draft));
}

std::vector<std::string> DeleteLeftTemporaries(const std::string& folder)
{
    std::vector<std::string> left;
    // What cannot be listed stays for another run.
    ForEachName(folder, [&](std::string_view name, unsigned char) {
        if (const pid_t process = ProcessOfTemporary(name); process != 0 && IsGone(process))
            left.emplace_back(name);
    });
    std::vector<std::string> saved;
    for (const std::string& name : left) {
        const std::string native = JoinNative(folder, name);
        const std::optional<SwapName> swap = ReadSwapName(name);
        if (!swap)
            ::unlink(native.c_str());
        else if (std::string place = ClearSwap(native, *swap); !place.empty())
            saved.push_back(std::move(place));
    }
    return saved;
}

} // namespace kiv
