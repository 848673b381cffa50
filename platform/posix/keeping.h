// What a new content takes over from the file in whose place it is put: owner, group, mode, access
// list and extended attributes.
#pragma once

#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace kiv {

/// What the system did not let a file keep: "its owner", "its group", …
using Lost = std::vector<std::string_view>;

/// Gives the open `draft`, which nobody else may read yet, what the file `native` of state `old`
/// has. Each thing is kept for itself, as far as the user may set it; bits that lend the owner's
/// rights are not. Where the owner, the group or the access list is lost, nobody gets more rights
/// than before. 0 or an error number.
int TakeOver(int draft, const std::string& native, const struct stat& old, Lost& lost);

} // namespace kiv
