// What the windows beside the main window have in common: modeless, one of each, closed by Escape.
#pragma once

#include "desktop/command_desk.h"

#include <QDialog>

#include <string_view>

namespace kiv {

class SideWindow : public QDialog {
    Q_OBJECT

  public:
    /// `name` is the window's object name.
    SideWindow(CommandDesk& desk, QWidget* parent, std::string_view name, std::string_view title);

    /// Puts the window in front. One that was closed is filled anew before.
    void BringUp();

    /// The workspace has changed: the window shows what is so now.
    virtual void Refresh() {}

  protected:
    /// What the window shows when it is opened.
    virtual void Fill() {}

    CommandDesk& desk() const { return desk_; }
    Workspace& workspace() const { return desk_.workspace(); }

  private:
    CommandDesk& desk_;
};

} // namespace kiv
