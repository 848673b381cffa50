#include "desktop/pages_pane.h"

#include "desktop/controls.h"
#include "desktop/filter_bar.h"
#include "desktop/pages_model.h"
#include "desktop/qt_text.h"
#include "platform/site_files.h"

#include <QAction>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QSortFilterProxyModel>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

constexpr int kShownPages = 4;
constexpr int kWidestFile = 32; // characters
constexpr int kWidestFate = 24;

constexpr ControlWords kPagesFilter = {
    "FilterPages", "Filter",
    "Show only the pages whose number, file, title or last build "
    "holds this text (Ctrl+F)"};
constexpr ControlWords kPagesList = {
    "Pages", "Pages",
    "The pages of the page list; a double click or Enter opens the "
    "place of one in the editor"};

} // namespace

PagesPane::PagesPane(CommandDesk& desk, QWidget* parent)
    : QWidget(parent), desk_(desk), model_(new PagesModel(this)),
      found_(new QSortFilterProxyModel(this)), filter_(new FilterBar(kPagesFilter, this)),
      trouble_(MakeTrouble(u"PagesTrouble"_s, this)), list_(new QTreeView(this))
{
    setObjectName(u"PagesPane"_s);
    MakeList();
    MakeActions();
    auto* const column = new QVBoxLayout(this);
    column->addWidget(filter_);
    column->addWidget(trouble_);
    column->addWidget(list_, 1);
    Connect();
    setFocusProxy(filter_);
}

void PagesPane::MakeList()
{
    found_->setSourceModel(model_);
    found_->setFilterRole(PagesModel::kFilterRole);
    found_->setSortRole(PagesModel::kSortRole);
    found_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    found_->setSortCaseSensitivity(Qt::CaseInsensitive);
    found_->setRecursiveFilteringEnabled(true);
    found_->setAutoAcceptChildRows(true); // all pages of a folder that is called so
    Describe(*list_, kPagesList);
    list_->setAccessibleName(ToQt(kPagesList.caption));
    list_->setModel(found_);
    list_->setTreePosition(PagesModel::kFile);
    list_->setUniformRowHeights(true);
    list_->setAlternatingRowColors(true);
    list_->setAllColumnsShowFocus(true);
    list_->setExpandsOnDoubleClick(false); // it opens the page list
    list_->setMinimumHeight(fontMetrics().lineSpacing() * kShownPages);
    list_->header()->setSortIndicatorClearable(true);
    list_->header()->setSortIndicator(-1, Qt::AscendingOrder);
    list_->setSortingEnabled(true);
    list_->header()->setStretchLastSection(false);
    list_->header()->setSectionResizeMode(PagesModel::kTitle, QHeaderView::Stretch);
}

void PagesPane::MakeActions()
{
    // The keys of the first three are those of the menu "Site".
    AddAction(u"Show in browser\tShift+F6"_s, u"Open the page as it lies on the disk"_s,
              PageAsk::browser);
    AddAction(u"Show in preview\tF6"_s, u"Build the folder and show the page as it changes"_s,
              PageAsk::preview);
    AddAction(u"Why\tF8"_s, u"Show where each line of the page comes from"_s, PageAsk::why);
    AddAction(u"Copy address"_s, u"Put the page's address into the clipboard"_s, PageAsk::address,
              QKeySequence::Copy);
    AddAction(u"Show in folder"_s, u"Show the folder of the page in the file manager"_s,
              PageAsk::folder, Qt::CTRL | Qt::Key_D);
    list_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void PagesPane::AddAction(const QString& text, const QString& tip, PageAsk ask,
                          const QKeySequence& key)
{
    auto* const action = new QAction(text, list_);
    action->setToolTip(tip);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setEnabled(false);
    connect(action, &QAction::triggered, this, [this, ask] { on_ask(ask); });
    list_->addAction(action);
}

void PagesPane::Connect()
{
    filter_->on_text = [this](const QString& text) { Filter(text); };
    filter_->on_leave = [this] { GoToList(); };
    connect(list_->header(), &QHeaderView::sectionResized, this, [this](int column) {
        is_arranged_ =
            is_arranged_ || (!is_fitting_ && column != PagesModel::kTitle && isVisible());
    });
    connect(list_, &QTreeView::activated, this, &PagesPane::OpenSource);
    connect(list_, &QTreeView::collapsed, this,
            [this](const QModelIndex& shown) { NoteOpen(shown, false); });
    connect(list_, &QTreeView::expanded, this,
            [this](const QModelIndex& shown) { NoteOpen(shown, true); });
    connect(list_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        const bool is_page = !Chosen().path.empty();
        for (QAction* const action : list_->actions())
            action->setEnabled(is_page);
        if (!is_filling_ && on_chosen)
            on_chosen();
    });
}

