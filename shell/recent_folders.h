// The folders that were worked in last, from one run to the next.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Workspace;

inline constexpr std::size_t kRecentFolders = 10;

/// Reads the list into `Workspace::Recent`. A list that cannot be read is an empty one: it must
/// never keep the program from starting.
void LoadRecentFolders(Workspace& workspace);

/// Puts a folder (a drive path) at the head of the list, which no other spelling of it stays in,
/// and keeps it for the next run where that is possible. What another window has put there since
/// stays.
void NoteRecentFolder(Workspace& workspace, std::string_view folder);

/// Goes to a folder of the list; `index` counts from 0 and is below its size. Throws RunError when
/// it is not there any more.
void GoToRecent(Workspace& workspace, std::size_t index);

} // namespace kiv
