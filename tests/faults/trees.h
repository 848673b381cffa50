// The folder of drive C: as a value: laid down before a try, read again afterwards.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace kiv::faults {

/// What one name stands for.
struct Entry {
    enum class Kind { file, folder, link };
    Kind kind = Kind::file;
    std::string bytes; // of a link: where it leads
    mode_t mode = 0644;
    uid_t owner = 0;
    gid_t group = 0;
    std::string note; // the extended attribute "user.note"
    std::string twin; // the first path of the same file, if that is another
    bool operator==(const Entry&) const = default;
};

/// By native path below the folder, "site/index.htm".
using Tree = std::map<std::string, Entry>;

/// Puts a file of this process's user into the tree, and the folders above it.
void Put(Tree& tree, const std::string& path, std::string bytes, mode_t mode = 0644);
void PutFolder(Tree& tree, const std::string& path);
void PutLink(Tree& tree, const std::string& path, std::string target);

/// Whether two trees hold the same files and links with the same bytes. Folders, owners and rights
/// do not count.
bool SameBytes(const Tree& a, const Tree& b);
/// The first path in which they differ so, with what differs; "" when none does.
std::string FirstDifference(const Tree& wanted, const Tree& found);
/// How two entries differ in owner, rights and attributes; "" when they do not.
std::string OtherRights(const Entry& wanted, const Entry& found);

/// Everything below a folder; nothing when it is missing.
Tree ReadTree(const std::string& root);
/// Brings a folder to hold just what the tree says, by as few changes as it takes.
void MakeSo(const std::string& root, const Tree& wanted);

/// Whether a name is one that the program gives to what it keeps for a while.
bool IsOurs(std::string_view path);
/// The first of such files in a tree; "" when there is none.
std::string FirstOfOurs(const Tree& tree);

} // namespace kiv::faults
