// The directory tools and the utilities, called for the working directory.
#include "shell/workspace.h"
#include "utilities/picture_lists.h"
#include "utilities/text_conversions.h"

#include <utility>

namespace kiv {

void Workspace::dodirfix(Renaming renaming)
{
    RenameFiles(machine_.files, WebSafePasses(), renaming, Renamed);
    if (renaming == Renaming::real)
        machine_.reporter.Status("Names fixed");
}

void Workspace::dodirt(Renaming renaming)
{
    RenameFiles(machine_.files, ThumbnailPasses(), renaming, Renamed);
    if (renaming == Renaming::real)
        machine_.reporter.Status("_t complete");
}

void Workspace::dorenamefiles(const std::string& find, const std::string& replacement,
                              Renaming renaming)
{
    if (find.empty()) {
        machine_.reporter.reportmsg("Fill in find field, please");
        return;
    }
    RenameFiles(machine_.files, ReplacementPasses(find, replacement), renaming, Renamed);
}

void Workspace::UndoRenames(const Renames& renames)
{
    kiv::UndoRenames(machine_.files, renames, Renamed);
}

std::string Workspace::SampleFileName()
{
    std::vector<std::string> names = machine_.files.ListFiles(".", "*.*");
    return names.empty() ? std::string() : std::move(names.front());
}

void Workspace::GrabTitles(const GrabChoice& choice)
{
    // A choice never takes back what an earlier one has set: only writing the list does.
    grab_flags_.grab_all = grab_flags_.grab_all || choice.all || choice.trimmed;
    grab_flags_.grab_trimmed = grab_flags_.grab_trimmed || choice.trimmed;
    grab_titles(machine_, choice.redirect, grab_flags_);
}

void Workspace::SizePictures(std::string_view folder)
{
    run_picture_sizer(machine_, folder, EditorCommand);
}

std::optional<std::string> Workspace::ConvertText(const ConversionWindow& window,
                                                  std::string_view text)
{
    return Convert(machine_, window, LoadAddresses(machine_.files).recipient, text);
}

void Workspace::ConvertClipboard(ConversionWindow& window)
{
    DoConversion(machine_, window, LoadAddresses(machine_.files).recipient);
}

void Workspace::CloseParagraphs()
{
    machine_.clipboard.SetText(ptop(machine_.clipboard.Text()));
}

bool Workspace::WriteNews(const NewsItem& item, NewsSettings settings)
{
    const NewsDesk desk{std::move(settings), EditorCommand,
                        [this](std::string_view folder) { switchto(folder); }};
    return ComposeNews(machine_, desk, item);
}

} // namespace kiv
