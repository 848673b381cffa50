#include "shell/directory_tools.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
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

constexpr std::size_t kLongestName = 255; // in native bytes

/// Why a text can be no file's name in any folder; "" when it can.
std::string_view FaultOf(std::string_view name)
{
    if (name.empty())
        return "the name is empty";
    if (name == "." || name == ".." || name.find_first_of("\\/") != npos)
        return "a name has no folders";
    // A reference may stand for a character that takes less room: then the disk is to judge.
    if (ToUtf8(name).size() > kLongestName && !Contains(name, "&#"))
        return "the name is too long";
    return {};
}

[[noreturn]] void RefuseRename(const std::string& from, const std::string& to,
                               std::string_view reason)
{
    throw RunError(ErrorKind::file, Joined({"cannot rename ", from, " to ", to, ": ", reason}));
}

/// The names of a folder as they would be after the renames so far.
class ImaginedFolder {
  public:
    explicit ImaginedFolder(Files& files)
        : files_(files), folder_(WithSeparator(files.CurrentDirectory()))
    {
        FolderListing listing = files.List(".", "*.*");
        for (const FileName& name : listing.files)
            Add(name);
        for (const std::string& name : files.ListFolders("."))
            ++taken_[UpperCase(name)];
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
        if (const std::string_view fault = FaultOf(to); !fault.empty())
            RefuseRename(PathOf(from), PathOf(to), fault);
        done.push_back(Move(from, to));
    }

  private:
    using Key = std::tuple<std::string, std::string, std::string>;

    /// The whole path: a name alone might look like a path with a drive.
    std::string PathOf(std::string_view name) const { return folder_ + std::string(name); }

    Rename Move(const std::string& from, const std::string& to)
    {
        const std::string old_text = TextOfName(from);
        const std::string old_name = UpperCase(old_text);
        const std::string new_name = UpperCase(to);
        // What is neither a file nor a folder, as a link to nothing, takes a name, too.
        const bool is_listed = taken_.count(new_name) > 0;
        const int others = taken_[new_name] - (new_name == old_name ? 1 : 0);
        if (others > 0 || (!is_listed && files_.NameIsTaken(PathOf(to))))
            RefuseRename(PathOf(from), PathOf(to), "target exists");
        names_.erase({old_name, old_text, from});
        --taken_[old_name];
        Rename rename{from, ExactNewName(to, from)};
        Add({to, rename.to});
        return rename;
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
    std::vector<std::string> left_out_;
};

/// Notes a rename among those done, and does it. Noted afterwards, it would be lost where memory is
/// short; what is noted and was not done, undoing passes over.
void NoteAndDo(Renames& done, const Rename& rename, const std::function<NameChange()>& work)
{
    done.push_back(rename);
    try {
        NameChange change = work();
        done.back() = {std::move(change.from), std::move(change.to)};
    } catch (const RunError&) {
        done.pop_back();
        throw;
    }
}

/// The names that files of the current directory bear, in exact form, and the renames of a run,
/// some of which are done.
class RenamedFolder {
  public:
    RenamedFolder(Files& files, const Renames& renames)
        : files_(files), renames_(renames), folder_(WithSeparator(files.CurrentDirectory()))
    {
        for (FileName& name : files.List(".", "*.*").files)
            names_.insert(std::move(name.exact));
        for (const Rename& rename : renames)
            FinishHalf(rename);
    }

    /// Whether a rename is done: its file bears the new name, and none the old one.
    bool IsDone(const Rename& rename) const
    {
        return names_.contains(rename.to) && !names_.contains(rename.from);
    }
    /// Whether it is still to do, or was taken back.
    bool IsNotDone(const Rename& rename) const
    {
        return names_.contains(rename.from) &&
               (!names_.contains(rename.to) || WaitsForAnother(rename));
    }

    void Do(const std::string& from, const std::string& to, Renames& done)
    {
        if (const std::string_view fault = FaultOf(to); !fault.empty())
            RefuseRename(PathOf(from), PathOf(to), fault);
        NoteAndDo(done, {from, to}, [&] { return files_.RenameExactly(PathOf(from), PathOf(to)); });
        names_.erase(done.back().from);
        names_.insert(done.back().to);
    }

  private:
    std::string PathOf(std::string_view exact) const { return folder_ + std::string(exact); }

    void FinishHalf(const Rename& rename)
    {
        if (names_.contains(rename.from) && names_.contains(rename.to) &&
            files_.FinishRename(PathOf(rename.from), PathOf(rename.to)))
            names_.erase(rename.from);
    }

    /// The new name is still that of a file which an earlier rename of the run calls otherwise.
    bool WaitsForAnother(const Rename& rename) const
    {
        for (const Rename& earlier : renames_) {
            if (&earlier == &rename)
                return false;
            if (earlier.from == rename.to)
                return true;
        }
        return false;
    }

    Files& files_;
    const Renames& renames_;
    std::string folder_;
    std::set<std::string> names_;
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

RenamePlan PlanRenames(Machine& machine, const RenamePasses& passes)
{
    RenamePlan plan;
    ImaginedFolder folder(machine.files);
    try {
        for (const RenamePass& pass : passes) {
            const FolderListing listing = folder.List(pass.pattern);
            WarnOfLeftOut(machine.reporter, listing.left_out);
            for (const FileName& name : listing.files)
                folder.Apply(name.exact, pass.new_name(name), plan.renames);
        }
    } catch (const RunError& fault) {
        plan.fault = fault;
    }
    return plan;
}

void DoRenames(Files& files, const Renames& renames, Renames& done)
{
    const std::string folder = WithSeparator(files.CurrentDirectory());
    for (const Rename& rename : renames) {
        NoteAndDo(done, rename, [&] {
            return files.RenameFile(folder + rename.from, folder + TextOfName(rename.to));
        });
    }
}

void FinishRenames(Files& files, const Renames& renames, Renames& done)
{
    RenamedFolder folder(files, renames);
    for (const Rename& rename : renames)
        if (folder.IsNotDone(rename))
            folder.Do(rename.from, rename.to, done);
}

void UndoRenames(Files& files, const Renames& renames, Renames& done)
{
    for (const Rename& rename : renames)
        for (const std::string& name : {rename.from, rename.to})
            if (name.find_first_of("\\/") != npos)
                throw RunError(ErrorKind::file,
                               "cannot rename " + name + ": a name has no folders");
    RenamedFolder folder(files, renames);
    std::for_each(renames.rbegin(), renames.rend(), [&](const Rename& rename) {
        if (rename.from != rename.to && !folder.IsNotDone(rename))
            folder.Do(rename.to, rename.from, done);
    });
}

} // namespace kiv
