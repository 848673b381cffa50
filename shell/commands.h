// Every command of the system as one table: the window makes its buttons and menus of it, the
// command line and the tests find commands in it.
#pragma once

#include "platform/run_error.h"
#include "shell/workspace.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace kiv {

/// Where a command is offered.
enum class Menu { button, file, jump, utils, grab, help };

/// A menu of the main window, in order.
struct MenuTitle {
    Menu menu;
    std::string_view object_name;
    std::string_view caption;
};
std::span<const MenuTitle> MenuTitles();

/// A window that a command opens after it has run, or the end of the program.
enum class Opens { nothing, directories, renamer, dimensions, conversion, news, help, end };

struct Command {
    std::string_view name;        // its own word, as in `kiv-cli`; "" for a separator
    std::string_view object_name; // of its button or menu entry
    std::string_view caption;     // "&&" shows as "&"
    Menu menu = Menu::button;
    /// What it does; null when it only opens a window. `index` is that of an indexed entry.
    void (*run)(Workspace& workspace, std::size_t index) = nullptr;
    Opens opens = Opens::nothing;
    std::string_view mode = {}; // of the conversion window that it opens
    std::size_t entries = 1;    // more than one: an array of menu entries, numbered from 0
    bool disables_buttons = false;
    /// Whether it is shown, and whether it can be chosen; null: always.
    bool (*is_visible)(const Workspace& workspace, std::size_t index) = nullptr;
    bool (*is_available)(const Workspace& workspace) = nullptr;

    bool IsSeparator() const { return name.empty(); }
};

/// All commands: the buttons, then the menus, each in its order.
std::span<const Command> Commands();

/// The command of this name or of this button or menu entry; null when there is none.
const Command* FindCommand(std::string_view name);

bool IsVisible(const Command& command, const Workspace& workspace, std::size_t index = 0);
bool IsAvailable(const Command& command, const Workspace& workspace);
/// The caption as it is now: jump entries have their label.
std::string_view CaptionOf(const Command& command, const Workspace& workspace,
                           std::size_t index = 0);

/// Runs a command and hands back its fatal error. What it opens is the face's to open, when there
/// is none.
std::optional<RunError> RunCommand(Workspace& workspace, const Command& command,
                                   std::size_t index = 0);

} // namespace kiv
