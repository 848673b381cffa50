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
class QModelIndex;
class QSortFilterProxyModel;
class QSplitter;
class QToolButton;
class QTreeView;

namespace kiv {

class FilterBar;
class LinesModel;
class StoryView;

class StoryPane : public QWidget {
    Q_OBJECT

  public:
    StoryPane(CommandDesk& desk, QWidget* parent);

    /// From now on shows the page at a drive path, which the page list in `folder` names; the first
    /// one when there is none. As long as the pane is not seen nothing is built for it.
    void Choose(const std::string& folder, const std::string& path);
    /// The page whose lines are shown; "" for none.
    const std::string& ShownPage() const;
    /// The sources may be others now: what is seen is made anew in memory, with the same page and
    /// line chosen.
    void SetOutdated();
    void FocusSearch();

    /// How high list and story are from one run to the next.
    QByteArray State() const;
    void Restore(const QByteArray& state);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void ShowPage(const std::string& path);
    void ReadAgain();
    void MakeControls();
    void MakeList();
    void Arrange();
    void Connect();
    void FillPages();
    void ShowTrouble();
    void ShowCount();
    void GoToLines();
    void ShowStory();
    /// Chooses the line of this number, 1-based, if it is in the list.
    void ChooseLine(int number);
    int ChosenLine() const;
    /// The first source of a line.
    void OpenSource(const QModelIndex& shown);
    void Open(const std::string& file, int line);

    CommandDesk& desk_;
    LinesModel* model_;
    QSortFilterProxyModel* found_;
    QComboBox* pages_;
    FilterBar* search_;
    QToolButton* again_;
    QLabel* trouble_;
    QTreeView* lines_;
    StoryView* story_;
    QSplitter* halves_;
    std::vector<BuiltPage> listed_; // in `pages_`
    std::string folder_;            // whose pages these are; "": the working directory
    std::string directory_;         // the working directory for which that was said
    std::string wanted_;            // the page to show next; "": the same
    bool is_outdated_ = true;
    bool is_opening_ = false;
};

} // namespace kiv
