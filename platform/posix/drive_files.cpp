#include "platform/drive_files_common.h"
#include "platform/drive_path.h"
#include "platform/drives.h"
#include "platform/exact_names.h"
#include "platform/file_errors.h"
#include "platform/posix/names.h"
#include "platform/posix/paths.h"
#include "platform/posix/writing.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace kiv {

namespace {

using State = struct stat;

int StateOf(const std::string& native, State& state)
{
    return ::stat(native.c_str(), &state) == 0 ? 0 : errno;
}

int StateOfOpen(int fd, State& state)
{
    return ::fstat(fd, &state) == 0 ? 0 : errno;
}

/// The state of the name itself, not of what a link points to.
int StateOfName(const std::string& native, State& state)
{
    return ::lstat(native.c_str(), &state) == 0 ? 0 : errno;
}

bool IsKind(const std::string& folder, const PosixName& name, bool folders)
{
    if (name.type == DT_REG || name.type == DT_DIR)
        return (name.type == DT_DIR) == folders;
    if (name.type != DT_LNK && name.type != DT_UNKNOWN)
        return false;
    State state{};
    if (StateOf(JoinNative(folder, name.native), state) != 0)
        return false;
    return folders ? S_ISDIR(state.st_mode) : S_ISREG(state.st_mode);
}

/// Whether two names lead to the same file, which has only one name.
bool IsOneFile(const std::string& a, const std::string& b)
{
    State first{};
    State second{};
    return StateOfName(a, first) == 0 && StateOfName(b, second) == 0 &&
           first.st_ino == second.st_ino && first.st_dev == second.st_dev && first.st_nlink == 1;
}

std::int64_t Nanoseconds(const timespec& time)
{
    return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

std::string ProcessDirectory()
{
    const std::unique_ptr<char, decltype(&std::free)> folder(::getcwd(nullptr, 0), &std::free);
    return folder ? folder.get() : "/";
}

class PosixDriveFiles : public DriveFiles {
  public:
    explicit PosixDriveFiles(const DriveMap& drives) : names_(drives)
    {
        SetCurrent(DrivePathOf(ProcessDirectory()));
    }

    bool FolderExists(std::string_view path) override;
    bool NameIsTaken(std::string_view path) override;
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
    void Refresh() override;

  protected:
    std::vector<FileName> Names(const std::string& folder, bool folders) override;
    std::string ExactNameOf(const std::string& absolute) override;
    void Rename(const std::string& source, const std::string& target, const NameChange& change,
                Alike alike) override;

  private:
    /// The drive path of a clean, absolute native path.
    std::string DrivePathOf(std::string_view native) const;
    /// Opens a plain file for reading.
    Descriptor OpenToRead(std::string_view path, State& state);
    /// Open by the present state of the disk.
    OutputFile LookedUp(std::string_view path);
    /// Whether another file than `own` (native name; empty: any) bears a name that counts as
    /// `exact`.
    bool IsTakenByOthers(const std::string& folder, std::string_view exact, Alike alike,
                         std::string_view own);
    /// Writes what Open has found a place for: 0 or an error number.
    int Place(const OutputFile& file, std::string_view bytes);

    PosixNames names_;
};

bool PosixDriveFiles::FolderExists(std::string_view path)
{
    const std::string absolute = Absolute(path);
    return !absolute.empty() && names_.Folder(absolute).has_value();
}

bool PosixDriveFiles::NameIsTaken(std::string_view path)
{
    const std::string absolute = Absolute(path);
    State state{};
    std::string native;
    return !absolute.empty() && names_.Reach(absolute, native, [&](const std::string& place) {
        return StateOfName(place, state);
    }) == 0;
}

FileStamp PosixDriveFiles::Stamp(std::string_view path)
{
    const std::string absolute = AbsoluteFile(path);
    if (absolute.empty())
        return {};
    State state{};
    std::string native;
    const int error = names_.Reach(absolute, native,
                                   [&](const std::string& place) { return StateOf(place, state); });
    if (error != 0 || !S_ISREG(state.st_mode))
        return {};
    // The time of the last change of any kind: it cannot be set back as that of the content can.
    constexpr std::int64_t kYoung = 100'000'000;
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return {static_cast<std::uint64_t>(state.st_size),
            Distinct(Nanoseconds(state.st_ctim), Nanoseconds(now), kYoung), true};
}

Descriptor PosixDriveFiles::OpenToRead(std::string_view path, State& state)
{
    const std::string absolute = FileToUse(path, "read");
    int fd = -1;
    std::string native;
    const int error = names_.Reach(absolute, native, [&](const std::string& place) {
        // Without waiting for the other end of what turns out to be a pipe.
        fd = ::open(place.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        return fd >= 0 ? 0 : errno;
    });
    if (error != 0)
        RefuseWith("read", absolute, error);
    if (::fstat(fd, &state) != 0 || !S_ISREG(state.st_mode)) {
        ::close(fd);
        Refuse("read", absolute, "no plain file");
    }
    return Descriptor(fd);
}

std::string PosixDriveFiles::ReadFile(std::string_view path)
{
    State state{};
    const Descriptor file = OpenToRead(path, state);
    std::string bytes;
    if (const int error = ReadBytes(file.Get(), 0, static_cast<std::size_t>(state.st_size), bytes))
        RefuseWith("read", path, error);
    return bytes;
}

std::string PosixDriveFiles::ReadPart(std::string_view path, std::uint64_t offset,
                                      std::size_t count)
{
    State state{};
    const Descriptor file = OpenToRead(path, state);
    const auto size = static_cast<std::uint64_t>(state.st_size);
    std::string bytes;
    if (offset >= size)
        return bytes;
    const auto there = static_cast<std::size_t>(std::min<std::uint64_t>(count, size - offset));
    if (const int error = ReadBytes(file.Get(), static_cast<off_t>(offset), there, bytes))
        RefuseWith("read", path, error);
    return bytes;
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
    State state{};
    const auto look = [&](const std::string& place) { return StateOfName(place, state); };
    // A remembered folder is not looked at again for each new file; a write into one that has gone
    // comes back here.
    const int error = names_.Reach(file.path, file.native, look, PosixNames::kTrustFolder);
    if (file.native.empty())
        Refuse("write", file.path, "no such folder");
    if (error == ENOENT)
        return file;
    if (error != 0)
        RefuseWith("write", file.path, error);
    if (S_ISLNK(state.st_mode)) {
        file.native = FollowLinks(file.native);
        if (StateOf(file.native, state) != 0)
            return file; // a link to a file that is not there yet
    }
    if (S_ISDIR(state.st_mode))
        Refuse("write", file.path, "a folder has this name");
    if (!S_ISREG(state.st_mode))
        Refuse("write", file.path, "no plain file");
    file.exists = true;
    return file;
}

int PosixDriveFiles::Place(const OutputFile& file, std::string_view bytes)
{
    if (!file.exists) {
        const int error = WriteNew(file.native, bytes);
        if (error == 0)
            names_.Added(file.native);
        return error;
    }
    State old{};
    {
        const Descriptor held(
            ::open(file.native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
        if (!held.IsOpen() && errno == ELOOP)
            return EEXIST; // has become a link
        // A file that may not be read may still be replaced.
        const int error = held.IsOpen() ? StateOfOpen(held.Get(), old) : StateOf(file.native, old);
        if (error != 0)
            return error;
        if (!S_ISREG(old.st_mode))
            return EEXIST;
        const bool same_size = static_cast<std::size_t>(old.st_size) == bytes.size();
        if (held.IsOpen() && same_size && HoldsBytes(held.Get(), bytes))
            return 0;
    }
    if (::faccessat(AT_FDCWD, file.native.c_str(), W_OK, AT_EACCESS) != 0)
        return errno;
    return WriteOver(file.native, old, bytes);
}

void PosixDriveFiles::Commit(const OutputFile& file, std::string_view bytes)
{
    int error = Place(file, bytes);
    // Another program has made or taken away the file, or moved its folder, since it was opened.
    if (error == EEXIST || IsMissing(error)) {
        names_.Forget();
        error = Place(LookedUp(file.path), bytes);
    }
    if (error != 0)
        RefuseWith("write", file.path, error);
    CountWritten(file.path);
}

void PosixDriveFiles::AppendToFile(std::string_view path, std::string_view bytes)
{
    const OutputFile file = LookedUp(path);
    const Descriptor target(
        ::open(file.native.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
    State old{};
    if (!target.IsOpen() || ::fstat(target.Get(), &old) != 0)
        RefuseWith("write", file.path, errno);
    if (!file.exists)
        names_.Added(file.native);
    if (const int error = WriteBytes(target.Get(), bytes)) {
        const bool undone = ::ftruncate(target.Get(), old.st_size) == 0;
        if (undone && !file.exists && ::unlink(file.native.c_str()) == 0)
            names_.Removed(file.native);
        RefuseWith("write", file.path, error);
    }
    CountWritten(file.path);
}

bool PosixDriveFiles::MakeFolder(std::string_view path)
{
    const std::string absolute = Absolute(path);
    State state{};
    std::string native;
    const int error =
        absolute.empty() ? EINVAL : names_.Reach(absolute, native, [&](const std::string& place) {
            return StateOfName(place, state);
        });
    if (error != ENOENT || native.empty() || ::mkdir(native.c_str(), 0777) != 0)
        return false;
    names_.Added(native);
    return true;
}

void PosixDriveFiles::DeleteFile(std::string_view path)
{
    const std::string absolute = FileToUse(path, "delete");
    std::string native;
    const int error = names_.Reach(absolute, native, [&](const std::string& place) {
        return ::unlink(place.c_str()) == 0 ? 0 : errno;
    });
    if (error != 0)
        RefuseWith("delete", absolute, error);
    names_.Removed(native);
}

std::string PosixDriveFiles::ExactNameOf(const std::string& absolute)
{
    State state{};
    std::string native;
    const auto look = [&](const std::string& place) { return StateOf(place, state); };
    int error = ENOENT;
    if (Contains(NameOf(absolute), "&#"))
        if (const std::optional<std::string> folder = names_.Folder(FolderOf(absolute))) {
            native = JoinNative(*folder, NativeName(NameOf(absolute)));
            error = look(native);
        }
    if (error != 0)
        error = names_.Reach(absolute, native, look);
    if (error != 0)
        RefuseWith("rename", absolute, error);
    if (!S_ISREG(state.st_mode))
        Refuse("rename", absolute, "no plain file");
    return ExactName(NativeNameOf(native));
}

bool PosixDriveFiles::IsTakenByOthers(const std::string& folder, std::string_view exact,
                                      Alike alike, std::string_view own)
{
    const std::string upper = UpperCase(exact);
    const auto counts = [&](const PosixName& name) {
        return alike == Alike::text || UpperCase(ExactName(name.native)) == upper;
    };
    State state{};
    for (const PosixName& name : names_.Alike(folder, TextOfName(exact)))
        if (name.native != own && counts(name) &&
            StateOfName(JoinNative(folder, name.native), state) == 0)
            return true;
    return false;
}

void PosixDriveFiles::Rename(const std::string& source, const std::string& target,
                             const NameChange& change, Alike alike)
{
    const std::optional<std::string> old_folder = names_.Folder(FolderOf(source));
    const std::optional<std::string> folder = names_.Folder(FolderOf(target));
    if (!old_folder || !folder)
        Refuse("rename to", target, "no such folder");
    const std::string old_name = JoinNative(*old_folder, NativeName(change.from));
    const std::string new_name = JoinNative(*folder, NativeName(change.to));
    if (new_name == old_name)
        return;
    const std::string action = "rename " + source + " to";
    const std::string own = *folder == *old_folder ? NativeName(change.from) : std::string();
    if (IsTakenByOthers(*folder, change.to, alike, own))
        Refuse(action, target, "target exists");
    int error = RenameToFree(old_name, new_name);
    // Where the file system itself ignores case, the new spelling is the file's own name and so is
    // taken.
    if (error == EEXIST && IsOneFile(old_name, new_name))
        error = ::rename(old_name.c_str(), new_name.c_str()) == 0 ? 0 : errno;
    if (error == EEXIST)
        Refuse(action, target, "target exists");
    if (error != 0)
        RefuseWith(action, target, error);
    names_.Removed(old_name);
    names_.Added(new_name);
}

std::vector<FileName> PosixDriveFiles::Names(const std::string& folder, bool folders)
{
    const std::optional<std::string> native = names_.Folder(folder);
    if (!native)
        Refuse("list", folder, "no such folder");
    std::vector<PosixName> all;
    if (const int error = names_.Read(*native, all))
        RefuseWith("list", folder, error);
    std::vector<FileName> names;
    for (PosixName& name : all)
        if (IsKind(*native, name, folders))
            names.push_back({std::move(name.text), ExactName(name.native)});
    return names;
}

std::string PosixDriveFiles::DriveLetters()
{
    std::string letters;
    for (const auto& [letter, folder] : names_.Drives())
        letters.push_back(letter);
    return letters;
}

std::string PosixDriveFiles::DrivePathOf(std::string_view native) const
{
    char letter = 'Z';
    std::string_view longest = "/";
    for (const auto& [drive, folder] : names_.Drives()) {
        const bool holds = native == folder || native.substr(0, folder.size() + 1) == folder + "/";
        if (holds && folder.size() > longest.size()) {
            letter = drive;
            longest = folder;
        }
    }
    const std::string root = std::string(1, letter) + ":\\";
    return AbsolutePath(root + FromUtf8(native.substr(longest.size())), root);
}

std::string PosixDriveFiles::FromNative(std::string_view utf8)
{
    if (HasDrive(utf8) || (!utf8.empty() && utf8[0] == '\\'))
        return Absolute(FromUtf8(utf8));
    if (!utf8.empty() && utf8[0] == '/')
        return DrivePathOf(CleanNative(utf8));
    return DrivePathOf(CleanNative(JoinNative(ProcessDirectory(), utf8)));
}

std::string PosixDriveFiles::ToNative(std::string_view path)
{
    const std::string absolute = Absolute(path);
    if (absolute.empty())
        return {};
    State state{};
    std::string native;
    names_.Reach(absolute, native,
                 [&](const std::string& place) { return StateOfName(place, state); });
    return native.empty() ? names_.AsWritten(absolute) : native;
}

void PosixDriveFiles::Refresh()
{
    DriveFiles::Refresh();
    names_.Forget();
}

} // namespace

std::unique_ptr<Drives> MakeDriveFiles(const DriveMap& drives)
{
    return std::make_unique<PosixDriveFiles>(drives);
}

} // namespace kiv
