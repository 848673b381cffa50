#include "desktop/story_pane.h"

#include "desktop/controls.h"
#include "desktop/filter_bar.h"
#include "desktop/lines_model.h"
#include "desktop/qt_text.h"
#include "desktop/story_view.h"
#include "shell/story_parts.h"
#include "shell/workspace.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

constexpr int kPageColumns = 16;   // characters of a page's name
constexpr int kWidestColumns = 36; // characters of a source's place
constexpr int kShownStoryLines = 2;
constexpr int kShownStory = 2;

constexpr ControlWords kPages = {"page", "Page", "The page whose lines are shown"};
constexpr ControlWords kSearch = {"search", "Search",
                                  "Show only the lines that hold this text (Ctrl+F)"};
constexpr ControlWords kStoryLines = {
    "lines", "Lines",
    "The lines of the page; a double click or Enter opens the source "
    "of one in the editor"};
constexpr ControlWords kAgain = {"again", "Read again",
                                 "Read the sources again, after they have changed (F5)"};

/// A build in memory takes its time on a large site.
class WaitCursor {
  public:
    WaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
};

} // namespace

StoryPane::StoryPane(CommandDesk& desk, QWidget* parent)
    : QWidget(parent), desk_(desk), model_(new LinesModel(this)),
      found_(new QSortFilterProxyModel(this)), pages_(new QComboBox(this)),
      search_(new FilterBar(kSearch, this)), again_(new QToolButton(this)),
      trouble_(MakeTrouble(u"trouble"_s, this)), lines_(new QTreeView(this)),
      story_(new StoryView(this)), halves_(new QSplitter(Qt::Vertical, this))
{
    setObjectName(u"StoryPane"_s);
    MakeControls();
    MakeList();
    Arrange();
    Connect();
    setFocusProxy(pages_);
}

void StoryPane::MakeControls()
{
    Describe(*pages_, kPages);
    Describe(*again_, kAgain);
    pages_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    pages_->setMinimumContentsLength(kPageColumns);
    again_->setText(AsShown(kAgain.caption));
    again_->setFocusPolicy(Qt::StrongFocus);
}

void StoryPane::MakeList()
{
    found_->setSourceModel(model_);
    found_->setFilterKeyColumn(LinesModel::kText);
    found_->setFilterRole(LinesModel::kWholeTextRole);
    found_->setFilterCaseSensitivity(Qt::CaseInsensitive);
    Describe(*lines_, kStoryLines);
    lines_->setModel(found_);
    lines_->setRootIsDecorated(false);
    lines_->setUniformRowHeights(true);
    lines_->setAlternatingRowColors(true);
    lines_->setAllColumnsShowFocus(true);
    lines_->header()->setStretchLastSection(true);
    const int line = fontMetrics().lineSpacing();
    lines_->setMinimumHeight(line * kShownStoryLines);
    story_->setMinimumHeight(line * kShownStory);
}

void StoryPane::Arrange()
{
    auto* const row = new QHBoxLayout;
    row->addWidget(MakeLabel(kPages.caption, *pages_));
    row->addWidget(pages_, 2);
    row->addWidget(search_, 3);
    row->addWidget(again_);
    halves_->setChildrenCollapsible(false);
    halves_->addWidget(lines_);
    halves_->addWidget(story_);
    lines_->setAccessibleName(ToQt(kStoryLines.caption));
    story_->setAccessibleName(u"Story"_s);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(trouble_);
    column->addWidget(halves_, 1);
    setTabOrder(pages_, &search_->Field());
    setTabOrder(&search_->Field(), again_);
    setTabOrder(again_, trouble_);
    setTabOrder(trouble_, lines_);
    setTabOrder(lines_, story_);
}

void StoryPane::Connect()
{
    connect(pages_, &QComboBox::currentIndexChanged, this,
            [this] { ShowPage(FromQt(pages_->currentData().toString())); });
    connect(again_, &QToolButton::clicked, this, &StoryPane::ReadAgain);
    search_->on_text = [this](const QString& text) {
        found_->setFilterFixedString(text);
        ShowCount();
    };
    search_->on_leave = [this] { GoToLines(); };
    connect(lines_, &QTreeView::activated, this, &StoryPane::OpenSource);
    connect(lines_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& line) {
                // The list has a current line as soon as it has the focus; it shall be seen.
                lines_->selectionModel()->select(line, QItemSelectionModel::ClearAndSelect |
                                                           QItemSelectionModel::Rows);
                ShowStory();
            });
    story_->on_open = [this](const std::string& file, int line) { Open(file, line); };
}

