#include "shell/directory_tools.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
#include <map>
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

/// A folder in which renames take place.
class Folder {
  public:
    explicit Folder(Files& files) : files_(files), folder_(WithSeparator(files.CurrentDirectory()))
    {
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    virtual ~Folder() = default;

    virtual FolderListing List(std::string_view pattern) = 0;

    /// Gives a file a new name, if that changes it. `from` is an exact form.
    void Apply(const std::string& from, const std::string& to, Renames& done)
    {
        if (TextOfName(from) == to)
            return;
        if (const std::string_view fault = FaultOf(to); !fault.empty())
            Refuse(from, to, fault);
        const NameChange change = Move(from, to);
        done.push_back({change.from, change.to});
    }

  protected:
    virtual NameChange Move(const std::string& from, const std::string& to) = 0;

    /// The whole path: a name alone might look like a path with a drive.
    std::string PathOf(std::string_view name) const { return folder_ + std::string(name); }

    [[noreturn]] void Refuse(std::string_view from, std::string_view to,
                             std::string_view reason) const
    {
        throw RunError(ErrorKind::file, "cannot rename " + PathOf(from) + " to " + PathOf(to) +
                                            ": " + std::string(reason));
    }

    Files& files_;

  private:
    std::string folder_;
};

class RealFolder : public Folder {
  public:
    using Folder::Folder;
    FolderListing List(std::string_view pattern) override { return files_.List(".", pattern); }

  protected:
    NameChange Move(const std::string& from, const std::string& to) override
    {
        return files_.RenameFile(PathOf(from), PathOf(to));
    }
};

/// A folder in which files get back names in exact form.
class UndoneFolder : public RealFolder {
  public:
    using RealFolder::RealFolder;

    void PutBack(const Rename& rename, Renames& done)
    {
        // Put back already, by a run that was stopped: that one can be started again.
        const bool is_back = !IsThere(rename.to) && IsThere(rename.from);
        if (rename.from == rename.to || is_back)
            return;
        if (const std::string_view fault = FaultOf(rename.from); !fault.empty())
            Refuse(rename.to, rename.from, fault);
        const NameChange change = files_.RenameExactly(PathOf(rename.to), PathOf(rename.from));
        done.push_back({change.from, change.to});
    }

  private:
    bool IsThere(std::string_view exact) { return files_.FileExists(PathOf(TextOfName(exact))); }
};

/// The names as they would be after the renames so far.
class ImaginedFolder : public Folder {
  public:
    explicit ImaginedFolder(Files& files) : Folder(files)
    {
        FolderListing listing = files.List(".", "*.*");
        for (const FileName& name : listing.files)
            Add(name);
        for (const std::string& name : files.ListFolders("."))
            ++taken_[UpperCase(name)];
        left_out_ = std::move(listing.left_out);
    }

    FolderListing List(std::string_view pattern) override
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

  protected:
    NameChange Move(const std::string& from, const std::string& to) override
    {
        const std::string old_text = TextOfName(from);
        const std::string old_name = UpperCase(old_text);
        const std::string new_name = UpperCase(to);
        // What is neither a file nor a folder, as a link to nothing, takes a name, too.
        const bool is_listed = taken_.count(new_name) > 0;
        const int others = taken_[new_name] - (new_name == old_name ? 1 : 0);
        if (others > 0 || (!is_listed && files_.NameIsTaken(PathOf(to))))
            Refuse(from, to, "target exists");
        names_.erase({old_name, old_text, from});
        --taken_[old_name];
        NameChange change{from, ExactNewName(to, from)};
        Add({to, change.to});
        return change;
    }

  private:
    using Key = std::tuple<std::string, std::string, std::string>;

    void Add(const FileName& name)
    {
        std::string upper = UpperCase(name.text);
        ++taken_[upper];
        names_.emplace(Key(std::move(upper), name.text, name.exact), name);
    }

    std::map<Key, FileName> names_;    // by the upper-cased text, the text, the exact form
    std::map<std::string, int> taken_; // upper-cased: how many bear it
    std::vector<std::string> left_out_;
};

void RenameIn(Folder& folder, Reporter& reporter, const RenamePasses& passes, Renames& done)
{
    for (const RenamePass& pass : passes) {
        const FolderListing listing = folder.List(pass.pattern);
        WarnOfLeftOut(reporter, listing.left_out);
        for (const FileName& name : listing.files)
            folder.Apply(name.exact, pass.new_name(name), done);
    }
}

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

void RenameFiles(Machine& machine, const RenamePasses& passes, Renaming renaming, Renames& done)
{
    if (renaming == Renaming::dry_run) {
        ImaginedFolder folder(machine.files);
        RenameIn(folder, machine.reporter, passes, done);
    } else {
        RealFolder folder(machine.files);
        RenameIn(folder, machine.reporter, passes, done);
    }
}

void UndoRenames(Files& files, const Renames& renames, Renames& done)
{
    for (const Rename& rename : renames)
        for (const std::string& name : {rename.from, rename.to})
            if (name.find_first_of("\\/") != npos)
                throw RunError(ErrorKind::file,
                               "cannot rename " + name + ": a name has no folders");
    UndoneFolder folder(files);
    std::for_each(renames.rbegin(), renames.rend(),
                  [&](const Rename& rename) { folder.PutBack(rename, done); });
}

} // namespace kiv
