// "KIV HELP": the quick reference, a section for each button.
#pragma once

#include "desktop/side_window.h"

class QPlainTextEdit;

namespace kiv {

class HelpWindow : public SideWindow {
    Q_OBJECT

  public:
    HelpWindow(CommandDesk& desk, QWidget* parent);

  protected:
    /// The first section.
    void Fill() override;

  private:
    QPlainTextEdit* box_ = nullptr;
};

} // namespace kiv
