// The renames of a command before they are done: "Fix names", "add "_t.gif"", "Undo renames".
#pragma once

#include "desktop/side_window.h"

class QLabel;
class QPushButton;

namespace kiv {

struct Command;
class RenamePairs;

class RenameLookWindow : public SideWindow {
    Q_OBJECT

  public:
    RenameLookWindow(CommandDesk& desk, QWidget* parent);

    /// Shows what a command, one with `looks_at`, would rename; the button runs it.
    void OpenFor(const Command& command);
    void Refresh() override;

  private:
    void PressRename();

    const Command* command_ = nullptr;
    QLabel* folder_ = nullptr;
    RenamePairs* pairs_ = nullptr;
    QPushButton* rename_ = nullptr;
};

} // namespace kiv