void PagesPane::Show(const SitePages& site)
{
    const std::string chosen = Chosen().path;
    {
        const QScopedValueRollback filling(is_filling_, true);
        list_->setRootIsDecorated(site.is_group);
        model_->Show(site);
        Expand();
        const QModelIndex row = found_->mapFromSource(model_->Find(chosen));
        if (row.isValid())
            list_->setCurrentIndex(row);
    }
    ShowCount();
    ShowTrouble(site);
    FitColumns();
    if (Chosen().path != chosen && on_chosen)
        on_chosen();
}

ChosenPage PagesPane::Chosen() const
{
    const QModelIndex index = found_->mapToSource(list_->currentIndex());
    const SitePage* const page = model_->PageAt(index);
    return page == nullptr ? ChosenPage()
                           : ChosenPage{page->listed.path, model_->SectionAt(index)->folder};
}

QByteArray PagesPane::State() const
{
    return is_arranged_ ? list_->header()->saveState() : QByteArray();
}

void PagesPane::Restore(const QByteArray& state)
{
    is_arranged_ = list_->header()->restoreState(state);
}

void PagesPane::Filter(const QString& text)
{
    const QScopedValueRollback filling(is_filling_, true);
    list_->collapseAll(); // an open folder takes its time for every page that goes
    found_->setFilterFixedString(text);
    Expand();
    list_->scrollTo(list_->currentIndex());
    ShowCount();
}

void PagesPane::Expand()
{
    const QScopedValueRollback filling(is_filling_, true);
    list_->expandAll();
    for (int row = 0; !closed_.isEmpty() && row < found_->rowCount(); ++row) {
        const QModelIndex folder = found_->index(row, PagesModel::kFile);
        if (filter_->Field().text().isEmpty() && closed_.contains(folder.data().toString()))
            list_->collapse(folder.siblingAtColumn(0));
    }
}

void PagesPane::NoteOpen(const QModelIndex& shown, bool is_open)
{
    if (is_filling_)
        return;
    const QString name = shown.siblingAtColumn(PagesModel::kFile).data().toString();
    if (is_open)
        closed_.remove(name);
    else
        closed_.insert(name);
}

void PagesPane::ShowCount()
{
    int shown = 0;
    for (int row = 0; row < found_->rowCount(); ++row) {
        const QModelIndex index = found_->index(row, 0);
        const bool is_page = model_->PageAt(found_->mapToSource(index)) != nullptr;
        shown += is_page ? 1 : found_->rowCount(index);
    }
    filter_->ShowCount(u"Pages"_s, shown, static_cast<int>(model_->Count()));
}

void PagesPane::ShowTrouble(const SitePages& site)
{
    // In a group it stands beside the folder.
    const bool is_told = !site.is_group && !site.sections.empty();
    const std::string trouble = is_told ? site.sections.front().trouble : "";
    trouble_->setText(ToQt(trouble));
    trouble_->setVisible(!trouble.empty());
}

void PagesPane::FitColumns()
{
    if (is_arranged_)
        return;
    const QScopedValueRollback fitting(is_fitting_, true);
    for (int column = 0; column < PagesModel::kColumns; ++column) {
        if (column == PagesModel::kTitle)
            continue;
        list_->resizeColumnToContents(column);
        const int most = column == PagesModel::kFile ? kWidestFile : kWidestFate;
        list_->setColumnWidth(
            column, std::min(list_->columnWidth(column), fontMetrics().averageCharWidth() * most));
    }
}

QModelIndex PagesPane::FirstPage() const
{
    for (int row = 0; row < found_->rowCount(); ++row) {
        const QModelIndex index = found_->index(row, 0);
        if (model_->PageAt(found_->mapToSource(index)) != nullptr)
            return index;
        if (found_->rowCount(index) > 0)
            return found_->index(0, 0, index);
    }
    return {};
}

void PagesPane::GoToList()
{
    if (Chosen().path.empty())
        list_->setCurrentIndex(FirstPage());
    list_->setFocus();
}

void PagesPane::OpenSource(const QModelIndex& shown)
{
    const QModelIndex index = found_->mapToSource(shown);
    if (const SitePage* const page = model_->PageAt(index)) {
        const KeptPlace where = page->listed.where;
        desk_.OpenInEditor(where.file, where.line);
    } else if (const SiteSection* const section = model_->SectionAt(index)) {
        desk_.OpenInEditor(section->folder + std::string(kPageListFile), 1);
    }
}

} // namespace kiv
