#include "platform/native_files.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/folders.h"
#include "text/text.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace kiv {

namespace {

constexpr std::int64_t kNanosecondsInSecond = 1'000'000'000;

class PosixFile : public NativeFile {
  public:
    PosixFile(Descriptor descriptor, std::uint64_t size)
        : descriptor_(std::move(descriptor)), size_(size)
    {
    }

    std::uint64_t Size() const override { return size_; }

    std::string Read(std::uint64_t offset, std::size_t count) override
    {
        std::string bytes;
        ReadBytes(descriptor_.Get(), static_cast<off_t>(offset), count, bytes);
        return bytes;
    }

  private:
    Descriptor descriptor_;
    std::uint64_t size_;
};

// A pipe of this name must not keep anybody waiting for its other end.
constexpr int kToRead = O_RDONLY | O_CLOEXEC | O_NONBLOCK;

NativeFault FaultOf(int error)
{
    if (error == EMFILE || error == ENFILE)
        return NativeFault::too_many;
    if (error == ENXIO) // what a socket answers
        return NativeFault::no_file;
    return error == ENOENT || error == ENOTDIR ? NativeFault::absent : NativeFault::refused;
}

/// `errno` is that of the call which has opened it or not.
std::unique_ptr<NativeFile> FileOf(Descriptor descriptor, NativeFault& fault)
{
    struct stat state {};
    if (!descriptor.IsOpen() || ::fstat(descriptor.Get(), &state) != 0) {
        fault = FaultOf(errno);
        return nullptr;
    }
    if (!S_ISREG(state.st_mode)) {
        fault = NativeFault::no_file;
        return nullptr;
    }
    fault = NativeFault::none;
    return std::make_unique<PosixFile>(std::move(descriptor),
                                       static_cast<std::uint64_t>(state.st_size));
}

bool IsFolder(const std::string& path)
{
    return LookForFolder(path) == 0;
}

FileStamp StampOf(const std::string& path, mode_t kind)
{
    struct stat state {};
    if (::stat(path.c_str(), &state) != 0 || (state.st_mode & S_IFMT) != kind)
        return {};
    return {static_cast<std::uint64_t>(state.st_size),
            state.st_mtim.tv_sec * kNanosecondsInSecond + state.st_mtim.tv_nsec, true};
}

} // namespace

std::optional<std::vector<NativeEntry>> NativeEntries(const std::string& folder, NativeFault* fault)
{
    std::vector<NativeEntry> names;
    const int error = ForEachName(folder, [&](std::string_view name, unsigned char type) {
        const bool may_lead_on = type == DT_LNK || type == DT_UNKNOWN;
        const bool is_folder =
            type == DT_DIR || (may_lead_on && IsFolder(NativeJoined(folder, name)));
        names.push_back({std::string(name), is_folder});
    });
    if (fault != nullptr)
        *fault = error == 0 ? NativeFault::none : FaultOf(error);
    if (error != 0)
        return std::nullopt;
    std::ranges::sort(names, {}, &NativeEntry::name);
    return names;
}

std::string RealNativePath(const std::string& path)
{
    char* const real = ::realpath(path.c_str(), nullptr);
    std::string found = real == nullptr ? "" : real;
    std::free(real); // realpath has taken it from malloc
    return found;
}

FileStamp NativeStamp(const std::string& path)
{
    return StampOf(path, S_IFREG);
}

FileStamp NativeFolderStamp(const std::string& path)
{
    return StampOf(path, S_IFDIR);
}

std::int64_t NativeFileTime(const std::string& path)
{
    return NativeStamp(path).changed / kNanosecondsInSecond;
}

std::unique_ptr<NativeFile> OpenNativeFile(const std::string& path)
{
    NativeFault fault = NativeFault::none;
    return FileOf(Descriptor(::open(path.c_str(), kToRead)), fault);
}

std::unique_ptr<NativeFile> OpenNativeFileIn(const std::string& path, const std::string& folder,
                                             NativeFault& fault)
{
    const std::string real = RealNativePath(path);
    if (!LiesIn(real, folder)) {
        fault = NativeFault::absent;
        return nullptr;
    }
    const std::string_view below = std::string_view(real).substr(folder.size());
    int fd = ::open(folder.c_str(), kToRead | O_DIRECTORY);
    for (const std::string_view name : Split(below, kNativeSeparator)) {
        if (name.empty())
            continue;
        if (fd < 0)
            break;
        // The real path has no links, so one that is met has come since.
        const Descriptor parent(fd);
        fd = ::openat(parent.Get(), std::string(name).c_str(), kToRead | O_NOFOLLOW);
    }
    return FileOf(Descriptor(fd), fault);
}

} // namespace kiv
