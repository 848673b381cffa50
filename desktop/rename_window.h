// "Rename files": finds a text in the file names of the working directory and replaces it.
#pragma once

#include "desktop/side_window.h"

class QLabel;
class QLineEdit;

namespace kiv {

class RenameWindow : public SideWindow {
    Q_OBJECT

  public:
    RenameWindow(CommandDesk& desk, QWidget* parent);
    void Refresh() override;

  protected:
    void Fill() override { Refresh(); }

  private:
    void PressRename();

    QLineEdit* find_ = nullptr;
    QLineEdit* replacement_ = nullptr;
    QLabel* sample_ = nullptr;
    QLabel* folder_ = nullptr;
};

} // namespace kiv
