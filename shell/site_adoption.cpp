#include "shell/site_adoption.h"

#include "platform/drive_path.h"
#include "platform/folder_work.h"

#include <memory>

namespace kiv {

std::string AdoptionTarget(std::string_view folder, std::string_view where)
{
    const std::string name = ThisDirNameOf(folder);
    return AbsolutePath((name.empty() ? "old" : name) + "-site", where);
}

Adoption AdoptFolder(Machine& machine, const std::string& folder, const std::string& target)
{
    RefuseTarget(machine.files, folder, target);
    NeedFolder(machine.files, target);
    const std::unique_ptr<FolderLock> lock = machine.files.LockFolder(target);
    return AdoptSite(machine, folder, target);
}

} // namespace kiv
