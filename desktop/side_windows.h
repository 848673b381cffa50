// The windows beside the main window: one of each kind, made when it is first wanted.
#pragma once

#include "desktop/command_desk.h"
#include "shell/commands.h"

#include <functional>
#include <string_view>

class QWidget;

namespace kiv {

class TaskWindow;

class SideWindows {
  public:
    /// `parent` is the main window, which has them as its children.
    SideWindows(CommandDesk& desk, QWidget* parent) : desk_(desk), parent_(parent) {}

    /// Opens the window of a command; false when it has none.
    bool Open(const Command& command);
    /// Shows what a command would rename, for the user to run it there.
    void LookFirst(std::string_view caption, const RenameTask& task, std::function<void()> run);

    /// Of all that were made: they show what is so now, can be used or not, are closed.
    void Refresh();
    void SetEnabled(bool on);
    void Close();

  private:
    template <typename Window>
    Window& OneOf();
    TaskWindow& TaskOf(const Command& command);

    CommandDesk& desk_;
    QWidget* parent_;
};

} // namespace kiv
