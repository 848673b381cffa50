#include "platform/windows/moving.h"

#include "platform/windows/api.h"
#include "platform/windows/folders.h"
#include "platform/windows/handle.h"
#include "platform/windows/paths.h"
#include "platform/windows/patience.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

namespace kiv {

namespace {

DWORD Move(const std::wstring& from, const std::wstring& to, DWORD flags)
{
    return ::MoveFileExW(from.c_str(), to.c_str(), flags) != 0 ? 0 : ::GetLastError();
}

DWORD FlagsOf(Durable durable)
{
    return durable == Durable::kAtOnce ? MOVEFILE_WRITE_THROUGH : 0;
}

/// Whether the name on the disk is spelled as in `native`.
bool HasSpelling(const std::wstring& native)
{
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW(native.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    ::FindClose(search);
    return NativeNameOf(native) == &found.cFileName[0];
}

/// Moves a draft over a file that is held open, which MoveFileEx cannot. Nor can older Windows or
/// every file system.
bool MoveOverHeld(const std::wstring& draft, const std::wstring& to)
{
    // FileRenameInfoEx; not every header for Windows has the word.
    constexpr auto kRename = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
    const WindowsHandle file(::CreateFileW(draft.c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                                           OPEN_EXISTING, FILE_FLAG_WRITE_THROUGH, nullptr));
    const std::size_t bytes = to.size() * sizeof(wchar_t);
    const std::size_t size = sizeof(FILE_RENAME_INFO) + bytes; // one unit is in the struct: the NUL
    std::vector<std::uint64_t> block(size / sizeof(std::uint64_t) + 1);
    auto* const rename = ::new (block.data()) FILE_RENAME_INFO{};
    rename->Flags = FILE_RENAME_FLAG_REPLACE_IF_EXISTS | FILE_RENAME_FLAG_POSIX_SEMANTICS;
    rename->FileNameLength = static_cast<DWORD>(bytes);
    std::memcpy(reinterpret_cast<char*>(block.data()) + offsetof(FILE_RENAME_INFO, FileName),
                to.c_str(), bytes);
    return file.IsOpen() &&
           ::SetFileInformationByHandle(file.Get(), kRename, rename, static_cast<DWORD>(size)) != 0;
}

DWORD TryMoveOverContent(const std::wstring& draft, const std::wstring& to,
                         std::string_view content)
{
    // Nobody may write into the file while it is open here; who has it open for that already makes
    // this fail.
    WindowsHandle held(::CreateFileW(to.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                     nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!held.IsOpen())
        return ::GetLastError();
    if (!HoldsBytes(held, content))
        return kChangedMeanwhile;
    if (MoveOverHeld(draft, to))
        return 0;
    held.Close();
    return Move(draft, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

} // namespace

unsigned long RenameToFree(const std::wstring& from, const std::wstring& to)
{
    if (const DWORD error = Move(from, to, 0))
        return error;
    if (::CompareStringOrdinal(from.c_str(), -1, to.c_str(), -1, TRUE) != CSTR_EQUAL ||
        HasSpelling(to))
        return 0;
    // Some file systems take the other case for the name that is there already. A name in between
    // helps, one that nobody takes for a temporary file should this be as far as it gets.
    const std::wstring between = to + L".saved";
    DWORD error = Move(from, between, 0);
    if (error != 0)
        return error;
    error = Move(between, to, 0);
    if (error != 0)
        Move(between, from, 0);
    return error;
}

unsigned long MoveToFree(const std::wstring& draft, const std::wstring& to, Durable durable)
{
    return Patiently([&] { return Move(draft, to, FlagsOf(durable)); });
}

unsigned long MoveOver(const std::wstring& draft, const std::wstring& to, Durable durable)
{
    const DWORD flags = MOVEFILE_REPLACE_EXISTING | FlagsOf(durable);
    return Patiently([&] { return Move(draft, to, flags); });
}

// Windows cannot have two files change places. ReplaceFile gives the old file a name of its own, so
// that one could look at it afterwards, but in two steps: a process that is killed between them, or
// a power cut, leaves no file under the name. So the look comes first, while writers are held off,
// and the move is done under that same handle where the file system can do it, else at once after
// it was closed. What is left is another program that puts a new file in the place, not new bytes
// into it, in the microseconds between.
unsigned long MoveOverContent(const std::wstring& draft, const std::wstring& to,
                              std::string_view content)
{
    return Patiently([&] { return TryMoveOverContent(draft, to, content); });
}

} // namespace kiv
