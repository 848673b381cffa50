#include "shell/editors.h"

#include "platform/drive_path.h"
#include "platform/programs.h"
#include "platform/run_error.h"
#include "shell/list_files.h"
#include "text/joined_text.h"

#include <array>
#include <string_view>

namespace kiv {

namespace {

/// An editor, or a terminal.
struct Editor {
    std::string_view program;    // by which it is found
    std::string_view options;    // "": none, the file is put behind it
    std::string_view place = {}; // its path in a folder of programs
};

constexpr auto kEditors = std::to_array<Editor>({
    {"gnome-text-editor", ""},
    {"gedit", "+%l %f"},
    {"kate", "--line %l %f"},
    {"kwrite", "--line %l %f"},
    {"mousepad", "--line %l %f"},
    {"pluma", "+%l %f"},
    {"xed", "+%l %f"},
    {"featherpad", "+%l %f"},
    {"l3afpad", "--jump=%l %f"},
    {"leafpad", "--jump=%l %f"},
    {"geany", "--line %l %f"},
    {"notepad++", "-n%l %f", "Notepad++\\notepad++.exe"},
    {"code", "--goto %f:%l", "Microsoft VS Code\\Code.exe"},
    {"codium", "--goto %f:%l", "VSCodium\\VSCodium.exe"},
    {"subl", "%f:%l", "Sublime Text\\subl.exe"},
    {"gvim", "+%l %f"},
});

// Where a program with a terminal of its own is wanted, the first of these that is there runs it.
constexpr std::array<Editor, 6> kTerminals = {{
    {"x-terminal-emulator", "-e"},
    {"konsole", "-e"},
    {"gnome-terminal", "--"},
    {"xfce4-terminal", "-x"},
    {"alacritty", "-e"},
    {"xterm", "-e"},
}};

constexpr std::array<Editor, 2> kTerminalEditors = {{
    {"vim", "+%l %f"},
    {"nano", "+%l %f"},
}};

// Each opens a text file in some way, on one system or the other.
constexpr std::array<Editor, 2> kLastResorts = {{
    {"xdg-open", ""},
    {"notepad", ""},
}};

std::string CommandOf(std::string_view program, std::string_view options)
{
    return Joined({program, options.empty() ? "" : " ", options});
}

/// The command with which an editor can be started here; "" when it is not there.
std::string CommandHere(const Editor& editor, Programs& programs,
                        std::span<const std::string> program_folders)
{
    if (programs.Finds(editor.program))
        return CommandOf(editor.program, editor.options);
    for (const std::string& folder : program_folders) {
        const std::string program = Joined({"\"", WithSeparator(folder), editor.place, "\""});
        if (!editor.place.empty() && programs.Finds(program))
            return CommandOf(program, editor.options);
    }
    return {};
}

/// The first terminal that is there, with what has to stand before a program; "" when none is.
std::string TerminalHere(Programs& programs)
{
    for (const Editor& terminal : kTerminals)
        if (programs.Finds(terminal.program))
            return CommandOf(terminal.program, terminal.options);
    return {};
}

} // namespace

std::vector<std::string> InstalledEditors(Programs& programs,
                                          std::span<const std::string> program_folders)
{
    std::vector<std::string> commands;
    const auto add = [&](const Editor& editor, const std::string& before) {
        if (const std::string command = CommandHere(editor, programs, program_folders);
            !command.empty())
            commands.push_back(before + command);
    };
    for (const Editor& editor : kEditors)
        add(editor, "");
    if (const std::string terminal = TerminalHere(programs); !terminal.empty())
        for (const Editor& editor : kTerminalEditors)
            add(editor, terminal + ' ');
    for (const Editor& editor : kLastResorts)
        add(editor, "");
    return commands;
}

bool EditorIsMissing(Files& files)
{
    try {
        return loadeditor(files).editor_is_missing;
    } catch (const RunError&) {
        return false;
    }
}

} // namespace kiv
