// Files by their native paths, for those who only look. Nothing here keeps a state, so any thread
// may call it.
#pragma once

#include "platform/files.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

#ifdef _WIN32
inline constexpr char kNativeSeparator = '\\';
#else
inline constexpr char kNativeSeparator = '/';
#endif

/// A name in a folder, UTF-8 as far as it is valid.
struct NativeEntry {
    std::string name;
    bool is_folder = false; // a link to one, too

    bool operator==(const NativeEntry&) const = default;
};

/// Why something cannot be read.
enum class NativeFault {
    none,
    absent,
    refused,  // this user may not, or the machine cannot
    no_file,  // something else than a plain file, such as a pipe
    too_many, // files are open just now
};

/// The names in a folder but "." and "..", in byte order; nothing when it cannot be listed, with
/// the reason in `fault`.
std::optional<std::vector<NativeEntry>> NativeEntries(const std::string& folder,
                                                      NativeFault* fault = nullptr);

/// The one path of what is there: links are followed. "" when nothing is there.
std::string RealNativePath(const std::string& path);

/// The state of a plain file; of anything else, that none is there.
FileStamp NativeStamp(const std::string& path);
/// That of a folder, which on most disks is another one when a name in it comes or goes.
FileStamp NativeFolderStamp(const std::string& path);

/// When a file was last changed, in seconds since the beginning of 1970, UTC; 0 where there is
/// none.
std::int64_t NativeFileTime(const std::string& path);

/// An open file.
class NativeFile {
  public:
    NativeFile() = default;
    NativeFile(const NativeFile&) = delete;
    NativeFile& operator=(const NativeFile&) = delete;
    virtual ~NativeFile() = default;

    virtual std::uint64_t Size() const = 0;
    /// Up to `count` bytes from `offset` (0-based) on; fewer at its end, or when it cannot be read.
    virtual std::string Read(std::uint64_t offset, std::size_t count) = 0;
};

/// Opens a plain file, which others may replace meanwhile; null when there is none to be read.
std::unique_ptr<NativeFile> OpenNativeFile(const std::string& path);

/// The same for what must lie in `folder` (as RealNativePath gives it): whatever links are changed
/// meanwhile, what is opened lies there. Null comes with the reason in `fault`.
std::unique_ptr<NativeFile> OpenNativeFileIn(const std::string& path, const std::string& folder,
                                             NativeFault& fault);

/// A name in a folder.
std::string NativeJoined(std::string_view folder, std::string_view name);

/// The folder of an absolute path, without final separator; a root's is itself.
std::string NativeParentOf(const std::string& path);

/// Whether `path` is `folder` or lies in it; both as RealNativePath gives them.
bool LiesIn(std::string_view path, std::string_view folder);

} // namespace kiv
