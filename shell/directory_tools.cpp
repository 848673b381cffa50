#include "shell/directory_tools.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/file_errors.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <functional>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace kiv {

namespace {

struct Replacement {
    std::string_view text;
    std::string_view by;
};

/// Each once, in this order: "a___b" becomes "a-_b", "a - b" becomes "a---b".
constexpr std::array<Replacement, 9> kWebSafe = {{
    {" ", "-"},
    {"%20", "-"},
    {"%25", ""},
    {",", "-"},
    {"'", ""},
    {"&", "-"},
    {"(", "-"},
    {")", "-"},
    {"__", "-"},
}};

/// The names of a folder as they would be after the renames so far.
class ImaginedFolder {
  public:
    explicit ImaginedFolder(Files& files)
        : files_(files), folder_(WithSeparator(files.CurrentDirectory()))
    {
        FolderListing listing = files.List(".", "*.*");
        for (const FileName& name : listing.files)
            Add(name);
        for (const std::string& name : files.ListFolders(".")) {
            ++taken_[UpperCase(name)];
            folders_.insert(name);
        }
        left_out_ = std::move(listing.left_out);
    }

    FolderListing List(std::string_view pattern)
    {
        FolderListing fitting;
        for (const auto& [key, name] : names_)
            if (FitsPattern(name.text, pattern))
                fitting.files.push_back(name);
        for (const std::string& name : left_out_)
            if (FitsPattern(name, pattern))
                fitting.left_out.push_back(name);
        return fitting;
    }

    /// Gives a file, named in exact form, a new name, if that changes it.
    void Apply(const std::string& from, const std::string& to, Renames& done)
    {
        if (TextOfName(from) == to)
            return;
        const FileName name{to, ExactNewName(to, from)};
        if (const std::string_view fault = FaultOfForm(from); !fault.empty())
            RefuseRename(PathOf(from), PathOf(to), fault); // nothing would take that back
        RefuseFault(from, name);
        // What is neither a file nor a folder, as a link to nothing, takes a name, too.
        const std::string upper = UpperCase(to);
        const bool is_listed = taken_.count(upper) > 0;
        const int others = taken_[upper] - (upper == UpperCase(TextOfName(from)) ? 1 : 0);
        if (others > 0 || (!is_listed && files_.NameIsTaken(PathOf(to))))
            RefuseRename(PathOf(from), PathOf(to), kTargetExists.text, kTargetExists.hint);
        done.push_back(Move(from, name));
    }

    /// What FinishRun would do.
    void Finish(const Renames& renames, Renames& done)
    {
        RunProgress progress = ProgressOf(renames);
        for (const Rename& rename : renames) {
            if (!progress.IsToDo(rename))
                continue;
            const std::size_t before = done.size();
            Apply(rename.from, TextOfName(rename.to), done);
            if (done.size() > before)
                progress.Note(done.back());
        }
    }

    /// What UndoRenames would do.
    void Undo(const Renames& renames, Renames& done)
    {
        RunProgress progress = ProgressOf(renames);
        const LeftRenames left = PutBackEach(renames, progress, [&](const Rename& back) {
            PutBack(back, done);
            progress.Note(done.back());
        });
        if (left.fault)
            throw RunError(*left.fault);
    }

  private:
    using Key = std::tuple<std::string, std::string, std::string>;

    /// The whole path: a name alone might look like a path with a drive.
    std::string PathOf(std::string_view name) const { return folder_ + std::string(name); }

    void RefuseFault(const std::string& from, const FileName& to)
    {
        if (const std::string_view fault = FaultOfName(files_, to); !fault.empty())
            RefuseRename(PathOf(from), PathOf(to.text), fault);
    }

    /// How far a run has come, with the rename finished at which it was cut short.
    RunProgress ProgressOf(const Renames& renames)
    {
        std::set<std::string> exact;
        for (const auto& [key, name] : names_)
            exact.insert(name.exact);
        RunProgress progress(std::move(exact), renames);
        for (const Rename& rename : renames) {
            if (progress.IsThere(rename.from) && progress.IsThere(rename.to) &&
                files_.IsHalfRenamed(PathOf(rename.from), PathOf(rename.to))) {
                Remove(rename.from);
                progress.Drop(rename.from);
            }
        }
        return progress;
    }

