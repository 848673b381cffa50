// Drive paths found on a POSIX file system: a name is looked up as written first, then ignoring
// case.
#pragma once

#include "platform/drives.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <unordered_map>
#include <utility>
#include <vector>

namespace kiv {

/// A name in a folder: as it is on the disk, and as this program sees it (Windows-1252).
struct PosixName {
    std::string native;
    std::string text;
    unsigned char type = 0; // DT_REG, DT_DIR, … or DT_UNKNOWN
};

class PosixNames {
  public:
    /// Tries a native path with one system call: 0 or an error number.
    using Attempt = std::function<int(const std::string& native)>;

    explicit PosixNames(const DriveMap& drives);

    const DriveMap& Drives() const { return drives_; }

    /// Makes the attempt on the path as written, then on the name that is the same when case is
    /// ignored. `native` is the path of the last attempt, or the path as written when nothing is
    /// there, or empty when the folder is not to be had. Gives 0 or an error number: that of the
    /// attempt, or that of a look at a folder. Each attempt sees the present state; what is
    /// remembered only saves looking through folders. kTrustFolder spares the look at a remembered
    /// folder in which nothing was found.
    enum Trust { kLookAtFolder, kTrustFolder };
    int Reach(std::string_view absolute, std::string& native, const Attempt& attempt,
              Trust trust = kLookAtFolder);

    /// What is remembered of a name in a folder that was listed, without a look at the disk: the
    /// place of a plain file or a place that is free. kUnknown where only a look can tell. The disk
    /// may have changed since.
    enum class Memory { kUnknown, kFree, kFile };
    Memory Remembered(std::string_view absolute, std::string& native) const;

    /// The native folder of a drive path. 0 or an error number.
    int Folder(std::string_view absolute, std::string& native);

    /// The native path as written, whether or not anything is there; empty when the drive is not
    /// there.
    std::string AsWritten(std::string_view absolute) const;

    /// Whether a path is longer than the system can take.
    bool IsTooLong(std::string_view absolute) const;

    /// The names in a native folder that equal `name` (Windows-1252) when case is ignored, in byte
    /// order. 0 or an error number.
    int Alike(const std::string& folder, std::string_view name, std::vector<PosixName>& alike);

    /// All names in a native folder, fresh from the disk, without our temporary ones. 0 or an error
    /// number.
    int Read(const std::string& folder, std::vector<PosixName>& names);

    /// This program has made or taken away a name.
    void Added(const std::string& native);
    void Removed(const std::string& native);

    /// Forgets all that is remembered.
    void Forget();

  private:
    /// The names of one folder by their upper-cased text.
    using Listing = std::unordered_multimap<std::string, PosixName>;
    using Identity = std::pair<dev_t, ino_t>; // two paths may lead to one folder

    int ListingOf(const std::string& folder, const Listing*& listing);
    void Drop(const std::string& folder);
    /// `other`: none when no name in the folder counts as `name`.
    int OtherSpelling(const std::string& folder, std::string_view name,
                      std::optional<std::string>& other);
    int FindFolder(std::string_view absolute, std::string& native);
    /// From the root on, part by part: a path may have thousands.
    int FindFolderByParts(std::string_view absolute, std::string& native);
    /// The attempt on a name in a folder, then on what counts as that name.
    int ReachIn(const std::string& folder, std::string_view name, std::string& native,
                const Attempt& attempt);
    int ReachOnce(std::string_view absolute, std::string& native, const Attempt& attempt);

    DriveMap drives_;
    // Few folders, and looked up for every file: by views, which cost no text of their own.
    std::map<std::string, std::string, std::less<>> folders_; // drive folder to native folder
    std::map<Identity, Listing> listings_;
    std::map<std::string, Identity, std::less<>> identities_; // native folder to its listing
};

} // namespace kiv
