// The renames of a command before they are done: "Fix names", "add "_t.gif"", "Undo renames", and
// at a root "l/c dir".
#pragma once

#include "desktop/side_window.h"
#include "shell/rename_looks.h"

#include <functional>
#include <string_view>

class QLabel;
class QPushButton;

namespace kiv {

class RenamePairs;

class RenameLookWindow : public SideWindow {
    Q_OBJECT

  public:
    RenameLookWindow(CommandDesk& desk, QWidget* parent);

    /// Shows what a command would rename; the button runs it, unless the files are others by then:
    /// these are shown first.
    void OpenFor(std::string_view caption, const RenameTask& task, std::function<void()> run);
    void Refresh() override;

  private:
    void PressRename();
    void Show(const RenameLook& look);

    RenameTask task_;
    std::function<void()> run_; // the command
    RenameLook seen_;
    QLabel* folder_ = nullptr;
    RenamePairs* pairs_ = nullptr;
    QPushButton* rename_ = nullptr;
};

} // namespace kiv
