// Names that change and links, on a POSIX file system. Every function gives 0 or an error number.
#pragma once

#include <string>
#include <sys/types.h>

namespace kiv {

/// Whether a call that ended with this error may have done its work all the same: a disk or a
/// server that was away for a moment does not know what became of it.
bool MayBeDone(int error);

/// How many names a file has to which both of these lead; 0 when they lead to two.
nlink_t NamesOfOneFile(const std::string& a, const std::string& b);

/// Renames; EEXIST when the new name is taken. Where the file system cannot do that in one step, a
/// file bears both names for a moment.
int RenameToFree(const std::string& from, const std::string& to);

/// Renames; what bears the new name is replaced.
int MoveOver(const std::string& from, const std::string& to);

/// Two names change places. ENOSYS where the system cannot do that.
int Exchange(const std::string& a, const std::string& b);

/// Where the links lead that begin at `native`: the path of a file, or of one that could be made.
int FollowLinks(std::string& native);

} // namespace kiv
