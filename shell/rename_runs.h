// Renames of a folder's files, done one after the other, finished where they were cut short, and
// taken back. All work in the current directory.
#pragma once

#include "platform/files.h"
#include "platform/run_error.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
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

/// Whether each of `some` is one of `all`.
bool AreAmong(const Renames& some, const Renames& all);

/// What a run was to do that was cut short.
struct UnfinishedRun {
    Renames renames;
    bool is_undoing = false; // it takes former renames back
};

/// Throws "cannot rename …" of kind `file`; both are absolute paths. `hint` says what can be done.
[[noreturn]] void RefuseRename(const std::string& from, const std::string& to,
                               std::string_view reason, std::string_view hint = {});

/// Why no renamer has to do with a name, given in exact form: it has folders, or is one that the
/// program has for itself, in whatever case; "" when one may.
std::string_view FaultOfForm(std::string_view exact);
/// Why no file of the current directory can get a name, whatever is there; "" when one can.
std::string_view FaultOfName(Files& files, const FileName& name);

/// How far a run of renames has come, by the names that the files of the folder bear.
class RunProgress {
  public:
    /// `names` are in exact form. `renames` must outlive this.
    RunProgress(std::set<std::string> names, const Renames& renames);

    bool IsThere(const std::string& name) const { return names_.contains(name); }
    /// Whether one of the run's renames, no copy of it, is still to do, or was taken back.
    bool IsToDo(const Rename& rename) const;
    void Note(const Rename& done);
    /// A file has lost one of its two names.
    void Drop(const std::string& name) { names_.erase(name); }

  private:
    bool WaitsForAnother(const Rename& rename) const;

    std::set<std::string> names_;
    std::unordered_map<std::string_view, const Rename*> first_of_; // by the old name
};

// These add each rename to `done` that they do, and throw RunError of kind `file` at the first that
// is impossible; those before it are done.

void DoRenames(Files& files, const Renames& renames, Renames& done);

/// Does what is left of a run that was cut short. A new name must be free, case aside.
void FinishRun(Files& files, const Renames& renames, Renames& done);

/// Throws RunError of kind `file` when a name is none that a renamer has to do with.
void RefuseForms(const Renames& renames);

/// What keeps its new name for now.
struct LeftRenames {
    Renames renames;               // as the run did them
    std::optional<RunError> fault; // why not, and what to do; none when nothing is left
};

/// Goes through the renames of a run, last first, and has those put back that are done by
/// `progress`; `put_back`, which is given the rename that does so, notes it there. One for which
/// that throws RunError of kind `file` keeps no other from coming back, only those that depend on
/// it.
LeftRenames PutBackEach(const Renames& renames, const RunProgress& progress,
                        const std::function<void(const Rename& back)>& put_back);

/// What to do where a file bears both names of a rename: a rename that was cut short has left it
/// so, or it is the user's own doing.
enum class BothNames { are_a_half_rename, are_the_users };

/// Puts the names of `renames` back, which need only be free themselves. What was put back before,
/// or never done, is passed over.
LeftRenames UndoRenames(Files& files, const Renames& renames, BothNames both, Renames& done);

/// Whether none of these renames is done; the first may be between its two steps.
bool NothingIsDone(Files& files, const Renames& renames);

} // namespace kiv
