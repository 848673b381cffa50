// The pane below the buttons: its tabs "Pages", "Why" and "Messages".
#pragma once

#include "desktop/command_desk.h"
#include "desktop/pages_pane.h"
#include "preview/page_overview.h"
#include "shell/messages.h"

#include <QSet>
#include <QTabWidget>
#include <QTimer>

#include <functional>
#include <optional>
#include <string>

class QStackedWidget;

namespace kiv {

class Drives;
class FirstStepsPane;
class MessagesPane;
class StoryPane;

class WorkPane : public QTabWidget {
    Q_OBJECT

  public:
    /// `taken` are letters for Alt that other controls of the window have.
    WorkPane(CommandDesk& desk, Drives& drives, const QSet<QChar>& taken, QWidget* parent);

    FirstStepsPane& FirstSteps() { return *first_steps_; }
    /// The start is over: the pages are read, and the tab that was left open last is open again.
    void Begin();
    /// After each command but the opening of a file. `warnings` are what it told, `error` ended it.
    /// Where `is_asked`, by the user, the messages come to the front when it has any.
    void FollowCommand(const std::vector<Warning>& warnings, const std::optional<RunError>& error,
                       bool is_asked);
    /// Reads pages and lines again.
    void ReadAgain();
    void ShowWhy();
    /// The path of the page that is shown or chosen; "": none.
    std::string ChosenPath() const;
    /// Notes tab and columns for the next run.
    void Store() const;
    /// Whether a run before has stored them.
    static bool WasStored();

    /// Whether a command runs, or a box or menu waits for the user: nothing is read then.
    std::function<bool()> is_busy;
    std::function<void(PageAsk ask)> on_ask;
    /// Called when the first steps have gone.
    std::function<void()> on_begun;

  private:
    enum Tab { kPages, kWhy, kMessages };
    void MakeKeys();
    QWidget* PaneInFront() const;
    void AddPane(QWidget* pane, const QString& title, const QString& tip);
    void Look();
    void ShowMessages();

    CommandDesk& desk_;
    PageOverview overview_;
    MessageList told_;
    QStackedWidget* first_tab_;
    PagesPane* pages_;
    FirstStepsPane* first_steps_;
    StoryPane* stories_;
    MessagesPane* messages_;
    QTimer timer_;
};

} // namespace kiv
