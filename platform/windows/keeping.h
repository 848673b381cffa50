// What a new content takes over from the file in whose place it is put: owner, group, access list,
// attributes and further contents.
#pragma once

#include "platform/windows/folders.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What the system did not let a file keep: "its owner", "its group", …
using Lost = std::vector<std::string_view>;

/// A security descriptor of Windows; empty where the file system has none.
using Rights = std::vector<std::uint64_t>;

/// The access list that a draft for the place of a file begins with: that file's own or, where it
/// cannot be read, one for the user alone. 0 or an error number.
unsigned long ReadFirstRights(const std::wstring& native, Rights& rights);

/// Gives a closed draft, which began with these rights, what the file of state `old` has. Each
/// thing is kept for itself, as far as the user may set it.
void TakeOver(const std::wstring& draft, const std::wstring& native, const WindowsState& old,
              Lost& lost);

} // namespace kiv
