#include "platform/folder_work.h"

#include "platform/drive_path.h"

#include <utility>

namespace kiv {

void WarnOfLeftOut(Reporter& reporter, const std::vector<std::string>& left_out)
{
    for (const std::string& name : left_out)
        reporter.reportmsg("Left out because of the backslash in its name: " + OnOneLine(name));
}

std::vector<FileName> FilesToWorkOn(Machine& machine, std::string_view pattern)
{
    FolderListing listing = machine.files.List(".", pattern);
    WarnOfLeftOut(machine.reporter, listing.left_out);
    return std::move(listing.files);
}

} // namespace kiv
