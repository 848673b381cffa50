// Every command of the window as one table, from which its buttons and menus are made.
#pragma once

#include "shell/rename_looks.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

class Workspace;

/// Where a command is offered.
enum class Menu { button, file, jump, utils, grab, help, site };

/// A menu of the main window, in order.
struct MenuTitle {
    Menu menu;
    std::string_view object_name;
    std::string_view caption;
};
std::span<const MenuTitle> MenuTitles();

/// A window that a command opens after it has run, what else it has the window do, or the end of
/// the program.
enum class Opens {
    nothing,
    directories,
    renamer,
    dimensions,
    conversion,
    news,
    help,
    stories,
    editors,
    preview,
    page,
    lists,
    new_site,
    task,
    end
};

struct Command {
    std::string_view name;        // its own word, as in `kiv-cli`; "" for a separator
    std::string_view object_name; // of its button or menu entry
    std::string_view caption;     // "&&" shows as "&"
    std::string_view tip = {};    // what it does, in a sentence: for tooltips and screen readers
    Menu menu = Menu::button;
    /// What it does; null when it only opens a window, and for an array of entries.
    void (*run)(Workspace& workspace) = nullptr;
    Opens opens = Opens::nothing;
    std::string_view mode = {}; // of the conversion window that it opens
    bool disables_buttons = false;
    bool builds = false; // it makes pages of the sources
    /// Whether it is shown, and whether it can be chosen; null: always.
    bool (*is_visible)(const Workspace& workspace) = nullptr;
    bool (*is_available)(const Workspace& workspace) = nullptr;
    /// Whether the switch that it is stands on; null: it is none.
    bool (*is_on)(const Workspace& workspace) = nullptr;
    /// For an array of menu entries: how many there are, and what the one of an index, from 0,
    /// does. An entry is shown as long as its list has one for it, and has its label.
    std::size_t entries = 1;
    void (*run_entry)(Workspace& workspace, std::size_t index) = nullptr;
    /// The labels of the entries that are shown; null: it is no array.
    std::vector<std::string> (*labels)(const Workspace& workspace) = nullptr;
    /// The entries stand in a menu of their own, which has the caption.
    bool has_menu = false;
    /// What the status line says when the command has gone well and has told nothing itself; "": it
    /// keeps what stands there.
    std::string_view done = {};
    /// Why it cannot be chosen when it cannot, for its tooltip.
    std::string_view unavailable = {};
    /// The renames that are to be looked at before the command runs, and when; null: always.
    std::optional<Renamer> looks_at = {};
    bool (*looks_when)(const Workspace& workspace) = nullptr;

    bool IsSeparator() const { return name.empty(); }
    /// Whether it does anything before, or without, opening a window.
    bool Runs() const { return run != nullptr || run_entry != nullptr; }
};

/// All commands: the buttons, then the menus, each in its order.
std::span<const Command> Commands();

/// The command of this name or of this button or menu entry; null when there is none.
const Command* FindCommand(std::string_view name);

bool IsVisible(const Command& command, const Workspace& workspace, std::size_t index = 0);
bool IsAvailable(const Command& command, const Workspace& workspace);
/// Whether what it renames is to be looked at before it runs now.
bool WantsLook(const Command& command, const Workspace& workspace);
/// The sentence for its tooltip as it is now.
std::string_view TipOf(const Command& command, const Workspace& workspace);
/// The caption as it is now: entries of a list have their label.
std::string CaptionOf(const Command& command, const Workspace& workspace, std::size_t index = 0);

/// Runs a command; one that only opens a window does nothing here. What it opens is the face's to
/// open when it has gone well. Throws RunError.
void RunCommand(Workspace& workspace, const Command& command, std::size_t index = 0);

} // namespace kiv
