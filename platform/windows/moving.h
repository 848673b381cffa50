// Names that change on Windows. Paths are native and absolute; every function gives 0 or an error
// number of Windows.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Gives a file a name that is free; it may be its own name in other case.
unsigned long RenameToFree(const std::wstring& from, const std::wstring& to);

/// When a move is on the disk: some time later, or before the call ends.
enum class Durable { kLater, kAtOnce };

/// Moves a whole draft to a free place.
unsigned long MoveToFree(const std::wstring& draft, const std::wstring& to, Durable durable);

/// Moves it over the file that is there.
unsigned long MoveOver(const std::wstring& draft, const std::wstring& to, Durable durable);

/// Another program has changed the file; a number that Windows leaves to programs.
constexpr unsigned long kChangedMeanwhile = 0x20000001;

/// Moves it, durably, over a file that holds `content`; kChangedMeanwhile when that one does not.
unsigned long MoveOverContent(const std::wstring& draft, const std::wstring& to,
                              std::string_view content);

} // namespace kiv
