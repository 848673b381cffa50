#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/file_errors.h"
#include "platform/posix/drive_files.h"
#include "platform/posix/folders.h"
#include "platform/posix/moving.h"
#include "platform/posix/paths.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <cerrno>
#include <climits>
#include <optional>
#include <unistd.h>

namespace kiv {

std::string PosixDriveFiles::ExactNameOf(const std::string& absolute)
{
    struct stat state {};
    std::string native;
    const auto look = [&](const std::string& place) { return StateOf(place, state); };
    int error = ENOENT;
    if (Contains(NameOf(absolute), "&#"))
        if (const auto folder = FolderAt(std::string(FolderOf(absolute)))) {
            native = JoinNative(*folder, NativeName(NameOf(absolute)));
            error = look(native);
        }
    if (error != 0)
        error = names_.Reach(absolute, native, look);
    if (error != 0)
        RefuseWith("rename", absolute, error);
    if (!S_ISREG(state.st_mode))
        Refuse("rename", absolute, kNoPlainFile);
    return ExactName(NativeNameOf(native));
}

bool PosixDriveFiles::IsTakenByOthers(const std::string& folder, std::string_view text,
                                      std::string_view own)
{
    std::vector<PosixName> alike;
    if (const int error = names_.Alike(folder, text, alike))
        RefuseWith("look at", DrivePathOf(folder), error);
    for (const PosixName& name : alike) {
        if (name.native == own)
            continue;
        struct stat state {};
        const std::string native = JoinNative(folder, name.native);
        const int error = StateOfName(native, state);
        if (!IsAbsent(error) && error != 0)
            RefuseWith("look at", DrivePathOf(native), error);
        if (error == 0)
            return true;
    }
    return false;
}

void PosixDriveFiles::Rename(const std::string& source, const std::string& target,
                             const NameChange& change, Alike alike)
{
    const std::optional<std::string> old_folder = FolderAt(std::string(FolderOf(source)));
    const std::optional<std::string> folder = FolderAt(std::string(FolderOf(target)));
    if (!old_folder || !folder)
        Refuse("rename to", target, kNoSuchFolder);
    const std::string old_name = JoinNative(*old_folder, NativeName(change.from));
    const std::string new_name = JoinNative(*folder, NativeName(change.to));
    if (new_name == old_name)
        return;
    const std::string action = "rename " + source + " to";
    const std::string own = *folder == *old_folder ? NativeName(change.from) : std::string();
    if (alike == Alike::text && IsTakenByOthers(*folder, TextOfName(change.to), own))
        Refuse(action, target, kTargetExists);
    int error = RenameToFree(old_name, new_name);
    // Where the file system itself ignores case, the new spelling is the file's own name and so is
    // taken.
    if (error == EEXIST && NamesOfOneFile(old_name, new_name) == 1)
        error = MoveOver(old_name, new_name);
    if (error == EEXIST)
        Refuse(action, target, kTargetExists);
    if (error != 0)
        RefuseWith(action, target, error);
    names_.Removed(old_name);
    names_.Added(new_name);
}

bool PosixDriveFiles::NameIsTooLong(std::string_view exact)
{
    const std::optional<std::string> folder = FolderAt(CurrentDirectory());
    const long longest = folder ? ::pathconf(folder->c_str(), _PC_NAME_MAX) : -1;
    return NativeName(exact).size() > static_cast<std::size_t>(longest > 0 ? longest : NAME_MAX);
}

std::optional<PosixDriveFiles::HalfRenamed>
PosixDriveFiles::FindHalfRenamed(const std::string& source, const std::string& target)
{
    const std::optional<std::string> old_folder = FolderAt(std::string(FolderOf(source)));
    const std::optional<std::string> folder = FolderAt(std::string(FolderOf(target)));
    if (!old_folder || !folder)
        return std::nullopt;
    HalfRenamed names{JoinNative(*old_folder, NativeName(NameOf(source))),
                      JoinNative(*folder, NativeName(NameOf(target)))};
    if (names.from == names.to || NamesOfOneFile(names.from, names.to) < 2)
        return std::nullopt;
    return names;
}

bool PosixDriveFiles::IsHalfRenamed(std::string_view from, std::string_view to)
{
    return FindHalfRenamed(FileToUse(from, "rename"), FileToUse(to, "rename to")).has_value();
}

bool PosixDriveFiles::FinishRename(std::string_view from, std::string_view to)
{
    const std::string source = FileToUse(from, "rename");
    const std::string target = FileToUse(to, "rename to");
    const std::optional<HalfRenamed> names = FindHalfRenamed(source, target);
    if (!names)
        return false;
    if (::unlink(names->from.c_str()) != 0)
        RefuseWith("rename " + source + " to", target, errno);
    names_.Removed(names->from);
    return true;
}

} // namespace kiv
