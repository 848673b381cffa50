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
    std::vector<PosixName> alike_names;
    if (const int error = names_.Alike(folder, TextOfName(exact), alike_names))
        RefuseWith("look at", DrivePathOf(folder), error);
    for (const PosixName& name : alike_names) {
        if (name.native == own || !counts(name))
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
    if (error == EEXIST && NamesOfOneFile(old_name, new_name) == 1)
        error = MoveOver(old_name, new_name);
    if (error == EEXIST)
        Refuse(action, target, "target exists");
    if (error != 0)
        RefuseWith(action, target, error);
    names_.Removed(old_name);
    names_.Added(new_name);
}

bool PosixDriveFiles::FinishRename(std::string_view from, std::string_view to)
{
    const std::string source = FileToUse(from, "rename");
    const std::string target = FileToUse(to, "rename to");
    const std::optional<std::string> old_folder = FolderAt(std::string(FolderOf(source)));
    const std::optional<std::string> folder = FolderAt(std::string(FolderOf(target)));
    if (!old_folder || !folder)
        return false;
    const std::string old_name = JoinNative(*old_folder, NativeName(NameOf(source)));
    const std::string new_name = JoinNative(*folder, NativeName(NameOf(target)));
    if (old_name == new_name || NamesOfOneFile(old_name, new_name) < 2)
        return false;
    if (::unlink(old_name.c_str()) != 0)
        RefuseWith("rename " + source + " to", target, errno);
    names_.Removed(old_name);
    return true;
}

} // namespace kiv
