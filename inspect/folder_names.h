// The names in folders as they are really spelled.
#pragma once

#include "platform/files.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The names of one folder.
struct FolderNames {
    std::vector<std::string> files;   // by their upper-cased names
    std::vector<std::string> folders; // the same
    bool is_known = true;             // false: it cannot be listed, for one of them even

    /// The name that differs from this one at most in case, the very same where both are there;
    /// null when there is none.
    static const std::string* Find(const std::vector<std::string>& names, std::string_view name);
};

/// What bears a name.
enum class EntryKind { nothing, file, folder, unknown };

/// Looks into each folder once.
class FolderIndex {
  public:
    explicit FolderIndex(Files& files) : files_(files) {}

    /// A folder by its absolute path, which must be there.
    const FolderNames& Of(std::string_view folder);
    /// What bears a name, in whatever case, in a folder: also in one that cannot be listed.
    EntryKind Ask(std::string_view folder, std::string_view name);
    /// A page is written under the name `path`; where a file is there already, that one keeps its
    /// spelling.
    void AddWritten(const std::string& path);

  private:
    Files& files_;
    std::map<std::string, FolderNames, std::less<>> folders_; // by upper-cased path
    std::map<std::string, std::string> spelled_; // names on the disk, by upper-cased path
};

} // namespace kiv
