// "Why does a line look so?": the pages of the working directory, the lines of one with their
// sources, and the story of a line.
#pragma once

#include "desktop/command_desk.h"
#include "shell/page_stories.h"

#include <QWidget>

#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QLineEdit;
class QModelIndex;
class QSortFilterProxyModel;
class QToolButton;
class QTreeView;

namespace kiv {

class LinesModel;
class StoryView;

class StoryPane : public QWidget {
    Q_OBJECT

  public:
    StoryPane(CommandDesk& desk, QWidget* parent);

    /// Shows the page at a drive path, or the first one when there is none.
    void ShowPage(const std::string& path);
    /// Builds anew in memory and shows the same page again, with the same line chosen.
    void ReadAgain();

  private:
    void MakeControls();
    void MakeList();
    void Arrange();
    void Connect();
    void FillPages();
    void ShowTrouble();
    void ShowCount();
    void ShowStory();
    /// Chooses the line of this number, 1-based, if it is in the list.
    void ChooseLine(int number);
    int ChosenLine() const;
    /// The first source of a line.
    void OpenSource(const QModelIndex& shown);
    void Open(const std::string& file);

    CommandDesk& desk_;
    LinesModel* model_;
    QSortFilterProxyModel* found_;
    QComboBox* pages_;
    QLineEdit* search_;
    QToolButton* again_;
    QLabel* count_;
    QLabel* trouble_;
    QTreeView* lines_;
    StoryView* story_;
    std::vector<BuiltPage> listed_; // in `pages_`
    bool is_opening_ = false;
};

} // namespace kiv
