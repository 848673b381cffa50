// "Messages": warnings, errors and findings with their places, and the one chosen in full.
#pragma once

#include "inspect/finding.h"

#include <QWidget>

#include <functional>
#include <string>
#include <vector>

class QModelIndex;
class QPlainTextEdit;
class QSortFilterProxyModel;
class QSplitter;
class QTreeView;

namespace kiv {

class FilterBar;
class MessagesModel;

class MessagesPane : public QWidget {
    Q_OBJECT

  public:
    explicit MessagesPane(QWidget* parent);

    /// `folder`: what places are shown relative to, a drive path that ends in "\".
    void ShowMessages(std::vector<Finding> messages, const std::string& folder);

    /// The columns and the height of the list as the user has made them, from one run to the next;
    /// empty: as they suit.
    QByteArray State() const;
    void Restore(const QByteArray& state);

    /// Called with the place of a message that is double-clicked, or chosen by Enter: a drive path
    /// and a line (1-based; 0: not known).
    std::function<void(const std::string& file, int line)> on_open;

  private:
    void MakeList();
    void MakeDetail();
    void Connect();
    void ShowCount();
    void ShowDetail();
    void FitColumns();
    void OpenFileOf(const QModelIndex& shown);
    /// Puts the selected messages, or all that are shown when none is, into the clipboard.
    void Copy();
    const Finding* At(const QModelIndex& shown) const;

    MessagesModel* model_;
    QSortFilterProxyModel* found_;
    FilterBar* filter_;
    QTreeView* list_;
    QPlainTextEdit* detail_;
    QSplitter* halves_;
    bool is_fitting_ = false;
    bool is_arranged_ = false; // the user's own sizes
};

} // namespace kiv
