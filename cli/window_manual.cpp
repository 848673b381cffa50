#include "cli/docs.h"
#include "cli/help.h"
#include "cli/roff.h"
#include "shell/commands.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kiv {

namespace {

constexpr std::array kOptions = std::to_array<HelpEntry>({
    {"-h, --help", "Show how the program is called."},
    {"-v, --version", "Show the version."},
});

/// The topics of the command line that the window shares.
constexpr std::array<std::string_view, 3> kSharedTopics = {"Environment", "Files", "Manual"};

constexpr std::string_view kWindowAbout =
    "kiv shows the working directory, builds its pages and tells what came of it: messages with "
    "their places, the story of each line, what a check finds. A double click on a message opens "
    "the editor.\n\n"
    "DIR is the directory to start in. Without it kiv starts where \"Store dir\" or \"Exit\" has "
    "told it to.";

/// A caption as it is shown: "&&" stands for "&".
std::string Shown(std::string_view caption)
{
    std::string shown(caption);
    if (const std::size_t at = shown.find("&&"); at != std::string::npos)
        shown.erase(at, 1);
    return shown;
}

std::string Entry(std::string_view name, std::string_view about)
{
    return ".TP\n\\fB" + Roff(name) + "\\fR\n" + RoffLines(about);
}

/// The buttons, or the entries of a menu, with what each does.
std::string Entries(std::string_view heading, Menu menu)
{
    std::string entries = ".SS \"" + Roff(heading) + "\"\n";
    for (const Command& command : Commands())
        if (command.menu == menu && !command.IsSeparator())
            entries += Entry(Shown(command.caption), std::string(command.tip) + ".");
    return entries;
}

} // namespace

std::string WindowManualPage()
{
    std::string page = RoffHead("kiv", "build and maintain static websites in a window");
    page.append("[\\fIDIR\\fR]\n.SH DESCRIPTION\n").append(RoffParagraphs(kWindowAbout));
    page.append(".SH OPTIONS\n");
    for (const HelpEntry& option : kOptions)
        page += Entry(option.name, option.about);
    page.append(".SH COMMANDS\n").append(Entries("Buttons", Menu::button));
    for (const MenuTitle& title : MenuTitles())
        page += Entries("Menu " + std::string(title.caption), title.menu);
    for (const Topic& topic : Topics())
        if (std::find(kSharedTopics.begin(), kSharedTopics.end(), topic.heading) !=
            kSharedTopics.end())
            page += RoffSection(topic.heading, topic.text);
    return page.append(".SH \"SEE ALSO\"\n.BR kiv\\-cli (1)\n");
}

} // namespace kiv
