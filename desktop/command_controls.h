// The buttons and the menu bar of the main window, made of the table of commands.
#pragma once

#include "shell/commands.h"

#include <QSet>
#include <QWidget>

#include <functional>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;
class QPushButton;

namespace kiv {

/// The panel of the buttons; the entries of `menu_bar` belong to it as well.
class CommandControls : public QWidget {
    Q_OBJECT

  public:
    CommandControls(QMenuBar& menu_bar, QWidget* parent);

    /// Shows, hides, greys and names the controls as the workspace is now. To be called before the
    /// controls are shown.
    void Refresh(const Workspace& workspace);
    /// Off: no button and no menu can be used.
    void toggler(bool on);
    /// The button that builds: "Do it!" or "do one", whichever is shown.
    QPushButton* BuildButton() const;

    /// The letters for Alt that its menus and buttons have, in lower case.
    const QSet<QChar>& Letters() const { return letters_; }

    /// Called when the user chooses a command; `index` is that of an indexed entry. To be set
    /// before anything can be chosen.
    std::function<void(const Command& command, std::size_t index)> on_chosen;

  private:
    struct Button {
        const Command* command;
        QPushButton* button;
    };
    struct Entry {
        const Command* command;
        std::size_t index;
        QAction* action;
        QMenu* menu; // null: it stands in the menu bar itself
    };

    void MakeMenus();
    void MakeButtons();
    void PlaceButtons();
    void AddEntries(const Command& command, QMenu* menu, const QString& title);
    QMenu* AddMenuOf(const Command& command, QMenu& parent);
    QAction* AddEntry(const Command& command, std::size_t index, QMenu* menu);
    void SetCaptions(const Workspace& workspace);

    QMenuBar& menu_bar_;
    std::vector<QMenu*> menus_;
    std::vector<Button> buttons_;
    std::vector<Entry> entries_;
    QSet<QChar> letters_; // for Alt, those of menu bar and buttons
};

} // namespace kiv
