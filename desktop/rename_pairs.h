// The renames of a run that is still to be done: both names of each file, how many there are, and
// what would stop it.
#pragma once

#include "shell/rename_looks.h"

#include <QWidget>

#include <functional>

class QLabel;
class QTreeView;

namespace kiv {

class PairsModel;

class RenamePairs : public QWidget {
    Q_OBJECT

  public:
    explicit RenamePairs(QWidget* parent);
    void Show(const RenameLook& look);
    QTreeView& List() const { return *list_; }

    /// Called when the window has the keys again: other programs may have changed the folder.
    std::function<void()> on_return;

  protected:
    bool event(QEvent* event) override;

  private:
    PairsModel* model_;
    QTreeView* list_;
    QLabel* summary_;
    QLabel* warning_;
};

} // namespace kiv
