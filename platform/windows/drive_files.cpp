#include "platform/drive_files_common.h"
#include "platform/drive_path.h"
#include "platform/drives.h"
#include "platform/exact_names.h"
#include "platform/file_errors.h"
#include "platform/windows/api.h"
#include "platform/windows/names.h"
#include "platform/windows/paths.h"
#include "platform/windows/wide_text.h"
#include "platform/windows/writing.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <memory>

namespace kiv {

namespace {

std::int64_t Ticks(const FILETIME& time)
{
    return (std::int64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
}

constexpr std::size_t kLongestName = 255;

/// Whether Windows allows the names in a path. A ":" would open another content of the same file.
bool HasGoodNames(std::string_view absolute)
{
    const auto is_bad = [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || std::string_view("<>:\"|?*").find(c) != npos;
    };
    const std::string_view below = FromChar(absolute, 4);
    if (std::any_of(below.begin(), below.end(), is_bad))
        return false;
    // References are longer than what they stand for.
    const std::vector<std::string_view> names = Split(below, '\\');
    return std::none_of(names.begin(), names.end(), [](std::string_view name) {
        return name.size() > kLongestName && !Contains(name, "&#");
    });
}

class WindowsDriveFiles : public DriveFiles {
  public:
    explicit WindowsDriveFiles(const DriveMap& drives) : names_(drives)
    {
        std::string here = names_.FromNative(".", {});
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
    std::string DriveLetters() override;
    std::string FromNative(std::string_view utf8) override;
    std::string ToNative(std::string_view path) override;

  protected:
    std::vector<FileName> Names(const std::string& folder, bool folders) override;
    std::string ExactNameOf(const std::string& absolute) override;
    void Rename(const std::string& source, const std::string& target, const NameChange& change,
                Alike alike) override;

  private:
    /// An absolute path, when it can be one of a file or folder; else empty.
    std::string Possible(std::string absolute) const
    {
        return HasGoodNames(absolute) ? std::move(absolute) : std::string();
    }
    /// The same for a file; what cannot be one is refused.
    std::string PossibleFile(std::string_view path, std::string_view action) const;
    /// The native path of a name in exact form.
    std::wstring InFolder(std::string_view folder, std::string_view exact) const;
    WindowsHandle OpenToRead(const std::string& absolute);
    [[noreturn]] static void RefuseWithLast(std::string_view action, std::string_view path)
    {
        RefuseWith(action, path, static_cast<int>(::GetLastError()));
    }

    WindowsNames names_;
};

std::string WindowsDriveFiles::PossibleFile(std::string_view path, std::string_view action) const
{
    std::string absolute = FileToUse(path, action);
    if (!HasGoodNames(absolute))
        Refuse(action, absolute, "Windows allows no such name");
    return absolute;
}

bool WindowsDriveFiles::FolderExists(std::string_view path)
{
    const std::string absolute = Possible(Absolute(path));
    return !absolute.empty() && IsFolder(names_.Native(absolute));
}

FileStamp WindowsDriveFiles::Stamp(std::string_view path)
{
    const std::string absolute = Possible(AbsoluteFile(path));
    WindowsState state;
    if (absolute.empty() || !StateOf(names_.Native(absolute), state) || state.is_folder)
        return {};
    constexpr std::int64_t kYoung = 1'000'000;
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    return {state.size, Distinct(state.written, Ticks(now), kYoung), true};
}

WindowsHandle WindowsDriveFiles::OpenToRead(const std::string& absolute)
{
    const std::wstring native = names_.Native(absolute);
    WindowsHandle file = OpenWindowsFile(native);
    if (!file.IsOpen()) {
        const DWORD error = ::GetLastError();
        if (IsFolder(native))
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
    const std::string absolute = PossibleFile(path, "read");
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
    file.path = PossibleFile(path, "write");
    const std::wstring native = FollowLink(names_.Native(file.path));
    if (native.size() - native.rfind(L'\\') > kLongestName + 1)
        Refuse("write", file.path, "the name is too long");
    WindowsState state;
    file.exists = StateOf(native, state);
    if (!file.exists && !IsFolder(names_.Native(FolderOf(file.path))))
        Refuse("write", file.path, "no such folder");
    if (state.is_folder)
        Refuse("write", file.path, "a folder has this name");
    file.native = Utf8FromWide(native);
    if (WideFromUtf8(file.native) != native)
        Refuse("write", file.path, "its name on the disk is not valid Unicode; rename the file");
    return file;
}

void WindowsDriveFiles::Commit(const OutputFile& file, std::string_view bytes)
{
    const std::wstring native = WideFromUtf8(file.native);
    WindowsState old;
    const bool exists = file.exists && StateOf(native, old);
    if (exists && HoldsBytes(native, old.size, bytes)) {
        CountWritten(file.path);
        return;
    }
    DWORD error = exists ? Replace(native, old, bytes) : WriteNew(native, bytes);
    if (error == ERROR_ALREADY_EXISTS ||
        error == ERROR_FILE_EXISTS) // made by another program meanwhile
        error = StateOf(native, old) && !old.is_folder ? Replace(native, old, bytes) : error;
    if (error != 0)
        RefuseWith("write", file.path, static_cast<int>(error));
    CountWritten(file.path);
}

void WindowsDriveFiles::AppendToFile(std::string_view path, std::string_view bytes)
{
    const OutputFile file = Open(path);
    const std::wstring native = WideFromUtf8(file.native);
    WindowsState old;
    if (file.exists && StateOf(native, old) && (old.attributes & FILE_ATTRIBUTE_READONLY) != 0)
        RefuseWith("write", file.path, ERROR_FILE_READ_ONLY);
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
    const std::string absolute = Possible(Absolute(path));
    return !absolute.empty() &&
           ::CreateDirectoryW(names_.NativeOfNew(absolute).c_str(), nullptr) != 0;
}

void WindowsDriveFiles::DeleteFile(std::string_view path)
{
    const std::string absolute = PossibleFile(path, "delete");
    if (::DeleteFileW(names_.Native(absolute).c_str()) == 0)
        RefuseWithLast("delete", absolute);
}

std::wstring WindowsDriveFiles::InFolder(std::string_view folder, std::string_view exact) const
{
    std::wstring native = names_.Native(folder);
    if (!native.ends_with(L'\\'))
        native += L'\\';
    return native + WideFromExact(exact);
}

std::string WindowsDriveFiles::ExactNameOf(const std::string& absolute)
{
    if (!HasGoodNames(absolute))
        Refuse("rename", absolute, "Windows allows no such name");
    std::wstring native = InFolder(FolderOf(absolute), NameOf(absolute));
    if (!Contains(NameOf(absolute), "&#") || !IsThere(native))
        native = names_.Native(absolute);
    if (!IsThere(native) || IsFolder(native))
        Refuse("rename", absolute, "no such file");
    return ExactFromWide(native.substr(native.rfind(L'\\') + 1));
}

void WindowsDriveFiles::Rename(const std::string& source, const std::string& target,
                               const NameChange& change, Alike alike)
{
    const std::string action = "rename " + source + " to";
    if (!HasGoodNames(target))
        Refuse("rename to", target, "Windows allows no such name");
    const std::wstring old_name = InFolder(FolderOf(source), change.from);
    const std::wstring new_name = InFolder(FolderOf(target), change.to);
    if (old_name == new_name)
        return;
    // The name itself may be free when its text is not.
    const std::wstring other =
        names_.Native(WithSeparator(FolderOf(target)) + TextOfName(change.to));
    if (alike == Alike::text && other != new_name && other != old_name && IsThere(other))
        Refuse(action, target, "target exists");
    const DWORD error = MoveToFree(old_name, new_name);
    if (error == 0)
        return;
    if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS || IsThere(new_name))
        Refuse(action, target, "target exists");
    RefuseWith(action, target, static_cast<int>(error));
}

std::vector<FileName> WindowsDriveFiles::Names(const std::string& folder, bool folders)
{
    std::vector<FileName> names;
    DWORD error = ERROR_PATH_NOT_FOUND;
    if (HasGoodNames(folder))
        error = ForEachName(names_.Native(folder), [&](const WindowsName& name) {
            if (name.is_folder == folders)
                names.push_back({FromWide(name.native), ExactFromWide(name.native)});
            return true;
        });
    if (error != 0)
        RefuseWith("list", folder, static_cast<int>(error));
    return names;
}

std::string WindowsDriveFiles::DriveLetters()
{
    return names_.Letters();
}

std::string WindowsDriveFiles::FromNative(std::string_view utf8)
{
    return names_.FromNative(utf8, CurrentDirectory());
}

std::string WindowsDriveFiles::ToNative(std::string_view path)
{
    const std::string absolute = Absolute(path);
    if (absolute.empty() || !Contains(DriveLetters(), absolute.substr(0, 1)))
        return {};
    return Utf8FromWide(names_.Plain(absolute));
}

} // namespace

std::unique_ptr<Drives> MakeDriveFiles(const DriveMap& drives)
{
    return std::make_unique<WindowsDriveFiles>(drives);
}

} // namespace kiv
