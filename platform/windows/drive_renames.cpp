#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/file_errors.h"
#include "platform/windows/api.h"
#include "platform/windows/drive_files.h"
#include "platform/windows/moving.h"
#include "platform/windows/paths.h"
#include "platform/windows/wide_text.h"
#include "text/text.h"

namespace kiv {

std::wstring WindowsDriveFiles::InFolder(std::string_view folder, std::string_view exact) const
{
    return InNativeFolder(names_.Native(folder), WideFromExact(exact));
}

std::string WindowsDriveFiles::ExactNameOf(const std::string& absolute)
{
    if (!HasGoodNames(absolute))
        Refuse("rename", absolute, "Windows allows no such name");
    WindowsState state;
    std::wstring native = InFolder(FolderOf(absolute), NameOf(absolute));
    bool is_there =
        Contains(NameOf(absolute), "&#") && NativeStateAt(native, absolute, StateOf, state);
    if (!is_there) {
        native = names_.Native(absolute);
        is_there = NativeStateAt(native, absolute, StateOf, state);
    }
    if (!is_there || state.is_folder)
        Refuse("rename", absolute, kNoSuchFile);
    return ExactFromWide(NativeNameOf(native));
}

bool WindowsDriveFiles::NameIsTooLong(std::string_view exact)
{
    return WideFromExact(exact).size() > kLongestName;
}

void WindowsDriveFiles::Rename(const std::string& source, const std::string& target,
                               const NameChange& change, Alike alike)
{
    const std::string action = "rename " + source + " to";
    if (!HasGoodNames(target))
        Refuse("rename to", target, "Windows allows no such name");
    const std::wstring old_name = InFolder(FolderOf(source), change.from);
    const std::wstring new_name = InFolder(FolderOf(target), change.to);
    if (old_name == new_name)
        return;
    // The name itself may be free when its text is not.
    const std::wstring other =
        names_.Native(WithSeparator(FolderOf(target)) + TextOfName(change.to));
    WindowsState state;
    if (alike == Alike::text && other != new_name && other != old_name &&
        NativeStateAt(other, target, StateOfName, state))
        Refuse(action, target, kTargetExists);
    const DWORD error = RenameToFree(old_name, new_name);
    if (IsTaken(error) || (error != 0 && StateOfName(new_name, state) == 0))
        Refuse(action, target, kTargetExists);
    if (error != 0)
        RefuseWith(action, target, static_cast<int>(error));
}

} // namespace kiv
