#include "platform/folder_work.h"

#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "text/windows1252.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

constexpr std::string_view kMakeFolder = "make the folder";

/// The end of a native path that names what is not there yet.
std::string_view MissingPart(Machine& machine, std::string_view native)
{
    std::size_t end = native.size();
    while (end > 0 &&
           !machine.files.FolderExists(machine.native_paths.FromNative(native.substr(0, end)))) {
        const std::size_t separator = native.substr(0, end - 1).find_last_of("/\\");
        end = separator == std::string_view::npos ? 0 : separator + 1;
    }
    return native.substr(end);
}

/// Throws when something keeps a folder from being made at a path.
void RefuseInTheWay(Files& files, std::string_view path)
{
    if (files.IsLink(path) && !files.FileExists(path))
        Refuse(kMakeFolder, path, kLinkToNothing);
    if (files.NameIsTaken(path))
        Refuse(kMakeFolder, path,
               FileReason("a file has this name",
                          "Give the file another name, or take another one for the folder."));
    if (files.NameIsTooLong(NameOf(path)))
        Refuse(kMakeFolder, path, FileReason("the name is too long", "Take a shorter name."));
}

} // namespace

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

void MakeFolders(Files& files, const std::string& folder)
{
    std::vector<std::string> missing;
    for (std::string_view at = folder; !NameOf(at).empty() && !files.FolderExists(at);
         at = FolderOf(at))
        missing.emplace_back(at);
    std::reverse(missing.begin(), missing.end());
    for (const std::string& each : missing)
        files.MakeFolder(each);
}

void NeedFolder(Files& files, const std::string& folder)
{
    MakeFolders(files, folder);
    if (files.FolderExists(folder))
        return;
    for (std::string_view at = folder; !NameOf(at).empty() && !files.FolderExists(at);
         at = FolderOf(at))
        RefuseInTheWay(files, at);
    Refuse(kMakeFolder, folder,
           FileReason("there is no such drive, or the path is too long",
                      "Look at the spelling of the path, or take a shorter one."));
}

void NeedTypedFolder(Machine& machine, std::string_view native, const std::string& folder)
{
    const std::string_view part = MissingPart(machine, native);
    if (ToUtf8(FromUtf8(part)) != part)
        Refuse(kMakeFolder, folder,
               FileReason("its name has characters that kiv cannot give to a new folder",
                          "Make the folder with another program, and start again."));
    NeedFolder(machine.files, folder);
}

} // namespace kiv
