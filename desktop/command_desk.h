// What a side window needs of the main window: the one place where commands run.
#pragma once

#include "shell/rename_looks.h"

#include <functional>
#include <string>
#include <string_view>

namespace kiv {

class Workspace;

class CommandDesk {
  public:
    CommandDesk() = default;
    CommandDesk(const CommandDesk&) = delete;
    CommandDesk& operator=(const CommandDesk&) = delete;
    virtual ~CommandDesk() = default;

    virtual Workspace& workspace() = 0;

    /// Runs an operation of the workspace as a command: the buttons of every window are off
    /// meanwhile, its fatal error is shown in a box, and the main window shows the new state
    /// afterwards. False when it failed, or when a command is running already.
    virtual bool Run(const std::function<void()>& operation) = 0;

    /// Opens a file (a drive path) in the editor at a line (1-based; 0: not known), as a command.
    /// The warnings of the command before stay in their list.
    virtual void OpenInEditor(const std::string& file, int line) = 0;

    /// Shows what a command would rename; the user has it run from there.
    virtual void LookFirst(std::string_view caption, const RenameTask& task,
                           std::function<void()> run) = 0;

    /// A modal message box, as the reporter shows it.
    virtual void ShowMessage(std::string_view text) = 0;
};

} // namespace kiv
