#include "platform/windows/drive_files.h"
#include "platform/queued_drives.h"

#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/run_error.h"
#include "platform/temporary_names.h"
#include "platform/windows/api.h"
#include "platform/windows/folder_locks.h"
#include "platform/windows/paths.h"
#include "platform/windows/wide_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

bool HasGoodNames(std::string_view absolute)
{
    // A ":" would open a second content of the file before it.
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

WindowsDriveFiles::WindowsDriveFiles(const DriveMap& drives) : names_(drives)
{
    std::string here = names_.FromNative(".", {});
    SetCurrent(here.empty() ? "C:\\" : std::move(here));
}

bool WindowsDriveFiles::NativeStateAt(const std::wstring& native, std::string_view absolute,
                                      Look look, WindowsState& state) const
{
    const DWORD error = look(native, state);
    if (error != 0 && !IsAbsent(error))
        RefuseWith("look at", absolute, static_cast<int>(error));
    return error == 0;
}

bool WindowsDriveFiles::StateAt(const std::string& absolute, Look look, WindowsState& state) const
{
    return !absolute.empty() && HasGoodNames(absolute) &&
           NativeStateAt(names_.Native(absolute), absolute, look, state);
}

bool WindowsDriveFiles::IsFolderAt(const std::string& absolute) const
{
    WindowsState state;
    return StateAt(absolute, StateOf, state) && state.is_folder;
}

bool WindowsDriveFiles::FolderExists(std::string_view path)
{
    const std::string absolute = Absolute(path);
    TellLook(absolute);
    return IsFolderAt(absolute);
}

std::string WindowsDriveFiles::RealFolder(std::string_view path)
{
    const std::string absolute = Absolute(path);
    if (!IsFolderAt(absolute))
        Refuse("look at", path, kNoSuchFolder);
    std::wstring native = names_.Native(absolute);
    // A drive that does not tell how it spells the folder is one that ignores case.
    return FindFinalPath(native) == 0 ? ExactFromWide(native) : UpperCase(ExactFromWide(native));
}

bool WindowsDriveFiles::NameIsTaken(std::string_view path)
{
    WindowsState state;
    return StateAt(Absolute(path), StateOfName, state);
}

bool WindowsDriveFiles::IsLink(std::string_view path)
{
    WindowsState state;
    return StateAt(AbsoluteFile(path), StateOfName, state) &&
           (state.attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

FileStamp WindowsDriveFiles::Stamp(std::string_view path)
{
    const std::string absolute = AbsoluteFile(path);
    TellLook(absolute);
    WindowsState state;
    if (!StateAt(absolute, StateOf, state) || state.is_folder)
        return {};
    constexpr std::int64_t kYoung = 1'000'000;
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    const std::int64_t ticks = (std::int64_t{now.dwHighDateTime} << 32) | now.dwLowDateTime;
    return {state.size, Distinct(state.written, ticks, kYoung), true};
}

PlaceState WindowsDriveFiles::StateNow(const std::string& absolute)
{
    using Kind = PlaceState::Kind;
    if (!HasGoodNames(absolute))
        return {};
    WindowsState state;
    try {
        const DWORD error = StateOf(names_.Native(absolute), state);
        if (IsAbsent(error))
            return {};
        if (error != 0)
            return {.kind = Kind::refused, .error = static_cast<int>(error)};
    } catch (const RunError&) { // a folder that has to be looked through for the name
        return {.kind = Kind::refused, .error = ERROR_ACCESS_DENIED};
    }
    return {.kind = state.is_folder ? Kind::folder : Kind::file,
            .size = state.is_folder ? 0 : state.size,
            .written = state.written,
            .changed = state.made};
}

std::vector<FileName> WindowsDriveFiles::Names(const std::string& folder, bool folders)
{
    if (!HasGoodNames(folder))
        Refuse("list", folder, kNoSuchFolder);
    std::vector<FileName> names;
    const DWORD error = ForEachName(names_.Native(folder), [&](const WindowsName& name) {
        std::string text = FromWide(name.native);
        if (name.is_folder == folders && !IsOwnName(text))
            names.push_back({std::move(text), ExactFromWide(name.native)});
        return true;
    });
    if (IsMissing(error))
        Refuse("list", folder, kNoSuchFolder);
    if (error != 0)
        RefuseWith("list", folder, static_cast<int>(error));
    return names;
}

std::string WindowsDriveFiles::PlaceOf(const OutputFile& file)
{
    const std::wstring native = WideFromUtf8(file.native);
    const std::wstring folder = NativeFolderOf(native);
    std::wstring& known = final_folders_[folder];
    if (std::wstring found = folder; known.empty() && FindFinalPath(found) == 0)
        known = std::move(found);
    if (known.empty())
        return {};
    return Utf8FromWide(UpperCaseOf(InNativeFolder(known, NativeNameOf(native))));
}

std::unique_ptr<FolderLock> WindowsDriveFiles::LockFolder(std::string_view folder)
{
    const std::string absolute = Absolute(folder);
    if (!IsFolderAt(absolute))
        Refuse("work in", folder, kNoSuchFolder);
    std::unique_ptr<FolderLock> lock = LockWindowsFolder(names_.Native(absolute));
    if (!lock)
        Refuse("work in", absolute, kOtherRun);
    return lock;
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

void WindowsDriveFiles::Refresh()
{
    DriveFiles::Refresh();
    tidied_.clear();
    places_.clear();
    final_folders_.clear();
}

std::unique_ptr<Drives> MakeDriveFiles(const DriveMap& drives, std::size_t threads)
{
    return WithPageQueue(std::make_unique<WindowsDriveFiles>(drives), threads);
}

} // namespace kiv
