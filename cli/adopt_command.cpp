// The command that makes a site of pages which are there.
#include "cli/call_argument.h"
#include "cli/commands.h"
#include "cli/face.h"
#include "cli/report.h"
#include "cli/shown_path.h"
#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/folder_work.h"
#include "shell/site_adoption.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <string>

namespace kiv {

namespace {

/// The drive path of a folder as it was typed.
std::string FolderOfCall(NativePaths& paths, const std::string& native)
{
    std::string folder = native.empty() ? "" : paths.FromNative(native);
    if (folder.empty())
        Refuse("read", FromUtf8(native), kNoSuchFolder);
    return folder;
}

/// "same bytes              shared    about.html", and why it is not shared.
std::string AdoptedPageLine(const AdoptedPage& page)
{
    const auto padded = [](std::string text, std::size_t width) {
        text.resize(std::max(width, text.size() + 2), ' ');
        return text;
    };
    std::string line = Joined({"  ", padded(LikenessWords(page.comparison), 24),
                               padded(std::string(page.way), 10), OnOneLine(page.name)});
    if (!page.why.empty())
        Append(line, {" (", page.why, ")"});
    return ToUtf8(line) + "\n";
}

std::size_t CountOf(const Adoption& adoption, std::string_view way)
{
    return static_cast<std::size_t>(std::ranges::count(adoption.pages, way, &AdoptedPage::way));
}

std::string Summary(const Adoption& adoption)
{
    std::string text = Joined(
        {"In the order of ", OrderWords(adoption.ordered_by), ": ",
         std::to_string(CountOf(adoption, WayWords(Way::templated))), " through the template, ",
         std::to_string(CountOf(adoption, WayWords(Way::shared))), " with a shared head and tail, ",
         std::to_string(CountOf(adoption, WayWords(Way::naked))), " naked, ",
         std::to_string(CountOf(adoption, WayWords(Way::as_is))), " as it is, ",
         std::to_string(CountOf(adoption, "copied")), " copied; ", std::to_string(adoption.others),
         adoption.others == 1 ? " other file" : " other files", " copied\n"});
    if (adoption.sections.size() > 1)
        Append(text, {"More pages than a list holds: a group of ",
                      std::to_string(adoption.sections.size()), " lists\n"});
    return text;
}

} // namespace

void RunAdopt(CallDesk& desk, const GivenValues& given)
{
    Machine& machine = desk.workspace.machine();
    NativePaths& paths = machine.native_paths;
    const std::string shell = ShellFolder(paths, "");
    const std::string folder = FolderOfCall(paths, given.Native("FOLDER"));
    const std::string target =
        given.Has("--to") ? FolderOfCall(paths, given.Native("--to"))
                          : AdoptionTarget(folder, paths.FromNative(shell.empty() ? "." : shell));
    if (given.Has("--to")) {
        RefuseTarget(machine.files, folder, target);
        NeedTypedFolder(machine, given.Native("--to"), target);
    }
    desk.report.adoption = AdoptFolder(machine, folder, target);
    const Adoption& adoption = *desk.report.adoption;
    std::string text = Summary(adoption);
    for (const AdoptedPage& page : adoption.pages)
        text += AdoptedPageLine(page);
    const std::string seen = SeenFrom(shell, NativeOrDrive(paths, target));
    if (!adoption.sections.empty()) // there is a list
        Append(text, {"Next:\n  kiv-cli ", adoption.sections.size() > 1 ? "group " : "build ",
                      CallArgument(seen), "  makes the pages\n"});
    desk.report.guide = text;
}

} // namespace kiv
