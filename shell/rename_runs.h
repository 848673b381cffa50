// Renames of a folder's files, done one after the other, finished where they were cut short, and
// taken back. All work in the current directory.
#pragma once

#include "platform/files.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// One rename in a folder: two names without folders, in exact form.
struct Rename {
    std::string from;
    std::string to;
    bool operator==(const Rename&) const = default;
};
using Renames = std::vector<Rename>;

/// The renames that take others back, in the order in which they do.
Renames Reversed(const Renames& renames);

/// What a run was to do that was cut short.
struct UnfinishedRun {
    Renames renames;
    bool is_undoing = false; // it takes former renames back
};

/// Throws "cannot rename …" of kind `file`; both are paths.
[[noreturn]] void RefuseRename(const std::string& from, const std::string& to,
                               std::string_view reason);

/// Why no file of the current directory can get a name, whatever is there; "" when one can.
std::string_view FaultOfName(Files& files, const FileName& name);

/// How far a run of renames has come, by the names that the files of the folder bear.
class RunProgress {
  public:
    /// `names` are in exact form. `renames` must outlive this.
    RunProgress(std::set<std::string> names, const Renames& renames)
        : names_(std::move(names)), renames_(renames)
    {
    }

    bool IsThere(const std::string& name) const { return names_.contains(name); }
    /// Whether a rename is still to do, or was taken back.
    bool IsToDo(const Rename& rename) const;
    void Note(const Rename& done);
    /// A file has lost one of its two names.
    void Drop(const std::string& name) { names_.erase(name); }

  private:
    bool WaitsForAnother(const Rename& rename) const;

    std::set<std::string> names_;
    const Renames& renames_;
};

// These add each rename to `done` that they do, and throw RunError of kind `file` at the first that
// is impossible; those before it are done.

void DoRenames(Files& files, const Renames& renames, Renames& done);

/// Does what is left of a run that was cut short. A new name must be free, case aside; an old one
/// that is put back need only be free itself.
void FinishRun(Files& files, const UnfinishedRun& run, Renames& done);

/// Throws RunError of kind `file` when a name has folders.
void RefuseFolders(const Renames& renames);

/// Puts the names of `renames` back, last first. What was put back before, or never done, is passed
/// over.
void UndoRenames(Files& files, const Renames& renames, Renames& done);

/// Whether none of these renames is done; the first may be between its two steps.
bool NothingIsDone(Files& files, const Renames& renames);

} // namespace kiv
