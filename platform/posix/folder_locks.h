// Locks on folders of a POSIX file system.
#pragma once

#include "platform/files.h"
#include "platform/posix/descriptor.h"

#include <map>
#include <memory>
#include <string>
#include <sys/types.h>
#include <utility>

namespace kiv {

/// The folders that one run holds.
class PosixFolderLocks {
  public:
    /// Waits for the lock on a native folder. One that this run holds already, by whatever path, is
    /// shared. Where the file system has no locks, or the folder may not be opened, the lock that
    /// is given holds nothing. 0, or an error number: EWOULDBLOCK when another run holds the folder
    /// all the time.
    int Lock(const std::string& folder, std::unique_ptr<FolderLock>& lock);

  private:
    using Identity = std::pair<dev_t, ino_t>;
    std::map<Identity, std::weak_ptr<Descriptor>> held_;
};

} // namespace kiv