    /// Gives a file the name that it had, which need only be free itself.
    void PutBack(const Rename& rename, Renames& done)
    {
        const FileName name{TextOfName(rename.to), rename.to};
        RefuseFault(rename.from, name);
        if (!IsThere(rename.from))
            RefuseWith("rename", PathOf(rename.from), ENOENT);
        if (folders_.contains(name.text) || IsThere(rename.to))
            RefuseRename(PathOf(rename.from), PathOf(rename.to), kTargetExists.text,
                         kTargetExists.hint);
        done.push_back(Move(rename.from, name));
    }

    bool IsThere(const std::string& exact) const
    {
        const std::string text = TextOfName(exact);
        return names_.contains({UpperCase(text), text, exact});
    }

    Rename Move(const std::string& from, const FileName& to)
    {
        Remove(from);
        Add(to);
        return {from, to.exact};
    }

    void Remove(const std::string& exact)
    {
        const std::string text = TextOfName(exact);
        const std::string upper = UpperCase(text);
        names_.erase({upper, text, exact});
        --taken_[upper];
    }

    void Add(const FileName& name)
    {
        std::string upper = UpperCase(name.text);
        ++taken_[upper];
        names_.emplace(Key(std::move(upper), name.text, name.exact), name);
    }

    Files& files_;
    std::string folder_;
    std::map<Key, FileName> names_;    // by the upper-cased text, the text, the exact form
    std::map<std::string, int> taken_; // upper-cased: how many bear it
    std::set<std::string> folders_;
    std::vector<std::string> left_out_;
};

RenamePass ThumbnailPass(std::string_view pattern, std::string_view extension)
{
    return {pattern,
            [extension](const FileName& name) { return ThumbnailName(name.text, extension); }};
}

} // namespace

std::string WebSafeName(std::string_view exact)
{
    std::string safe = TextOfName(exact, "-", "-");
    for (const Replacement& replacement : kWebSafe)
        ReplaceEach(safe, replacement.text, replacement.by);
    return LowerCase(safe);
}

std::string ThumbnailName(std::string_view name, std::string_view extension)
{
    std::string thumbnail(name);
    const std::string lower = LowerCase(name);
    // Wherever it stands: "x_t.gif.gif" counts as a thumbnail name.
    if (Contains(lower, "_t" + std::string(extension)))
        return thumbnail;
    const std::size_t at = lower.rfind(extension);
    if (at != npos)
        thumbnail.insert(at, "_t");
    return thumbnail;
}

RenamePasses WebSafePasses()
{
    return {{"*.*", [](const FileName& name) { return WebSafeName(name.exact); }}};
}

RenamePasses ThumbnailPasses()
{
    return {ThumbnailPass("*.gif", ".gif"), ThumbnailPass("*.jpg", ".jpg")};
}

RenamePasses ReplacementPasses(const std::string& find, const std::string& replacement)
{
    return {{"*.*", [find, replacement](const FileName& name) {
                 std::string replaced = name.text;
                 ReplaceEach(replaced, find, replacement);
                 return replaced;
             }}};
}

RenamePlan PlanRenames(Machine& machine, const RenamePasses& passes, const UnfinishedRun& former)
{
    RenamePlan plan;
    ImaginedFolder folder(machine.files);
    try {
        if (former.is_undoing)
            folder.Undo(Reversed(former.renames), plan.renames);
        else
            folder.Finish(former.renames, plan.renames);
        for (const RenamePass& pass : passes) {
            const FolderListing listing = folder.List(pass.pattern);
            WarnOfLeftOut(machine.reporter, listing.left_out);
            for (const FileName& name : listing.files) {
                const std::string new_name = pass.new_name(name);
                plan.stops = Rename{name.exact, ExactNewName(new_name, name.exact)};
                folder.Apply(name.exact, new_name, plan.renames);
                plan.stops.reset();
            }
        }
    } catch (const RunError& fault) {
        plan.fault = fault;
    }
    return plan;
}

} // namespace kiv
