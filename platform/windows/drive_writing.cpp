#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/windows/api.h"
#include "platform/windows/drafts.h"
#include "platform/windows/drive_files.h"
#include "platform/windows/moving.h"
#include "platform/windows/page_draft.h"
#include "platform/windows/paths.h"
#include "platform/windows/patience.h"
#include "platform/windows/temporaries.h"
#include "platform/windows/wide_text.h"

namespace kiv {

OutputFile WindowsDriveFiles::Open(std::string_view path)
{
    OutputFile file;
    file.path = PossibleFile(path, "write");
    std::wstring native = names_.Native(file.path);
    DWORD error = FollowLink(native);
    if (NativeNameOf(native).size() > kLongestName)
        Refuse("write", file.path, "the name is too long");
    WindowsState state;
    if (error == 0)
        error = StateOf(native, state);
    if (error != 0 && !IsMissing(error))
        RefuseWith("write", file.path, static_cast<int>(error));
    file.exists = error == 0;
    if (!file.exists && !IsFolderAt(std::string(FolderOf(file.path))))
        Refuse("write", file.path, kNoSuchFolder);
    if (state.is_folder)
        Refuse("write", file.path, kFolderInTheWay);
    file.native = Utf8FromWide(native);
    if (WideFromUtf8(file.native) != native)
        Refuse("write", file.path, "its name on the disk is not valid Unicode; rename the file");
    return file;
}

void WindowsDriveFiles::TidyFolderOf(const OutputFile& file)
{
    std::wstring folder = NativeFolderOf(WideFromUtf8(file.native));
    if (tidied_.contains(folder))
        return;
    DeleteLeftTemporaries(folder);
    tidied_.insert(std::move(folder));
}

std::unique_ptr<PageDraft>
WindowsDriveFiles::MakeDraft(const OutputFile& file, std::string_view bytes, bool is_former_known)
{
    return std::make_unique<WindowsPageDraft>(file, bytes, is_former_known);
}

void WindowsDriveFiles::NoteWritten(const OutputFile& file, bool /*is_new*/)
{
    places_.push_back(file);
}

unsigned long WindowsDriveFiles::PlaceInOld(const OutputFile& file, const Writing& writing)
{
    const std::wstring native = WideFromUtf8(file.native);
    OldPage old;
    if (const DWORD error = LookAtOldPage(native, writing.bytes, old))
        return error;
    if (old.holds_bytes)
        return writing.is_source ? FlushFileAt(native) : 0;
    if (!IsFormerKnown(file))
        KeepFormer(file, FormerOf(native, old));
    Lost lost;
    const DWORD error =
        PlaceOver({native, writing.bytes, writing.is_source, writing.expected}, old.state, lost);
    if (error == 0)
        CountLost(file.path, lost);
    return error;
}

unsigned long WindowsDriveFiles::Place(const OutputFile& file, const Writing& writing)
{
    RefuseUnexpected(file, writing.expected);
    TidyFolderOf(file);
    if (file.exists)
        return PlaceInOld(file, writing);
    const std::wstring native = WideFromUtf8(file.native);
    const DWORD error = PlaceNew({native, writing.bytes, writing.is_source});
    if (error == 0)
        KeepFormer(file, FormerFile::Absent());
    return error;
}

void WindowsDriveFiles::Write(const OutputFile& file, const Writing& writing)
{
    OutputFile place = file;
    DWORD error = Place(place, writing);
    // Another program has made or taken away the file, or moved its folder, since it was opened.
    if (IsTaken(error) || IsMissing(error)) {
        place = Open(file.path);
        error = Place(place, writing);
    }
    if (error == kChangedMeanwhile)
        RefuseChanged(file.path);
    if (error != 0)
        RefuseWith("write", file.path, static_cast<int>(error));
    if (writing.expected.is_record)
        return;
    NoteWritten(place, false);
    CountWritten(place, writing.bytes);
}

void WindowsDriveFiles::Commit(const OutputFile& file, std::string_view bytes)
{
    Write(file, {bytes});
}

void WindowsDriveFiles::CommitSource(const OutputFile& file, std::string_view bytes,
                                     const Expectation& expected)
{
    Write(file, {bytes, true, expected});
}

void WindowsDriveFiles::AppendToFile(std::string_view path, std::string_view bytes)
{
    KeepFormerAt(path);
    OutputFile file = Open(path);
    const std::wstring native = WideFromUtf8(file.native);
    WindowsState old;
    if (file.exists && StateOf(native, old) == 0 && (old.attributes & FILE_ATTRIBUTE_READONLY) != 0)
        RefuseWith("write", file.path, ERROR_FILE_READ_ONLY);
    WindowsHandle target(::CreateFileW(native.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                       OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    const bool is_made = target.IsOpen() && ::GetLastError() != ERROR_ALREADY_EXISTS;
    LARGE_INTEGER end{};
    if (!target.IsOpen() || ::SetFilePointerEx(target.Get(), {}, &end, FILE_END) == 0)
        RefuseWith("write", file.path, static_cast<int>(::GetLastError()));
    DWORD error = WriteBytes(target, bytes);
    if (error != 0) { // nobody else may write while it is open here
        ::SetFilePointerEx(target.Get(), end, nullptr, FILE_BEGIN);
        ::SetEndOfFile(target.Get());
    }
    if (const DWORD fault = target.Close(); error == 0)
        error = fault;
    if (error != 0 && is_made && StateOf(native, old) == 0 && old.size == 0)
        ::DeleteFileW(native.c_str());
    if (error != 0)
        RefuseWith("write", file.path, static_cast<int>(error));
    CountAppended(file);
    places_.push_back(std::move(file));
}

void WindowsDriveFiles::FlushWritten()
{
    for (const OutputFile& place : places_) {
        const DWORD error = FlushFileAt(WideFromUtf8(place.native));
        // Another program may have taken it away since.
        if (error != 0 && !IsMissing(error))
            RefuseWith("flush", place.path, static_cast<int>(error));
    }
    places_.clear();
}

bool WindowsDriveFiles::MakeFolder(std::string_view path)
{
    const std::string absolute = Absolute(path);
    WindowsState state;
    if (absolute.empty() || !HasGoodNames(absolute) || StateAt(absolute, StateOfName, state))
        return false;
    const std::wstring native = names_.NativeOfNew(absolute);
    if (::CreateDirectoryW(native.c_str(), nullptr) != 0) {
        TellWritten({absolute, Utf8FromWide(native)});
        return true;
    }
    const DWORD error = ::GetLastError();
    if (!IsAbsent(error) && !IsTaken(error))
        RefuseWith("make the folder", absolute, static_cast<int>(error));
    return false;
}

bool WindowsDriveFiles::DeleteFile(std::string_view path)
{
    const std::string absolute = PossibleFile(path, "delete");
    KeepFormerAt(path);
    const std::wstring native = names_.Native(absolute);
    const DWORD error = Patiently(
        [&]() -> DWORD { return ::DeleteFileW(native.c_str()) != 0 ? 0 : ::GetLastError(); });
    if (error != 0 && !IsMissing(error))
        RefuseWith("delete", absolute, static_cast<int>(error));
    if (error == 0)
        TellWritten({absolute, Utf8FromWide(native)});
    return error == 0;
}

} // namespace kiv
