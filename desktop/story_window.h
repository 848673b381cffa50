// "Why a line looks so": the story pane in a window of its own.
#pragma once

#include "desktop/side_window.h"

namespace kiv {

class StoryPane;

class StoryWindow : public SideWindow {
    Q_OBJECT

  public:
    StoryWindow(CommandDesk& desk, QWidget* parent);
    void Refresh() override;

  protected:
    void Fill() override;

  private:
    StoryPane* pane_;
};

} // namespace kiv
