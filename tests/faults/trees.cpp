#include "faults/trees.h"

#include "faults/system.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace kiv::faults {

namespace {

constexpr const char* kNote = "user.note";
constexpr mode_t kFolderMode = 0755;

std::string NoteOf(const std::string& native)
{
    std::array<char, 256> note{};
    const ssize_t size = ::lgetxattr(native.c_str(), kNote, note.data(), note.size());
    return size > 0 ? std::string(note.data(), static_cast<std::size_t>(size)) : std::string();
}

std::string TargetOf(const std::string& native)
{
    std::array<char, 4096> target{};
    const ssize_t size = ::readlink(native.c_str(), target.data(), target.size());
    return std::string(target.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
}

Entry ReadEntry(const std::string& native, const struct stat& state)
{
    Entry entry;
    entry.mode = state.st_mode & 07777U;
    entry.owner = state.st_uid;
    entry.group = state.st_gid;
    if (S_ISDIR(state.st_mode)) {
        entry.kind = Entry::Kind::folder;
    } else if (S_ISLNK(state.st_mode)) {
        entry.kind = Entry::Kind::link;
        entry.bytes = TargetOf(native);
    } else {
        entry.bytes = BytesOfFile(native);
        entry.note = NoteOf(native);
    }
    return entry;
}

std::vector<std::string> NamesIn(const std::string& folder)
{
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> handle(::opendir(folder.c_str()), ::closedir);
    if (!handle)
        return names;
    while (const dirent* const entry = ::readdir(handle.get())) {
        const std::string name = &entry->d_name[0];
        if (name != "." && name != "..")
            names.push_back(name);
    }
    return names;
}

using Numbers = std::map<std::string, ino_t>; // by path, of files with more than one name

void ReadFolder(const std::string& root, const std::string& below, Tree& tree, Numbers& numbers)
{
    for (const std::string& name : NamesIn(root + "/" + below)) {
        const std::string path = below.empty() ? name : below + "/" + name;
        const std::string native = root + "/" + path;
        struct stat state {};
        if (::lstat(native.c_str(), &state) != 0)
            Fail("cannot look at " + native);
        const Entry& entry = tree[path] = ReadEntry(native, state);
        if (entry.kind == Entry::Kind::folder)
            ReadFolder(root, path, tree, numbers);
        else if (state.st_nlink > 1)
            numbers[path] = state.st_ino;
    }
}

void NoteTwins(const Numbers& numbers, Tree& tree)
{
    std::map<ino_t, std::string> first;
    for (const auto& [path, number] : numbers)
        if (const auto [place, is_new] = first.try_emplace(number, path); !is_new)
            tree[path].twin = place->second;
}

void Remove(const std::string& native, const Entry& entry)
{
    const bool folder = entry.kind == Entry::Kind::folder;
    if ((folder ? ::rmdir(native.c_str()) : ::unlink(native.c_str())) != 0)
        Fail("cannot take away " + native);
}

void SetRights(const std::string& native, const Entry& entry)
{
    // The owner comes first, for it may clear bits of the mode.
    if (::lchown(native.c_str(), entry.owner, entry.group) != 0 && errno != EPERM)
        Fail("cannot set the owner of " + native);
    if (entry.kind == Entry::Kind::link)
        return;
    if (::chmod(native.c_str(), entry.mode) != 0)
        Fail("cannot set the rights of " + native);
    if (!entry.note.empty())
        ::setxattr(native.c_str(), kNote, entry.note.data(), entry.note.size(), 0);
}

void Make(const std::string& root, const std::string& path, const Entry& entry)
{
    const std::string native = root + "/" + path;
    int error = 0;
    if (!entry.twin.empty())
        error = ::link((root + "/" + entry.twin).c_str(), native.c_str());
    else if (entry.kind == Entry::Kind::folder)
        error = ::mkdir(native.c_str(), kFolderMode);
    else if (entry.kind == Entry::Kind::link)
        error = ::symlink(entry.bytes.c_str(), native.c_str());
    else
        WriteWholeFile(native, entry.bytes);
    if (error != 0)
        Fail("cannot make " + native);
    SetRights(native, entry);
}

bool IsContent(const Entry& entry)
{
    return entry.kind != Entry::Kind::folder;
}

Entry Own(Entry::Kind kind, std::string bytes, mode_t mode)
{
    return {kind, std::move(bytes), mode, ::geteuid(), ::getegid(), {}, {}};
}

} // namespace

void PutFolder(Tree& tree, const std::string& path)
{
    for (std::size_t at = path.find('/'); at != std::string::npos; at = path.find('/', at + 1))
        tree.try_emplace(path.substr(0, at), Own(Entry::Kind::folder, {}, kFolderMode));
    tree.try_emplace(path, Own(Entry::Kind::folder, {}, kFolderMode));
}

void Put(Tree& tree, const std::string& path, std::string bytes, mode_t mode)
{
    if (const std::size_t at = path.rfind('/'); at != std::string::npos)
        PutFolder(tree, path.substr(0, at));
    tree[path] = Own(Entry::Kind::file, std::move(bytes), mode);
}

void PutLink(Tree& tree, const std::string& path, std::string target)
{
    tree[path] = Own(Entry::Kind::link, std::move(target), 0777);
}

std::string FirstDifference(const Tree& wanted, const Tree& found)
{
    for (const auto& [path, entry] : wanted) {
        const auto other = found.find(path);
        if (!IsContent(entry))
            continue;
        if (other == found.end())
            return path + " is missing";
        if (other->second.kind != entry.kind || other->second.bytes != entry.bytes)
            return path + " differs";
    }
    for (const auto& [path, entry] : found)
        if (IsContent(entry) && !wanted.contains(path))
            return path + " should not be there";
    return {};
}

bool SameBytes(const Tree& a, const Tree& b)
{
    return FirstDifference(a, b).empty();
}

std::string OtherRights(const Entry& wanted, const Entry& found)
{
    if (wanted.kind != Entry::Kind::file || found.kind != Entry::Kind::file)
        return {};
    if (wanted.mode != found.mode)
        return "mode";
    if (wanted.owner != found.owner)
        return "owner";
    if (wanted.group != found.group)
        return "group";
    return wanted.note != found.note ? "extended attribute" : "";
}

Tree ReadTree(const std::string& root)
{
    Tree tree;
    Numbers numbers;
    ReadFolder(root, "", tree, numbers);
    NoteTwins(numbers, tree);
    return tree;
}

void MakeSo(const std::string& root, const Tree& wanted)
{
    ::mkdir(root.c_str(), kFolderMode);
    const Tree found = ReadTree(root);
    // Backwards, what is in a folder comes before the folder.
    std::for_each(found.rbegin(), found.rend(), [&](const auto& named) {
        const auto other = wanted.find(named.first);
        const bool folder = named.second.kind == Entry::Kind::folder;
        if (other == wanted.end() || (!folder && !(other->second == named.second)))
            Remove(root + "/" + named.first, named.second);
    });
    for (const auto& [path, entry] : wanted) {
        const auto other = found.find(path);
        if (other != found.end() && other->second == entry)
            continue;
        if (other != found.end() && entry.kind == Entry::Kind::folder)
            SetRights(root + "/" + path, entry);
        else
            Make(root, path, entry);
    }
}

bool IsOurs(std::string_view path)
{
    return path.substr(path.rfind('/') + 1).starts_with(".kiv-");
}

std::string FirstOfOurs(const Tree& tree)
{
    const auto found = std::find_if(tree.begin(), tree.end(),
                                    [](const auto& named) { return IsOurs(named.first); });
    return found == tree.end() ? std::string() : found->first;
}

} // namespace kiv::faults
