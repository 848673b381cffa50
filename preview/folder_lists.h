// The names in folders, kept as long as they can be trusted: a folder may hold a hundred thousand.
#pragma once

#include "platform/native_files.h"

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kiv {

/// In one thread.
class FolderLists {
  public:
    using Instant = std::chrono::steady_clock::time_point;
    using Names = std::shared_ptr<const std::vector<NativeEntry>>;

    /// A stamp that is younger may be that of two lists: the clocks of file systems are coarse.
    static constexpr std::chrono::seconds kYoung{3};
    /// Not every file system tells by a folder's stamp that a name in it has changed.
    static constexpr std::chrono::seconds kTrusted{5};

    /// The shown names in a folder, in byte order; null when it cannot be listed, with the reason.
    Names NamesIn(const std::string& native, NativeFault& fault,
                  Instant now = std::chrono::steady_clock::now());

  private:
    struct List {
        FileStamp stamp;
        Instant since;  // when this stamp was seen first
        Instant listed; // when the names were
        Names names;
    };

    bool IsTrusted(const List& list, Instant now) const;

    std::map<std::string, List> lists_; // by native path
};

} // namespace kiv
