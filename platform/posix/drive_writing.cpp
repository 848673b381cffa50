#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/posix/appending.h"
#include "platform/posix/drafts.h"
#include "platform/posix/drive_files.h"
#include "platform/posix/folders.h"
#include "platform/posix/moving.h"
#include "platform/posix/page_draft.h"
#include "platform/posix/paths.h"
#include "platform/posix/temporaries.h"

#include <cerrno>
#include <fcntl.h>
#include <set>
#include <unistd.h>

namespace kiv {

namespace {

/// Who has put the bytes there may have been stopped before the disk had them, or their name.
int FlushInPlace(int fd, const std::string& native)
{
    const int error = FlushFile(fd);
    return error == 0 ? FlushFolder(std::string(NativeFolderOf(native))) : error;
}

} // namespace

OutputFile PosixDriveFiles::Open(std::string_view path)
{
    OutputFile file;
    file.path = FileToUse(path, "write");
    // What a listing says spares a look at the disk for every page; where the disk has changed
    // since, Commit finds that out.
    const PosixNames::Memory memory = names_.Remembered(file.path, file.native);
    if (memory == PosixNames::Memory::kUnknown)
        return LookedUp(path);
    file.exists = memory == PosixNames::Memory::kFile;
    return file;
}

OutputFile PosixDriveFiles::LookedUp(std::string_view path)
{
    OutputFile file;
    file.path = FileToUse(path, "write");
    struct stat state {};
    const auto look = [&](const std::string& place) { return StateOfName(place, state); };
    // A remembered folder is not looked at again for each new file; a write into one that has gone
    // comes back here.
    const int error = names_.Reach(file.path, file.native, look, PosixNames::kTrustFolder);
    if (file.native.empty() && IsMissing(error))
        Refuse("write", file.path, kNoSuchFolder);
    if (error == ENOENT)
        return file;
    if (error != 0)
        RefuseWith("write", file.path, error);
    if (S_ISLNK(state.st_mode)) {
        int fault = FollowLinks(file.native);
        if (fault == 0)
            fault = StateOf(file.native, state);
        if (IsMissing(fault))
            return file; // a link to a file that is not there yet
        if (fault != 0)
            RefuseWith("write", file.path, fault);
    }
    if (S_ISDIR(state.st_mode))
        Refuse("write", file.path, kFolderInTheWay);
    if (!S_ISREG(state.st_mode))
        Refuse("write", file.path, kNoPlainFile);
    file.exists = true;
    return file;
}

void PosixDriveFiles::TidyFolder(std::string_view native)
{
    if (tidied_.contains(native))
        return;
    const std::string folder(native);
    tidied_.emplace(folder, TellsAtClosing(folder));
    for (const std::string& saved : DeleteLeftTemporaries(folder))
        CountSaved(DrivePathOf(saved));
}

void PosixDriveFiles::TidyFolderOf(const OutputFile& file)
{
    TidyFolder(NativeFolderOf(file.native));
}

std::unique_ptr<PageDraft> PosixDriveFiles::MakeDraft(const OutputFile& file,
                                                      std::string_view bytes, bool is_former_known)
{
    const auto folder = tidied_.find(NativeFolderOf(file.native));
    return std::make_unique<PosixPageDraft>(file, bytes, is_former_known,
                                            folder == tidied_.end() || folder->second);
}

void PosixDriveFiles::NoteWritten(const OutputFile& file, bool is_new)
{
    if (is_new)
        names_.Added(file.native);
    places_.push_back(file.native);
}

int PosixDriveFiles::PlaceInOld(const OutputFile& file, const Writing& writing)
{
    OldPage old;
    if (const int error = LookAtOldPage(file.native, writing.bytes, old))
        return error;
    if (old.holds_bytes)
        return writing.is_source ? FlushInPlace(old.held.Get(), file.native) : 0;
    if (const int error = MayWrite(file.native))
        return error;
    if (!IsFormerKnown(file))
        KeepFormer(file, old.Former());
    Lost lost;
    const Draft draft{file.native, writing.bytes, writing.is_source, writing.expected};
    const int error = PlaceOver(draft, old.state, lost);
    if (error == 0)
        CountLost(file.path, lost);
    return error;
}

int PosixDriveFiles::Place(const OutputFile& file, const Writing& writing)
{
    RefuseUnexpected(file, writing.expected);
    TidyFolderOf(file);
    if (file.exists)
        return PlaceInOld(file, writing);
    const int error = PlaceNew({file.native, writing.bytes, writing.is_source});
    if (error == 0) {
        KeepFormer(file, FormerFile::Absent());
        names_.Added(file.native);
    }
    return error;
}

void PosixDriveFiles::Write(const OutputFile& file, const Writing& writing)
{
    OutputFile place = file;
    int error = Place(place, writing);
    // Another program has made or taken away the file, or moved its folder, since it was opened.
    if (error == EEXIST || IsMissing(error)) {
        names_.Forget();
        place = LookedUp(file.path);
        error = Place(place, writing);
    }
    if (error == kChangedMeanwhile)
        RefuseChanged(file.path);
    if (error != 0)
        RefuseWith("write", file.path, error);
    if (writing.expected.is_record)
        return;
    NoteWritten(place, false);
    CountWritten(place, writing.bytes);
}

void PosixDriveFiles::Commit(const OutputFile& file, std::string_view bytes)
{
    Write(file, {bytes});
}

void PosixDriveFiles::CommitSource(const OutputFile& file, std::string_view bytes,
                                   const Expectation& expected)
{
    Write(file, {bytes, true, expected});
}

void PosixDriveFiles::AppendToFile(std::string_view path, std::string_view bytes)
{
    KeepFormerAt(path);
    OutputFile file = LookedUp(path);
    if (const int error = AppendTo(file.native, bytes))
        RefuseWith("write", file.path, error);
    if (!file.exists)
        names_.Added(file.native);
    CountAppended(file);
    places_.push_back(std::move(file.native));
}

void PosixDriveFiles::FlushWritten()
{
    std::set<dev_t> disks;
    for (const std::string& place : places_) {
        struct stat state {};
        const std::string folder(NativeFolderOf(place));
        int error = StateOf(folder, state);
        if (error == 0 && disks.insert(state.st_dev).second)
            error = FlushDisk(folder);
        // Another program may have taken it away since.
        if (error != 0 && !IsMissing(error))
            RefuseWith("flush", DrivePathOf(folder), error);
    }
    places_.clear();
}

bool PosixDriveFiles::MakeFolder(std::string_view path)
{
    const std::string absolute = Absolute(path);
    struct stat state {};
    std::string native;
    if (absolute.empty())
        return false;
    int error = names_.Reach(absolute, native,
                             [&](const std::string& place) { return StateOfName(place, state); });
    if (error == 0 || native.empty())
        return false;
    if (error == ENOENT)
        error = ::mkdir(native.c_str(), 0777) == 0 ? 0 : errno;
    if (IsAbsent(error) || error == EEXIST)
        return false;
    if (error != 0)
        RefuseWith("make the folder", absolute, error);
    names_.Added(native);
    TellWritten({absolute, native});
    return true;
}

bool PosixDriveFiles::DeleteFile(std::string_view path)
{
    const std::string absolute = FileToUse(path, "delete");
    KeepFormerAt(path);
    std::string native;
    const int error = names_.Reach(absolute, native, [&](const std::string& place) {
        return ::unlink(place.c_str()) == 0 ? 0 : errno;
    });
    if (IsMissing(error))
        return false;
    if (error != 0)
        RefuseWith("delete", absolute, error);
    names_.Removed(native);
    TellWritten({absolute, native});
    return true;
}

} // namespace kiv
