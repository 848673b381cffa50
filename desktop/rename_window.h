// "Rename files": finds a text in the file names of the working directory and replaces it. What
// would be renamed is shown as the texts are typed.
#pragma once

#include "desktop/side_window.h"
#include "shell/rename_looks.h"

class QLabel;
class QLineEdit;

namespace kiv {

class RenamePairs;

class RenameWindow : public SideWindow {
    Q_OBJECT

  public:
    RenameWindow(CommandDesk& desk, QWidget* parent);
    void Refresh() override;

  protected:
    void Fill() override { Refresh(); }
    void showEvent(QShowEvent* event) override;

  private:
    RenameTask Task() const;
    void Look();
    void Show(const RenameLook& look);
    void PressRename();

    RenameLook seen_;
    RenamePairs* pairs_ = nullptr;
    QLineEdit* find_ = nullptr;
    QLineEdit* replacement_ = nullptr;
    QLabel* sample_ = nullptr;
    QLabel* folder_ = nullptr;
};

} // namespace kiv