void StoryPane::ShowPage(const std::string& path)
{
    const WaitCursor wait;
    is_outdated_ = false;
    model_->Show(TellPage(desk_.workspace(), path, folder_));
    FillPages();
    ShowTrouble();
    ShowCount();
    ShowStory();
    for (const int column : {LinesModel::kNumber, LinesModel::kSource}) {
        lines_->resizeColumnToContents(column);
        const int most = fontMetrics().averageCharWidth() * kWidestColumns;
        lines_->setColumnWidth(column, std::min(lines_->columnWidth(column), most));
    }
}

const std::string& StoryPane::ShownPage() const
{
    return model_->Page().page.path;
}

void StoryPane::Choose(const std::string& folder, const std::string& path)
{
    if (path.empty() || (path == ShownPage() && wanted_.empty()))
        return;
    folder_ = folder;
    directory_ = desk_.workspace().WorkDir;
    wanted_ = path;
    SetOutdated();
}

void StoryPane::SetOutdated()
{
    is_outdated_ = true;
    if (isVisible())
        ReadAgain();
}

void StoryPane::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (is_outdated_)
        ReadAgain();
}

void StoryPane::FocusSearch()
{
    search_->setFocus();
}

QByteArray StoryPane::State() const
{
    return halves_->saveState();
}

void StoryPane::Restore(const QByteArray& state)
{
    halves_->restoreState(state);
}

void StoryPane::ReadAgain()
{
    if (is_opening_)
        return;
    const std::string& directory = desk_.workspace().WorkDir;
    if (std::exchange(directory_, directory) != directory)
        folder_.clear();
    const std::string shown = ShownPage();
    const std::string page = wanted_.empty() ? shown : std::exchange(wanted_, {});
    const int line = page == shown ? ChosenLine() : 0;
    ShowPage(page);
    if (model_->Page().page.path == page)
        ChooseLine(line);
}

void StoryPane::FillPages()
{
    const QSignalBlocker blocker(pages_);
    if (listed_ != model_->Page().pages) { // else it may be the list that has just been chosen from
        listed_ = model_->Page().pages;
        pages_->clear();
        for (const BuiltPage& page : listed_)
            pages_->addItem(ToQt(page.name), ToQt(page.path));
    }
    pages_->setCurrentIndex(pages_->findData(ToQt(model_->Page().page.path)));
}

void StoryPane::ShowTrouble()
{
    const std::string& trouble = model_->Page().trouble;
    trouble_->setText(ToQt(trouble));
    trouble_->setVisible(!trouble.empty());
}

void StoryPane::ShowCount()
{
    search_->ShowCount(u"Lines"_s, found_->rowCount(), model_->rowCount());
}

void StoryPane::GoToLines()
{
    if (!lines_->currentIndex().isValid())
        lines_->setCurrentIndex(found_->index(0, 0));
    lines_->setFocus();
}

void StoryPane::ShowStory()
{
    const QModelIndex chosen = found_->mapToSource(lines_->currentIndex());
    story_->Show(chosen.isValid() ? PartsOf(model_->Page(), static_cast<std::size_t>(chosen.row()))
                                  : std::vector<StoryPart>());
}

int StoryPane::ChosenLine() const
{
    const QModelIndex chosen = found_->mapToSource(lines_->currentIndex());
    return chosen.isValid() ? model_->Page().lines[static_cast<std::size_t>(chosen.row())].number
                            : 0;
}

void StoryPane::ChooseLine(int number)
{
    const std::vector<PageLine>& lines = model_->Page().lines;
    const auto line = std::ranges::find(lines, number, &PageLine::number);
    if (number == 0 || line == lines.end())
        return;
    const QModelIndex row = model_->index(static_cast<int>(line - lines.begin()), 0);
    lines_->setCurrentIndex(found_->mapFromSource(row));
}

void StoryPane::OpenSource(const QModelIndex& shown)
{
    const auto row = static_cast<std::size_t>(found_->mapToSource(shown).row());
    const PageStories& page = model_->Page();
    const std::vector<ToldPlace>& sources = page.stories[page.lines[row].story].sources;
    if (!sources.empty())
        Open(std::string(sources.front().file), sources.front().first);
}

void StoryPane::Open(const std::string& file, int line)
{
    is_opening_ = true; // the editor has only begun: nothing is to be read again
    desk_.OpenInEditor(file, line);
    is_opening_ = false;
}

} // namespace kiv
