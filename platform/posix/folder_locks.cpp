#include "platform/posix/folder_locks.h"

#include "platform/posix/descriptor.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <utility>

namespace kiv {

namespace {

constexpr std::chrono::milliseconds kPause{10};
constexpr int kTries = 1000;

/// The kernel lets go of the folder when the descriptor is closed, at the latest with the process.
class PosixFolderLock : public FolderLock {
  public:
    explicit PosixFolderLock(Descriptor folder) : folder_(std::move(folder)) {}

  private:
    Descriptor folder_;
};

} // namespace

std::unique_ptr<FolderLock> LockPosixFolder(const std::string& folder)
{
    Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    for (int i = 0; opened.IsOpen() && ::flock(opened.Get(), LOCK_EX | LOCK_NB) != 0; ++i) {
        const bool is_held = errno == EWOULDBLOCK;
        if (!is_held && errno != EINTR)
            break;
        if (i == kTries)
            return nullptr;
        if (is_held)
            std::this_thread::sleep_for(kPause);
    }
    return std::make_unique<PosixFolderLock>(std::move(opened));
}

} // namespace kiv
