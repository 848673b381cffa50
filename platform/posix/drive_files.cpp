#include "platform/posix/drive_files.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/file_errors.h"
#include "platform/posix/folders.h"
#include "platform/posix/paths.h"
#include "platform/queued_drives.h"
#include "text/windows1252.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <unistd.h>

namespace kiv {

namespace {

/// Whether a name in a listing is that of a plain file, or of a folder. 0 or an error number.
int LookAtKind(const std::string& folder, const PosixName& name, bool folders, bool& is_it)
{
    is_it = (name.type == DT_REG && !folders) || (name.type == DT_DIR && folders);
    if (name.type != DT_LNK && name.type != DT_UNKNOWN)
        return 0;
    struct stat state {};
    const int error = StateOf(JoinNative(folder, name.native), state);
    is_it = error == 0 && (folders ? S_ISDIR(state.st_mode) : S_ISREG(state.st_mode));
    return IsAbsent(error) ? 0 : error; // a link to nothing
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

} // namespace

int StateOf(const std::string& native, struct stat& state)
{
    return ::stat(native.c_str(), &state) == 0 ? 0 : errno;
}

int StateOfName(const std::string& native, struct stat& state)
{
    return ::lstat(native.c_str(), &state) == 0 ? 0 : errno;
}

PosixDriveFiles::PosixDriveFiles(const DriveMap& drives) : names_(drives)
{
    SetCurrent(DrivePathOf(ProcessDirectory()));
}

std::optional<std::string> PosixDriveFiles::FolderAt(const std::string& absolute)
{
    std::string native;
    const int error = names_.Folder(absolute, native);
    if (error == 0)
        return native;
    if (!IsAbsent(error))
        RefuseWith("look at", absolute, error);
    return std::nullopt;
}

bool PosixDriveFiles::StateAt(const std::string& absolute, Look look, struct stat& state)
{
    std::string native;
    const int error = names_.Reach(absolute, native,
                                   [&](const std::string& place) { return look(place, state); });
    if (error != 0 && !IsAbsent(error))
        RefuseWith("look at", absolute, error);
    return error == 0;
}

bool PosixDriveFiles::FolderExists(std::string_view path)
{
    const std::string absolute = Absolute(path);
    TellLook(absolute);
    return !absolute.empty() && FolderAt(absolute).has_value();
}

std::string PosixDriveFiles::RealFolder(std::string_view path)
{
    const std::string absolute = Absolute(path);
    const std::optional<std::string> native = absolute.empty() ? std::nullopt : FolderAt(absolute);
    if (!native)
        Refuse("look at", path, kNoSuchFolder);
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(native->c_str(), nullptr),
                                                           &std::free);
    if (!real)
        RefuseWith("look at", absolute, errno);
    return ExactName(real.get());
}

bool PosixDriveFiles::NameIsTaken(std::string_view path)
{
    const std::string absolute = Absolute(path);
    struct stat state {};
    return !absolute.empty() && StateAt(absolute, StateOfName, state);
}

bool PosixDriveFiles::IsLink(std::string_view path)
{
    const std::string absolute = AbsoluteFile(path);
    struct stat state {};
    return !absolute.empty() && StateAt(absolute, StateOfName, state) && S_ISLNK(state.st_mode);
}

void PosixDriveFiles::RefuseUnwritable(std::string_view path)
{
    const std::string absolute = FileToUse(path, "write");
    const std::optional<std::string> folder = FolderAt(std::string(FolderOf(absolute)));
    if (!folder)
        Refuse("write", absolute, kNoSuchFolder);
    if (::faccessat(AT_FDCWD, folder->c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        RefuseWith("write", absolute, errno);
}

FileStamp PosixDriveFiles::Stamp(std::string_view path)
{
    const std::string absolute = AbsoluteFile(path);
    struct stat state {};
    TellLook(absolute);
    if (absolute.empty() || !StateAt(absolute, StateOf, state) || !S_ISREG(state.st_mode))
        return {};
    // The time of the last change of any kind: it cannot be set back as that of the content can.
    constexpr std::int64_t kYoung = 100'000'000;
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return {static_cast<std::uint64_t>(state.st_size),
            Distinct(Nanoseconds(state.st_ctim), Nanoseconds(now), kYoung), true};
}

PlaceState PosixDriveFiles::StateNow(const std::string& absolute)
{
    using Kind = PlaceState::Kind;
    struct stat state {};
    std::string native;
    const int error = names_.Reach(absolute, native,
                                   [&](const std::string& place) { return StateOf(place, state); });
    if (IsAbsent(error))
        return {};
    if (error != 0)
        return {.kind = Kind::refused, .error = error};
    PlaceState now{.kind = S_ISREG(state.st_mode)   ? Kind::file
                           : S_ISDIR(state.st_mode) ? Kind::folder
                                                    : Kind::other,
                   .written = Nanoseconds(state.st_mtim),
                   .changed = Nanoseconds(state.st_ctim),
                   .identity = std::uint64_t{state.st_ino} + (std::uint64_t{state.st_dev} << 48U)};
    if (now.kind == Kind::file)
        now.size = static_cast<std::uint64_t>(state.st_size);
    return now;
}

std::vector<FileName> PosixDriveFiles::Names(const std::string& folder, bool folders)
{
    const std::optional<std::string> native = FolderAt(folder);
    if (!native)
        Refuse("list", folder, kNoSuchFolder);
    std::vector<PosixName> all;
    if (const int error = names_.Read(*native, all))
        RefuseWith("list", folder, error);
    std::vector<FileName> names;
    for (PosixName& name : all) {
        bool is_it = false;
        if (const int error = LookAtKind(*native, name, folders, is_it))
            RefuseWith("look at", WithSeparator(folder) + name.text, error);
        if (is_it)
            names.push_back({std::move(name.text), ExactName(name.native)});
    }
    return names;
}

std::string PosixDriveFiles::PlaceOf(const OutputFile& file)
{
    const std::string_view folder = NativeFolderOf(file.native);
    auto known = folder_places_.find(folder);
    if (known == folder_places_.end())
        known = folder_places_.emplace(folder, std::string()).first;
    std::string& place = known->second;
    struct stat state {};
    if (place.empty() && StateOf(known->first, state) == 0)
        place = std::to_string(state.st_dev) + ':' + std::to_string(state.st_ino) + '/';
    return place.empty() ? place : place + UpperCase(FromUtf8(NativeNameOf(file.native)));
}

std::unique_ptr<FolderLock> PosixDriveFiles::LockFolder(std::string_view folder)
{
    const std::string absolute = Absolute(folder);
    const std::optional<std::string> native = absolute.empty() ? std::nullopt : FolderAt(absolute);
    if (!native)
        Refuse("work in", folder, kNoSuchFolder);
    std::unique_ptr<FolderLock> lock;
    const int error = locks_.Lock(*native, lock);
    if (error == EWOULDBLOCK)
        Refuse("work in", absolute, kOtherRun);
    if (error != 0)
        RefuseWith("work in", absolute, error);
    names_.Forget(); // who held it before has left other names there
    TidyFolder(*native);
    return lock;
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
        return utf8.find('\0') == std::string_view::npos
                   ? AbsolutePath(FromUtf8(utf8), CurrentDirectory())
                   : std::string();
    if (!utf8.empty() && utf8[0] == '/')
        return DrivePathOf(CleanNative(utf8));
    return DrivePathOf(CleanNative(JoinNative(ProcessDirectory(), utf8)));
}

std::string PosixDriveFiles::ToNative(std::string_view path)
{
    const std::string absolute = Absolute(path);
    if (absolute.empty())
        return {};
    struct stat state {};
    std::string native;
    names_.Reach(absolute, native,
                 [&](const std::string& place) { return StateOfName(place, state); });
    return native.empty() ? names_.AsWritten(absolute) : native;
}

void PosixDriveFiles::Refresh()
{
    DriveFiles::Refresh();
    names_.Forget();
    tidied_.clear();
    folder_places_.clear();
    places_.clear();
}

std::unique_ptr<Drives> MakeDriveFiles(const DriveMap& drives, std::size_t threads)
{
    return WithPageQueue(std::make_unique<PosixDriveFiles>(drives), threads);
}

} // namespace kiv
