// From the target of a request to a file of the site.
#pragma once

#include "platform/native_files.h"
#include "preview/folder_lists.h"
#include "preview/request_target.h"

#include <memory>
#include <string>
#include <vector>

namespace kiv {

/// What is served for a target.
struct Served {
    enum class Kind {
        file,
        folder,    // without an index: what is in it
        to_folder, // a folder that was asked for without "/" behind it
        missing,
        unreadable, // it is there, and `fault` says what keeps it from being served
    };
    Kind kind = Kind::missing;
    std::string native; // the file's or folder's path; what is missing has the one it would have
    std::vector<std::string> names;   // from the root on; with the index that stands for a folder
    std::vector<NativeEntry> entries; // of a folder
    std::vector<std::string> nearest; // of what is missing: the path that was most likely meant
    bool nearest_is_folder = false;
    bool differs_in_case = false; // from the nearest, and in nothing else
    NativeFault fault = NativeFault::none;
};

/// The files below one folder. Only names that a listing of a folder holds lead on, so there are
/// neither ".." nor devices nor other spellings; a link leads on as long as it stays in the root.
/// Names that begin with "." are not there. In one thread.
class ServedFiles {
  public:
    /// `root`: an absolute native path of a folder.
    explicit ServedFiles(std::string root);

    const std::string& Root() const { return root_; }
    Served Find(const TargetPath& path) const;
    /// Opens a file that was found; null, with the reason, when it cannot be read or lies elsewhere
    /// by now.
    std::unique_ptr<NativeFile> Open(const Served& file, NativeFault& fault) const;

  private:
    bool IsInside(const std::string& native) const;
    /// The names in a folder that are shown; none when it may not be looked into.
    FolderLists::Names NamesIn(const std::string& folder, NativeFault& fault) const;
    static Served Unreadable(Served served);
    Served OfFolder(Served served) const;
    Served Missing(const TargetPath& path, std::size_t at, const std::string& folder,
                   const std::vector<NativeEntry>& names) const;

    std::string root_;
    std::string real_root_;
    mutable FolderLists lists_;
};

} // namespace kiv
