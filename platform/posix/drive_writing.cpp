#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/posix/appending.h"
#include "platform/posix/drafts.h"
#include "platform/posix/drive_files.h"
#include "platform/posix/folders.h"
#include "platform/posix/moving.h"
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

FormerFile PosixDriveFiles::FormerOf(const Descriptor& held, std::size_t size)
{
    std::string bytes;
    if (!held.IsOpen() || size > kLargestFormer || ReadBytes(held.Get(), 0, size, bytes) != 0)
        return FormerFile::Unknown();
    return FormerFile::Holding(bytes);
}

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

void PosixDriveFiles::TidyFolder(const std::string& native)
{
    if (!tidied_.insert(native).second)
        return;
    for (const std::string& saved : DeleteLeftTemporaries(native))
        CountSaved(DrivePathOf(saved));
}

int PosixDriveFiles::PlaceInOld(const OutputFile& file, const Writing& writing)
{
    struct stat old {};
    const Descriptor held(
        ::open(file.native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    if (!held.IsOpen() && errno == ELOOP)
        return EEXIST; // has become a link
    // A file that may not be read may still be replaced.
    const bool known =
        held.IsOpen() ? ::fstat(held.Get(), &old) == 0 : ::stat(file.native.c_str(), &old) == 0;
    if (!known)
        return errno;
    if (!S_ISREG(old.st_mode))
        return EEXIST;
    const bool same_size = static_cast<std::size_t>(old.st_size) == writing.bytes.size();
    if (held.IsOpen() && same_size && HoldsBytes(held.Get(), writing.bytes))
        return writing.is_source ? FlushInPlace(held.Get(), file.native) : 0;
    if (::faccessat(AT_FDCWD, file.native.c_str(), W_OK, AT_EACCESS) != 0)
        return errno;
    if (!IsFormerKnown(file))
        KeepFormer(file, FormerOf(held, static_cast<std::size_t>(old.st_size)));
    Lost lost;
    const Draft draft{file.native, writing.bytes, writing.is_source, writing.expected};
    const int error = PlaceOver(draft, old, lost);
    if (error == 0)
        CountLost(file.path, lost);
    return error;
}

int PosixDriveFiles::Place(const OutputFile& file, const Writing& writing)
{
    RefuseUnexpected(file, writing.expected);
    TidyFolder(std::string(NativeFolderOf(file.native)));
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
    CountWritten(place, writing.bytes);
    places_.push_back(std::move(place.native));
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
    return true;
}

} // namespace kiv
