// Names that change and links, on a POSIX file system. Every function gives 0 or an error number.
#pragma once

#include <string>
#include <sys/stat.h>
#include <sys/types.h>

namespace kiv {

/// Whether a call that ended with this error may have done its work all the same: a disk or a
/// server that was away for a moment does not know what became of it.
bool MayBeDone(int error);

/// Whether a name, itself and not where it leads, belongs to the file of state `known`.
bool IsSameFile(const std::string& native, const struct stat& known);

/// How many names a file has to which both of these lead; 0 when they lead to two.
nlink_t NamesOfOneFile(const std::string& a, const std::string& b);

/// Renames; EEXIST when the new name is taken. Where the file system cannot do that in one step, a
/// file bears both names for a moment.
int RenameToFree(const std::string& from, const std::string& to);

/// Renames; what bears the new name is replaced.
int MoveOver(const std::string& from, const std::string& to);

/// Gives a file that lies under a temporary name the first free one of "`native`.saved",
/// "`native`.saved2", … Returns that name; empty when it keeps the one it has.
std::string SaveBeside(const std::string& temporary, const std::string& native);

/// Two names change places. ENOSYS where the system cannot do that.
int Exchange(const std::string& a, const std::string& b);

/// Where the links lead that begin at `native`: the path of a file, or of one that could be made.
int FollowLinks(std::string& native);

} // namespace kiv
