#include "shell/directory_tools.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
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

    virtual std::vector<std::string> List(std::string_view pattern) = 0;
    virtual void Move(const Rename& rename) = 0;

    /// Renames a file, if that changes its name.
    void Apply(const Rename& rename, Renames& done)
    {
        if (rename.from == rename.to)
            return;
        if (const std::string_view fault = FaultOf(rename.to); !fault.empty())
            Refuse(rename, fault);
        Move(rename);
        done.push_back(rename);
    }

  protected:
    /// The whole path: a name alone might look like a path with a drive.
    std::string PathOf(std::string_view name) const { return folder_ + std::string(name); }

    [[noreturn]] void Refuse(const Rename& rename, std::string_view reason) const
    {
        throw RunError(ErrorKind::file, "cannot rename " + PathOf(rename.from) + " to " +
                                            PathOf(rename.to) + ": " + std::string(reason));
    }

    Files& files_;

  private:
    std::string folder_;
};

class RealFolder : public Folder {
  public:
    using Folder::Folder;
    std::vector<std::string> List(std::string_view pattern) override
    {
        return files_.ListFiles(".", pattern);
    }
    void Move(const Rename& rename) override
    {
        files_.RenameFile(PathOf(rename.from), PathOf(rename.to));
    }
};

/// The names as they would be after the renames so far.
class ImaginedFolder : public Folder {
  public:
    explicit ImaginedFolder(Files& files) : Folder(files)
    {
        for (const std::string& name : files.ListFiles(".", "*.*"))
            Add(name);
        for (const std::string& name : files.ListFolders("."))
            ++taken_[UpperCase(name)];
    }

    std::vector<std::string> List(std::string_view pattern) override
    {
        std::vector<std::string> fitting;
        for (const auto& [upper, name] : names_)
            if (FitsPattern(name, pattern))
                fitting.push_back(name);
        return fitting;
    }

    void Move(const Rename& rename) override
    {
        const std::string old_name = UpperCase(rename.from);
        const std::string new_name = UpperCase(rename.to);
        // What is neither a file nor a folder, as a link to nothing, takes a name, too.
        const bool is_listed = taken_.count(new_name) > 0;
        const int others = taken_[new_name] - (new_name == old_name ? 1 : 0);
        if (others > 0 || (!is_listed && files_.NameIsTaken(PathOf(rename.to))))
            Refuse(rename, "target exists");
        names_.erase(names_.find({old_name, rename.from}));
        --taken_[old_name];
        Add(rename.to);
    }

  private:
    void Add(const std::string& name)
    {
        std::string upper = UpperCase(name);
        ++taken_[upper];
        names_.emplace(std::move(upper), name);
    }

    std::multiset<std::pair<std::string, std::string>> names_; // upper-cased and as it is
    std::map<std::string, int> taken_;                         // upper-cased: how many bear it
};

void RenameIn(Folder& folder, const RenamePasses& passes, Renames& done)
{
    for (const RenamePass& pass : passes)
        for (const std::string& name : folder.List(pass.pattern))
            folder.Apply({name, pass.new_name(name)}, done);
}

RenamePass ThumbnailPass(std::string_view pattern, std::string_view extension)
{
    return {pattern, [extension](std::string_view name) { return ThumbnailName(name, extension); }};
}

} // namespace

std::string WebSafeName(std::string_view name)
{
    std::string safe(name);
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
    return {{"*.*", WebSafeName}};
}

RenamePasses ThumbnailPasses()
{
    return {ThumbnailPass("*.gif", ".gif"), ThumbnailPass("*.jpg", ".jpg")};
}

RenamePasses ReplacementPasses(const std::string& find, const std::string& replacement)
{
    return {{"*.*", [find, replacement](std::string_view name) {
                 std::string replaced(name);
                 ReplaceEach(replaced, find, replacement);
                 return replaced;
             }}};
}

void RenameFiles(Files& files, const RenamePasses& passes, Renaming renaming, Renames& done)
{
    if (renaming == Renaming::dry_run) {
        ImaginedFolder folder(files);
        RenameIn(folder, passes, done);
    } else {
        RealFolder folder(files);
        RenameIn(folder, passes, done);
    }
}

void UndoRenames(Files& files, const Renames& renames, Renames& done)
{
    for (const Rename& rename : renames)
        for (const std::string& name : {rename.from, rename.to})
            if (name.find_first_of("\\/") != npos)
                throw RunError(ErrorKind::file,
                               "cannot rename " + name + ": a name has no folders");
    RealFolder folder(files);
    const std::string path = WithSeparator(files.CurrentDirectory());
    std::for_each(renames.rbegin(), renames.rend(), [&](const Rename& rename) {
        // Put back already, by a run that was stopped: that one can be started again.
        const bool is_back =
            !files.FileExists(path + rename.to) && files.FileExists(path + rename.from);
        if (!is_back)
            folder.Apply({rename.to, rename.from}, done);
    });
}

} // namespace kiv
