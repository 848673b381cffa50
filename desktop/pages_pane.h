// "Pages": the pages of the working directory and its group, with what can be done with one.
#pragma once

#include "desktop/command_desk.h"
#include "shell/site_pages.h"

#include <QSet>
#include <QWidget>

#include <functional>
#include <string>

class QAction;
class QLabel;
class QModelIndex;
class QSortFilterProxyModel;
class QTreeView;

namespace kiv {

class FilterBar;
class PagesModel;

/// What is asked for a page; the window does it.
enum class PageAsk { browser, preview, why, address, folder };

/// A page and the folder whose page list names it: drive paths, the folder's with "\" at its end.
struct ChosenPage {
    std::string path; // "": no page is chosen
    std::string folder;
};

class PagesPane : public QWidget {
    Q_OBJECT

  public:
    PagesPane(CommandDesk& desk, QWidget* parent);

    /// The page that was chosen stays so when it is still there.
    void Show(const SitePages& site);
    ChosenPage Chosen() const;

    /// The columns as the user has made them, from one run to the next; empty: as they suit.
    QByteArray State() const;
    void Restore(const QByteArray& state);

    /// Called when another page is chosen.
    std::function<void()> on_chosen;
    std::function<void(PageAsk ask)> on_ask;

  private:
    void MakeList();
    void MakeActions();
    void Connect();
    void AddAction(const QString& text, const QString& tip, PageAsk ask,
                   const QKeySequence& key = {});
    void Filter(const QString& text);
    /// Shows the folders open, but for those that the user has closed.
    void Expand();
    void ShowCount();
    void ShowTrouble(const SitePages& site);
    void FitColumns();
    void GoToList();
    void OpenSource(const QModelIndex& shown);
    void NoteOpen(const QModelIndex& shown, bool is_open);
    QModelIndex FirstPage() const;

    CommandDesk& desk_;
    PagesModel* model_;
    QSortFilterProxyModel* found_;
    FilterBar* filter_;
    QLabel* trouble_;
    QTreeView* list_;
    QSet<QString> closed_; // folders, by name
    bool is_filling_ = false;
    bool is_fitting_ = false;
    bool is_arranged_ = false; // the user's own sizes
};

} // namespace kiv
