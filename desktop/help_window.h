// "KIV HELP": the quick reference, a section for each button.
#pragma once

#include "desktop/side_window.h"

namespace kiv {

class HelpWindow : public SideWindow {
    Q_OBJECT

  public:
    HelpWindow(CommandDesk& desk, QWidget* parent);
};

} // namespace kiv
