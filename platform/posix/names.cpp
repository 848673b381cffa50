#include "platform/posix/names.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/posix/folders.h"
#include "platform/posix/paths.h"
#include "platform/temporary_names.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <tuple>

namespace kiv {

namespace {

bool InByteOrder(const PosixName& a, const PosixName& b)
{
    return std::tie(a.text, a.native) < std::tie(b.text, b.native);
}

} // namespace

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

bool PosixNames::IsTooLong(std::string_view absolute) const
{
    // A character takes three bytes at most.
    constexpr std::size_t kSurelyShort = 512;
    if (absolute.size() < kSurelyShort)
        return false;
    // References are longer than what they stand for.
    const std::string native = AsWritten(absolute);
    return native.size() >= PATH_MAX && NativeName(native).size() >= PATH_MAX;
}

int PosixNames::Reach(std::string_view absolute, std::string& native, const Attempt& attempt,
                      Trust trust)
{
    const bool remembered = !folders_.empty() && trust == kLookAtFolder;
    int error = ReachOnce(absolute, native, attempt);
    // A remembered folder that is gone may have come back under another spelling.
    if (remembered && IsMissing(error) && !native.empty() &&
        IsMissing(LookForFolder(std::string(NativeFolderOf(native))))) {
        folders_.clear();
        error = ReachOnce(absolute, native, attempt);
    }
    return error;
}

int PosixNames::ReachOnce(std::string_view absolute, std::string& native, const Attempt& attempt)
{
    native.clear();
    std::string folder;
    if (const int error = FindFolder(FolderOf(absolute), folder))
        return error;
    if (const std::string_view name = NameOf(absolute); !name.empty())
        return ReachIn(folder, name, native, attempt);
    native = folder;
    return attempt(native);
}

int PosixNames::ReachIn(const std::string& folder, std::string_view name, std::string& native,
                        const Attempt& attempt)
{
    const std::string as_written = JoinNative(folder, ToUtf8(name));
    native = as_written;
    int error = attempt(native);
    // The second round is for a remembered name that turned out to be gone. What is too long as it
    // is written may be shorter on the disk: references make a name longer.
    for (int round = 0; round < 2 && IsAbsent(error); ++round) {
        std::optional<std::string> other;
        if (const int fault = OtherSpelling(folder, name, other); fault != 0 && !IsMissing(fault))
            return fault;
        if (!other)
            break;
        native = JoinNative(folder, *other);
        error = attempt(native);
        if (IsMissing(error))
            Drop(folder);
    }
    if (IsMissing(error))
        native = as_written;
    return error;
}

PosixNames::Memory PosixNames::Remembered(std::string_view absolute, std::string& native) const
{
    const std::string_view name = NameOf(absolute);
    const auto folder = folders_.find(FolderOf(absolute));
    if (folder == folders_.end())
        return Memory::kUnknown;
    const auto listed = identities_.find(folder->second);
    if (listed == identities_.end())
        return Memory::kUnknown;
    const Listing& listing = listings_.at(listed->second);
    const auto [alike, end] = listing.equal_range(UpperCase(name));
    native = JoinNative(folder->second, ToUtf8(name));
    if (alike == end) // a name may be too long for the disk
        return NativeNameOf(native).size() <= NAME_MAX ? Memory::kFree : Memory::kUnknown;
    const PosixName& first = alike->second;
    const bool as_written =
        std::next(alike) == end && first.native == NativeNameOf(native) && first.type == DT_REG;
    return as_written ? Memory::kFile : Memory::kUnknown;
}

int PosixNames::Folder(std::string_view absolute, std::string& native)
{
    int error = FindFolder(absolute, native);
    if (error == 0 && IsMissing(LookForFolder(native))) {
        folders_.clear();
        error = FindFolder(absolute, native);
    }
    return error;
}

int PosixNames::FindFolder(std::string_view absolute, std::string& native)
{
    if (const auto known = folders_.find(absolute); known != folders_.end()) {
        native = known->second;
        return 0;
    }
    native = AsWritten(absolute);
    int error = native.empty() ? ENOENT : LookForFolder(native);
    if (IsAbsent(error) && !native.empty())
        error = FindFolderByParts(absolute, native);
    if (error == 0)
        folders_.emplace(absolute, native);
    return error;
}

int PosixNames::FindFolderByParts(std::string_view absolute, std::string& native)
{
    std::string folder = AsWritten(absolute.substr(0, 3)); // "C:\"
    int error = LookForFolder(folder);
    for (const std::string_view part : Split(FromChar(absolute, 4), '\\')) {
        if (error != 0 || part.empty())
            break;
        error = ReachIn(folder, part, native, LookForFolder);
        folder = native;
    }
    native = std::move(folder);
    return error;
}

int PosixNames::OtherSpelling(const std::string& folder, std::string_view name,
                              std::optional<std::string>& other)
{
    std::vector<PosixName> alike;
    if (const int error = Alike(folder, name, alike))
        return error;
    if (alike.empty())
        return 0;
    // A name that the code page cannot hold is found by its text, before others that differ from
    // that in case.
    const auto same = std::find_if(alike.begin(), alike.end(),
                                   [&](const PosixName& entry) { return entry.text == name; });
    other = same == alike.end() ? alike.front().native : same->native;
    return 0;
}

int PosixNames::Alike(const std::string& folder, std::string_view name,
                      std::vector<PosixName>& alike)
{
    const Listing* listing = nullptr;
    if (const int error = ListingOf(folder, listing))
        return error;
    const auto [found, end] = listing->equal_range(UpperCase(name));
    for (auto entry = found; entry != end; ++entry)
        alike.push_back(entry->second);
    std::sort(alike.begin(), alike.end(), InByteOrder);
    return 0;
}

int PosixNames::ListingOf(const std::string& folder, const Listing*& listing)
{
    if (const auto known = identities_.find(folder); known != identities_.end()) {
        listing = &listings_[known->second];
        return 0;
    }
    Identity identity;
    Listing names;
    const auto skip = [&](const struct stat& state) {
        identity = {state.st_dev, state.st_ino};
        return listings_.contains(identity);
    };
    const int error = ForEachName(folder, skip, [&](std::string_view native, unsigned char type) {
        std::string text = FromUtf8(native);
        std::string upper = UpperCase(text);
        names.emplace(std::move(upper), PosixName{std::string(native), std::move(text), type});
    });
    if (error != 0)
        return error;
    identities_.emplace(folder, identity);
    listing = &listings_.try_emplace(identity, std::move(names)).first->second;
    return 0;
}

int PosixNames::Read(const std::string& folder, std::vector<PosixName>& names)
{
    // Who has seen the folder's present state must find these names, too.
    Drop(folder);
    return ForEachName(folder, [&](std::string_view native, unsigned char type) {
        if (!IsOwnName(native))
            names.push_back({std::string(native), FromUtf8(native), type});
    });
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
    const auto known = identities_.find(NativeFolderOf(native));
    if (known == identities_.end())
        return;
    const std::string_view added = NativeNameOf(native);
    PosixName name{std::string(added), FromUtf8(added), 0};
    std::string upper = UpperCase(name.text);
    Listing& listing = listings_[known->second];
    if (const auto alike = listing.equal_range(upper);
        std::none_of(alike.first, alike.second,
                     [&](const auto& entry) { return entry.second.native == added; }))
        listing.emplace(std::move(upper), std::move(name));
}

void PosixNames::Removed(const std::string& native)
{
    const auto known = identities_.find(NativeFolderOf(native));
    if (known == identities_.end())
        return;
    const std::string_view name = NativeNameOf(native);
    Listing& listing = listings_[known->second];
    auto [entry, end] = listing.equal_range(UpperCase(FromUtf8(name)));
    while (entry != end)
        entry = entry->second.native == name ? listing.erase(entry) : std::next(entry);
}

void PosixNames::Forget()
{
    folders_.clear();
    identities_.clear();
    listings_.clear();
}

} // namespace kiv
