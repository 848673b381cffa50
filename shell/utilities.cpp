#include "shell/utilities.h"

#include "shell/workspace.h"
#include "utilities/conversions.h"
#include "utilities/picture_lists.h"
#include "utilities/text_conversions.h"
#include "utilities/title_grab.h"

#include <utility>

namespace kiv {

void GrabTitles(Workspace& workspace, const GrabChoice& choice)
{
    // A choice never takes back what an earlier one has set: only writing the list does.
    GrabFlags& flags = workspace.memory.grab_flags;
    flags.grab_all = flags.grab_all || choice.all || choice.trimmed;
    flags.grab_trimmed = flags.grab_trimmed || choice.trimmed;
    grab_titles(workspace.machine(), choice.redirect, flags);
}

void SizePictures(Workspace& workspace, std::string_view folder)
{
    run_picture_sizer(workspace.machine(), folder, workspace.EditorCommand);
}

std::optional<std::string> ConvertText(Workspace& workspace, const ConversionWindow& window,
                                       std::string_view text)
{
    Machine& machine = workspace.machine();
    return Convert(machine, window, LoadAddresses(machine.files).recipient, text);
}

void ConvertClipboard(Workspace& workspace, ConversionWindow& window)
{
    Machine& machine = workspace.machine();
    DoConversion(machine, window, LoadAddresses(machine.files).recipient);
}

void CloseParagraphs(Workspace& workspace)
{
    Clipboard& clipboard = workspace.machine().clipboard;
    clipboard.SetText(ptop(clipboard.Text()));
}

bool WriteNews(Workspace& workspace, const NewsItem& item, NewsSettings settings)
{
    const NewsDesk desk{std::move(settings), workspace.EditorCommand,
                        [&](std::string_view folder) { workspace.switchto(folder); }};
    return ComposeNews(workspace.machine(), desk, item);
}

} // namespace kiv
