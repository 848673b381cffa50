// "Messages": every warning, error and finding of the last command with its place, closed while
// there is none.
#pragma once

#include "inspect/finding.h"

#include <QWidget>

#include <functional>
#include <string>
#include <vector>

class QKeyEvent;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace kiv {

class MessagesPane : public QWidget {
    Q_OBJECT

  public:
    explicit MessagesPane(QWidget* parent);

    /// Shows the messages and opens the pane, or closes it when there are none.
    void ShowMessages(const std::vector<Finding>& messages);

    /// Called with the file of a message (a drive path) that is double-clicked, or chosen by Enter.
    std::function<void(const std::string& file)> on_open;
    /// Called before the pane is opened and after it was closed.
    std::function<void(bool is_open)> on_shown;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void SetOpen(bool open);
    void OpenFileOf(const QTreeWidgetItem* item);
    /// Puts the selected messages, or all when none is, into the clipboard.
    void Copy();

    QLabel* title_;
    QTreeWidget* list_;
};

} // namespace kiv
