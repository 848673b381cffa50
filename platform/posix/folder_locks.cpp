#include "platform/posix/folder_locks.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>

namespace kiv {

namespace {

constexpr std::chrono::milliseconds kPause{10};
constexpr int kTries = 1000;

/// The kernel lets go of the folder when the descriptor is closed, at the latest with the process.
class PosixFolderLock : public FolderLock {
  public:
    explicit PosixFolderLock(std::shared_ptr<Descriptor> folder) : folder_(std::move(folder)) {}

  private:
    std::shared_ptr<Descriptor> folder_; // null: nothing is held
};

bool KnowsNoLocks(int error)
{
    return error == ENOLCK || error == EOPNOTSUPP || error == ENOSYS || error == EINVAL;
}

int WaitForLock(const Descriptor& folder)
{
    for (int i = 0; ::flock(folder.Get(), LOCK_EX | LOCK_NB) != 0; ++i) {
        const int error = errno;
        if (KnowsNoLocks(error))
            return 0;
        if (i >= kTries || (error != EINTR && error != EWOULDBLOCK))
            return error;
        if (error == EWOULDBLOCK)
            std::this_thread::sleep_for(kPause);
    }
    return 0;
}

} // namespace

int PosixFolderLocks::Lock(const std::string& folder, std::unique_ptr<FolderLock>& lock)
{
    Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // One may be allowed to write into a folder that one may not read.
    if (!opened.IsOpen() && errno != EACCES && errno != EROFS)
        return errno;
    std::shared_ptr<Descriptor> shared;
    if (opened.IsOpen()) {
        struct stat state {};
        if (::fstat(opened.Get(), &state) != 0)
            return errno;
        std::weak_ptr<Descriptor>& held = held_[{state.st_dev, state.st_ino}];
        shared = held.lock();
        if (!shared) {
            if (const int error = WaitForLock(opened))
                return error;
            shared = std::make_shared<Descriptor>(std::move(opened));
            held = shared;
        }
    }
    lock = std::make_unique<PosixFolderLock>(std::move(shared));
    return 0;
}

} // namespace kiv
