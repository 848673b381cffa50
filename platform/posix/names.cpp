#include "platform/posix/names.h"

#include "platform/drive_path.h"
#include "platform/posix/paths.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>
#include <tuple>

namespace kiv {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using FolderHandle = std::unique_ptr<DIR, CloseFolder>;

int OpenFolder(const std::string& folder, FolderHandle& handle)
{
    handle.reset(::opendir(folder.c_str()));
    return handle ? 0 : errno;
}

int ReadNames(DIR* folder, std::vector<PosixName>& names)
{
    for (;;) {
        errno = 0;
        // Each handle is read by one thread.
        const dirent* entry = ::readdir(folder); // NOLINT(concurrency-mt-unsafe)
        if (entry == nullptr)
            return errno;
        const std::string_view native(&entry->d_name[0]);
        if (native != "." && native != "..")
            names.push_back({std::string(native), FromUtf8(native), entry->d_type});
    }
}

bool InByteOrder(const PosixName& a, const PosixName& b)
{
    return std::tie(a.text, a.native) < std::tie(b.text, b.native);
}

bool IsFolder(const std::string& native)
{
    struct stat state {};
    return ::stat(native.c_str(), &state) == 0 && S_ISDIR(state.st_mode);
}

} // namespace

bool IsMissing(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

PosixNames::PosixNames(const DriveMap& drives)
{
    for (const auto& [letter, folder] : drives)
        if (!folder.empty())
            drives_[ToUpper(letter)] = CleanNative(folder);
    drives_.insert_or_assign('Z', std::string(1, '/'));
}

std::string PosixNames::AsWritten(std::string_view absolute) const
{
    if (!HasDrive(absolute))
        return {};
    const auto drive = drives_.find(absolute[0]);
    if (drive == drives_.end())
        return {};
    const std::string_view parts = FromChar(absolute, 4); // behind "C:\"
    if (parts.empty())
        return drive->second;
    std::string below = ToUtf8(parts);
    std::replace(below.begin(), below.end(), '\\', '/');
    return JoinNative(drive->second, below);
}

int PosixNames::Reach(std::string_view absolute, std::string& native, const Attempt& attempt,
                      Trust trust)
{
    const bool remembered = !folders_.empty() && trust == kLookAtFolder;
    int error = ReachOnce(absolute, native, attempt);
    // A remembered folder that is gone may have come back under another spelling.
    if (remembered && IsMissing(error) && !native.empty() &&
        !IsFolder(std::string(NativeFolderOf(native)))) {
        folders_.clear();
        error = ReachOnce(absolute, native, attempt);
    }
    return error;
}

int PosixNames::ReachOnce(std::string_view absolute, std::string& native, const Attempt& attempt)
{
    native.clear();
    const std::string_view name = NameOf(absolute);
    const std::optional<std::string> folder = FindFolder(FolderOf(absolute));
    if (!folder)
        return ENOENT;
    native = name.empty() ? *folder : JoinNative(*folder, ToUtf8(name));
    int error = attempt(native);
    const std::string as_written = native;
    // References make a name longer than it is on the disk.
    const auto may_be_another = [](int e) { return IsMissing(e) || e == ENAMETOOLONG; };
    // The second round is for a remembered name that turned out to be gone.
    for (int round = 0; round < 2 && may_be_another(error) && !name.empty(); ++round) {
        const std::optional<PosixName> other = OtherSpelling(*folder, name);
        if (!other)
            break;
        native = JoinNative(*folder, other->native);
        error = attempt(native);
        if (IsMissing(error))
            Drop(*folder);
    }
    if (IsMissing(error))
        native = as_written;
    return error;
}

PosixNames::Memory PosixNames::Remembered(std::string_view absolute, std::string& native) const
{
    const std::string_view name = NameOf(absolute);
    const auto folder = folders_.find(std::string(FolderOf(absolute)));
    if (folder == folders_.end())
        return Memory::kUnknown;
    const auto listed = identities_.find(folder->second);
    if (listed == identities_.end())
        return Memory::kUnknown;
    const Listing& listing = listings_.at(listed->second);
    const auto alike = listing.find(UpperCase(name));
    native = JoinNative(folder->second, ToUtf8(name));
    if (alike == listing.end() || alike->second.empty()) // a name may be too long for the disk
        return NativeNameOf(native).size() <= NAME_MAX ? Memory::kFree : Memory::kUnknown;
    const PosixName& only = alike->second.front();
    const bool as_written =
        alike->second.size() == 1 && only.native == NativeNameOf(native) && only.type == DT_REG;
    return as_written ? Memory::kFile : Memory::kUnknown;
}

std::optional<std::string> PosixNames::Folder(std::string_view absolute)
{
    std::optional<std::string> folder = FindFolder(absolute);
    if (folder && !IsFolder(*folder)) {
        folders_.clear();
        folder = FindFolder(absolute);
    }
    return folder;
}

std::optional<std::string> PosixNames::FindFolder(std::string_view absolute)
{
    std::string key(absolute);
    const auto known = folders_.find(key);
    if (known != folders_.end())
        return known->second;
    std::string native = AsWritten(absolute);
    if (native.empty())
        return std::nullopt;
    if (!IsFolder(native)) {
        if (NameOf(absolute).empty())
            return std::nullopt;
        const int error = ReachOnce(absolute, native, [](const std::string& place) {
            return IsFolder(place) ? 0 : ENOENT;
        });
        if (error != 0)
            return std::nullopt;
    }
    folders_.emplace(std::move(key), native);
    return native;
}

std::optional<PosixName> PosixNames::OtherSpelling(const std::string& folder, std::string_view name)
{
    const std::vector<PosixName> alike = Alike(folder, name);
    if (alike.empty())
        return std::nullopt;
    // A name that the code page cannot hold is found by its text, before others that differ from
    // that in case.
    const auto same = std::find_if(alike.begin(), alike.end(),
                                   [&](const PosixName& entry) { return entry.text == name; });
    return same == alike.end() ? alike.front() : *same;
}

std::vector<PosixName> PosixNames::Alike(const std::string& folder, std::string_view name)
{
    const Listing* listing = ListingOf(folder);
    if (listing == nullptr)
        return {};
    const auto alike = listing->find(UpperCase(name));
    return alike == listing->end() ? std::vector<PosixName>() : alike->second;
}

PosixNames::Listing* PosixNames::ListingOf(const std::string& folder)
{
    const auto known = identities_.find(folder);
    if (known != identities_.end())
        return &listings_[known->second];
    FolderHandle handle;
    struct stat state {};
    std::vector<PosixName> names;
    if (OpenFolder(folder, handle) != 0 || ::fstat(::dirfd(handle.get()), &state) != 0)
        return nullptr;
    const Identity identity(state.st_dev, state.st_ino);
    const bool listed = listings_.count(identity) != 0;
    if (!listed && ReadNames(handle.get(), names) != 0)
        return nullptr;
    identities_.emplace(folder, identity);
    Listing& listing = listings_[identity];
    for (PosixName& name : names)
        listing[UpperCase(name.text)].push_back(std::move(name));
    for (auto& [text, alike] : listing)
        std::sort(alike.begin(), alike.end(), InByteOrder);
    return &listing;
}

int PosixNames::Read(const std::string& folder, std::vector<PosixName>& names)
{
    FolderHandle handle;
    if (const int error = OpenFolder(folder, handle))
        return error;
    // Who has seen the folder's present state must find these names, too.
    Drop(folder);
    return ReadNames(handle.get(), names);
}

void PosixNames::Drop(const std::string& folder)
{
    const auto known = identities_.find(folder);
    if (known == identities_.end())
        return;
    const Identity identity = known->second;
    listings_.erase(identity);
    for (auto entry = identities_.begin(); entry != identities_.end();)
        entry = entry->second == identity ? identities_.erase(entry) : std::next(entry);
}

void PosixNames::Added(const std::string& native)
{
    const auto known = identities_.find(std::string(NativeFolderOf(native)));
    if (known == identities_.end())
        return;
    PosixName name{std::string(NativeNameOf(native)), FromUtf8(NativeNameOf(native)), 0};
    std::vector<PosixName>& alike = listings_[known->second][UpperCase(name.text)];
    const auto place = std::lower_bound(alike.begin(), alike.end(), name, InByteOrder);
    if (place == alike.end() || place->native != name.native)
        alike.insert(place, std::move(name));
}

void PosixNames::Removed(const std::string& native)
{
    const auto known = identities_.find(std::string(NativeFolderOf(native)));
    if (known == identities_.end())
        return;
    const std::string_view name = NativeNameOf(native);
    std::vector<PosixName>& alike = listings_[known->second][UpperCase(FromUtf8(name))];
    alike.erase(std::remove_if(alike.begin(), alike.end(),
                               [&](const PosixName& entry) { return entry.native == name; }),
                alike.end());
}

void PosixNames::Forget()
{
    folders_.clear();
    identities_.clear();
    listings_.clear();
}

} // namespace kiv
