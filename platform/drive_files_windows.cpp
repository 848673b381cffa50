#include "platform/drive_files_common.h"
#include "platform/drive_path.h"
#include "platform/drives.h"
#include "platform/run_error.h"
#include "platform/windows_system.h"
#include "platform/windows_text.h"
#include "platform/windows_writing.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <memory>

namespace kiv {

namespace {

// Paths in this form may be long, and names in them are taken as written.
constexpr std::wstring_view kLongPath = LR"(\\?\)";

bool IsThere(DWORD attributes)
{
    return attributes != INVALID_FILE_ATTRIBUTES;
}

bool IsFolder(DWORD attributes)
{
    return IsThere(attributes) && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

DWORD AttributesOf(const std::wstring& native)
{
    return ::GetFileAttributesW(native.c_str());
}

std::int64_t Ticks(const FILETIME& time)
{
    return (std::int64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

/// Calls `take` for every entry of a folder but "." and "..", until it returns false. 0 or an error
/// number.
template <typename Take>
DWORD ForEachEntry(const std::wstring& folder, Take take)
{
    WIN32_FIND_DATAW entry{};
    const std::wstring all = folder + (folder.back() == L'\\' ? L"*" : L"\\*");
    const HANDLE search = ::FindFirstFileW(all.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        return error == ERROR_FILE_NOT_FOUND ? 0 : error; // an empty root has not even "."
    }
    DWORD error = 0;
    bool more = true;
    while (more) {
        const std::wstring_view name(&entry.cFileName[0]);
        if (name != L"." && name != L".." && !take(entry))
            break;
        more = ::FindNextFileW(search, &entry) != 0;
        if (!more)
            error = ::GetLastError();
    }
    ::FindClose(search);
    return error == ERROR_NO_MORE_FILES ? 0 : error;
}

std::wstring ProcessPath(const std::wstring& path)
{
    const DWORD size = ::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    full.resize(::GetFullPathNameW(path.c_str(), size, full.data(), nullptr));
    return full;
}

class WindowsDriveFiles : public DriveFiles {
  public:
    WindowsDriveFiles()
    {
        std::string here = AbsolutePath(FromWide(ProcessPath(L".")), {});
        SetCurrent(here.empty() ? "C:\\" : std::move(here));
    }

    bool FolderExists(std::string_view path) override;
    FileStamp Stamp(std::string_view path) override;
    std::string ReadFile(std::string_view path) override;
    std::string ReadPart(std::string_view path, std::uint64_t offset, std::size_t count) override;
    OutputFile Open(std::string_view path) override;
    void Commit(const OutputFile& file, std::string_view bytes) override;
    void AppendToFile(std::string_view path, std::string_view bytes) override;
    bool MakeFolder(std::string_view path) override;
    void DeleteFile(std::string_view path) override;
    void RenameFile(std::string_view from, std::string_view to) override;
    std::string DriveLetters() override;
    std::string FromNative(std::string_view utf8) override;
    std::string ToNative(std::string_view path) override;

  protected:
    std::vector<std::string> Names(const std::string& folder, bool folders) override;

  private:
    static std::wstring Native(const std::string& absolute);
    WindowsHandle OpenToRead(const std::string& absolute);
    [[noreturn]] static void RefuseWithLast(std::string_view action, std::string_view path)
    {
        RefuseWith(action, path, static_cast<int>(::GetLastError()));
    }
};

/// The native path of an absolute drive path. Windows itself ignores case; only parts that hold
/// references to characters outside the code page are looked for in their folders.
std::wstring WindowsDriveFiles::Native(const std::string& absolute)
{
    std::wstring native(kLongPath);
    if (!Contains(absolute, "&#"))
        return native + WideText(absolute);
    native += WideText(FirstChars(absolute, 2));
    for (const std::string_view part : Split(FromChar(absolute, 4), '\\')) {
        std::wstring next = native + L"\\" + WideText(part);
        if (Contains(part, "&#") && !IsThere(AttributesOf(next))) {
            const std::string wanted = UpperCase(part);
            ForEachEntry(native + L"\\", [&](const WIN32_FIND_DATAW& entry) {
                if (UpperCase(FromWide(&entry.cFileName[0])) != wanted)
                    return true;
                next = native + L"\\" + &entry.cFileName[0];
                return false;
            });
        }
        native = std::move(next);
    }
    return native;
}

bool WindowsDriveFiles::FolderExists(std::string_view path)
{
    const std::string absolute = Absolute(path);
    return !absolute.empty() && IsFolder(AttributesOf(Native(absolute)));
}

FileStamp WindowsDriveFiles::Stamp(std::string_view path)
{
    const std::string absolute = AbsoluteFile(path);
    WIN32_FILE_ATTRIBUTE_DATA state{};
    if (absolute.empty() ||
        ::GetFileAttributesExW(Native(absolute).c_str(), GetFileExInfoStandard, &state) == 0 ||
        IsFolder(state.dwFileAttributes))
        return {};
    constexpr std::int64_t kYoung = 1'000'000;
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    return {(std::uint64_t{state.nFileSizeHigh} << 32) | state.nFileSizeLow,
            Distinct(Ticks(state.ftLastWriteTime), Ticks(now), kYoung), true};
}

WindowsHandle WindowsDriveFiles::OpenToRead(const std::string& absolute)
{
    const std::wstring native = Native(absolute);
    WindowsHandle file = OpenWindowsFile(native);
    if (!file.IsOpen()) {
        const DWORD error = ::GetLastError();
        if (IsFolder(AttributesOf(native)))
            Refuse("read", absolute, "no plain file");
        RefuseWith("read", absolute, static_cast<int>(error));
    }
    return file;
}

std::string WindowsDriveFiles::ReadFile(std::string_view path)
{
    return ReadPart(path, 0, npos);
}

std::string WindowsDriveFiles::ReadPart(std::string_view path, std::uint64_t offset,
                                        std::size_t count)
{
    const std::string absolute = FileToUse(path, "read");
    const WindowsHandle file = OpenToRead(absolute);
    LARGE_INTEGER size;
    if (::GetFileSizeEx(file.Get(), &size) == 0)
        RefuseWithLast("read", absolute);
    const auto whole = static_cast<std::uint64_t>(size.QuadPart);
    std::string bytes;
    if (offset >= whole)
        return bytes;
    const auto there = static_cast<std::size_t>(std::min<std::uint64_t>(count, whole - offset));
    if (const DWORD error = ReadBytes(file, offset, there, bytes))
        RefuseWith("read", absolute, static_cast<int>(error));
    return bytes;
}

OutputFile WindowsDriveFiles::Open(std::string_view path)
{
    OutputFile file;
    file.path = FileToUse(path, "write");
    if (!IsFolder(AttributesOf(Native(std::string(FolderOf(file.path))))))
        Refuse("write", file.path, "no such folder");
    const std::wstring native = FollowLink(Native(file.path));
    const DWORD attributes = AttributesOf(native);
    if (IsFolder(attributes))
        Refuse("write", file.path, "a folder has this name");
    file.exists = IsThere(attributes);
    file.native = Utf8FromWide(native);
    return file;
}

void WindowsDriveFiles::Commit(const OutputFile& file, std::string_view bytes)
{
    const std::wstring native = WideFromUtf8(file.native);
    WIN32_FILE_ATTRIBUTE_DATA state{};
    bool exists = false;
    if (file.exists) {
        exists = ::GetFileAttributesExW(native.c_str(), GetFileExInfoStandard, &state) != 0;
        const std::uint64_t size = (std::uint64_t{state.nFileSizeHigh} << 32) | state.nFileSizeLow;
        if (exists && HoldsBytes(native, size, bytes)) {
            CountWritten(file.path);
            return;
        }
        if (exists && (state.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0)
            Refuse("write", file.path, "the file is read-only");
    }
    DWORD error = Place(native, bytes, exists);
    if (!exists && (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS))
        error = Place(native, bytes, true); // another program has made it meanwhile
    if (error != 0)
        RefuseWith("write", file.path, static_cast<int>(error));
    CountWritten(file.path);
}

void WindowsDriveFiles::AppendToFile(std::string_view path, std::string_view bytes)
{
    const OutputFile file = Open(path);
    const std::wstring native = WideFromUtf8(file.native);
    WindowsHandle target(::CreateFileW(native.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                       OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER end{};
    if (!target.IsOpen() || ::SetFilePointerEx(target.Get(), {}, &end, FILE_END) == 0)
        RefuseWithLast("write", file.path);
    if (const DWORD error = WriteBytes(target, bytes)) {
        ::SetFilePointerEx(target.Get(), end, nullptr, FILE_BEGIN);
        ::SetEndOfFile(target.Get());
        target.Close();
        if (!file.exists)
            ::DeleteFileW(native.c_str());
        RefuseWith("write", file.path, static_cast<int>(error));
    }
    CountWritten(file.path);
}

bool WindowsDriveFiles::MakeFolder(std::string_view path)
{
    const std::string absolute = Absolute(path);
    return !absolute.empty() && ::CreateDirectoryW(Native(absolute).c_str(), nullptr) != 0;
}

void WindowsDriveFiles::DeleteFile(std::string_view path)
{
    const std::string absolute = FileToUse(path, "delete");
    if (::DeleteFileW(Native(absolute).c_str()) == 0)
        RefuseWithLast("delete", absolute);
}

void WindowsDriveFiles::RenameFile(std::string_view from, std::string_view to)
{
    const std::string source = FileToUse(from, "rename");
    const std::string target = FileToUse(to, "rename to");
    if (!FileExists(source))
        Refuse("rename", source, "no such file");
    const std::wstring old_name = Native(source);
    // Characters outside the code page stay what they are; only the text of the name has changed.
    const std::string old_utf8 = Utf8FromWide(old_name.substr(old_name.rfind(L'\\') + 1));
    std::wstring new_name = Native(std::string(FolderOf(target)));
    if (!new_name.ends_with(L'\\'))
        new_name += L'\\';
    new_name += WideFromUtf8(ToUtf8Keeping(NameOf(target), old_utf8));
    if (old_name == new_name || ::MoveFileExW(old_name.c_str(), new_name.c_str(), 0) != 0)
        return;
    const DWORD error = ::GetLastError();
    if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS ||
        IsThere(AttributesOf(new_name)))
        Refuse("rename " + source + " to", target, "target exists");
    RefuseWith("rename " + source + " to", target, static_cast<int>(error));
}

std::vector<std::string> WindowsDriveFiles::Names(const std::string& folder, bool folders)
{
    std::vector<std::string> names;
    const DWORD error = ForEachEntry(Native(folder), [&](const WIN32_FIND_DATAW& entry) {
        if (IsFolder(entry.dwFileAttributes) == folders)
            names.push_back(FromWide(&entry.cFileName[0]));
        return true;
    });
    if (error != 0)
        RefuseWith("list", folder, static_cast<int>(error));
    return names;
}

std::string WindowsDriveFiles::DriveLetters()
{
    const DWORD drives = ::GetLogicalDrives();
    std::string letters;
    for (int i = 0; i < 26; ++i)
        if ((drives >> i & 1U) != 0)
            letters.push_back(static_cast<char>('A' + i));
    return letters;
}

std::string WindowsDriveFiles::FromNative(std::string_view utf8)
{
    if (HasDrive(utf8) || (!utf8.empty() && IsSeparator(utf8[0])))
        return Absolute(FromUtf8(utf8));
    const std::string here = AbsolutePath(FromWide(ProcessPath(L".")), {});
    return AbsolutePath(FromUtf8(utf8), here);
}

std::string WindowsDriveFiles::ToNative(std::string_view path)
{
    const std::string absolute = Absolute(path);
    if (absolute.empty() || !Contains(DriveLetters(), absolute.substr(0, 1)))
        return {};
    return Utf8FromWide(std::wstring_view(Native(absolute)).substr(kLongPath.size()));
}

} // namespace

std::unique_ptr<Files> MakeDriveFiles(const DriveMap& /*drives*/)
{
    return std::make_unique<WindowsDriveFiles>();
}

} // namespace kiv
