#include "desktop/work_pane.h"

#include "desktop/first_steps_pane.h"
#include "desktop/messages_pane.h"
#include "desktop/story_pane.h"
#include "shell/workspace.h"

#include <QScrollArea>
#include <QSettings>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>

#include <chrono>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

constexpr std::chrono::seconds kLookEvery{1};

// In the settings.
constexpr auto* kTabKey = "panes/tab";
constexpr auto* kPagesKey = "panes/pages";
constexpr auto* kMessagesKey = "panes/messages";
constexpr auto* kStoriesKey = "panes/why";

/// In a low window one can scroll to the last of the ways on.
QWidget* Scrolled(QWidget* pane)
{
    auto* const area = new QScrollArea;
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(pane);
    return area;
}

} // namespace

WorkPane::WorkPane(CommandDesk& desk, Drives& drives, const QSet<QChar>& taken, QWidget* parent)
    : QTabWidget(parent), desk_(desk), overview_(drives, desk.workspace()),
      first_tab_(new QStackedWidget(this)), pages_(new PagesPane(desk, this)),
      first_steps_(new FirstStepsPane(desk, taken, this)), stories_(new StoryPane(desk, this)),
      messages_(new MessagesPane(this))
{
    setObjectName(u"WorkPane"_s);
    setDocumentMode(true);
    tabBar()->setObjectName(u"Panes"_s);
    tabBar()->setAccessibleName(u"Panes"_s);
    first_tab_->addWidget(pages_);
    first_tab_->addWidget(Scrolled(first_steps_));
    AddPane(first_tab_, u"Pages"_s, u"The pages of the current directory and its group"_s);
    AddPane(stories_, u"Why"_s, u"Where the lines of a page come from and what made them so"_s);
    AddPane(messages_, u"Messages"_s, u"Warnings, errors and what a check has found"_s);
    MakeKeys();

    first_steps_->on_shown = [this](bool is_open) {
        first_tab_->setCurrentIndex(is_open ? 1 : 0);
        if (is_open)
            setCurrentIndex(kPages);
        else
            on_begun();
    };
    pages_->on_chosen = [this] {
        const ChosenPage page = pages_->Chosen();
        stories_->Choose(page.folder, page.path);
    };
    pages_->on_ask = [this](PageAsk ask) {
        if (ask == PageAsk::why)
            ShowWhy();
        else
            on_ask(ask);
    };
    messages_->on_open = [this](const std::string& file, int line) {
        desk_.OpenInEditor(file, line);
    };
    connect(&timer_, &QTimer::timeout, this, &WorkPane::Look);
}

void WorkPane::AddPane(QWidget* pane, const QString& title, const QString& tip)
{
    const int index = addTab(pane, title);
    setTabToolTip(index, u"%1 (Ctrl+%2)"_s.arg(tip).arg(index + 1));
}

void WorkPane::MakeKeys()
{
    for (int index = 0; index < count(); ++index)
        new QShortcut(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + index), this, [this, index] {
            setCurrentIndex(index);
            PaneInFront()->setFocus();
        });
    new QShortcut(QKeySequence::Find, this, [this] {
        if (currentIndex() == kWhy)
            stories_->FocusSearch();
        else
            PaneInFront()->setFocus();
    });
}

/// A focus proxy of the first tab would do, too, but stands behind what it leads to: Tab would
/// never leave it.
QWidget* WorkPane::PaneInFront() const
{
    return currentIndex() == kPages ? first_tab_->currentWidget() : currentWidget();
}

void WorkPane::Begin()
{
    overview_.ReadAgain();
    pages_->Show(overview_.Pages());
    stories_->SetOutdated();
    const QSettings settings;
    pages_->Restore(settings.value(QLatin1String(kPagesKey)).toByteArray());
    messages_->Restore(settings.value(QLatin1String(kMessagesKey)).toByteArray());
    stories_->Restore(settings.value(QLatin1String(kStoriesKey)).toByteArray());
    if (first_tab_->currentIndex() == 0)
        setCurrentIndex(settings.value(QLatin1String(kTabKey), kPages).toInt());
    timer_.start(kLookEvery);
}

void WorkPane::FollowCommand(const std::vector<Warning>& warnings,
                             const std::optional<RunError>& error, bool is_asked)
{
    const bool has_told = told_.FollowCommand(desk_.workspace(), warnings, error);
    if (overview_.FollowCommand(error))
        pages_->Show(overview_.Pages());
    ShowMessages();
    const bool has_ways_on = first_tab_->currentIndex() != 0; // which stay in front
    if (has_told && is_asked && !has_ways_on)
        setCurrentIndex(kMessages);
    stories_->SetOutdated();
}

void WorkPane::ShowMessages()
{
    const auto count = static_cast<qulonglong>(told_.Messages().size());
    setTabText(kMessages, count == 0 ? u"Messages"_s : u"Messages (%1)"_s.arg(count));
    messages_->ShowMessages(told_.Messages(), desk_.workspace().WorkDir);
}

void WorkPane::ReadAgain()
{
    overview_.ReadAgain();
    pages_->Show(overview_.Pages());
    stories_->SetOutdated();
}

void WorkPane::ShowWhy()
{
    setCurrentIndex(kWhy);
    stories_->setFocus();
}

std::string WorkPane::ChosenPath() const
{
    return currentIndex() == kWhy ? stories_->ShownPage() : pages_->Chosen().path;
}

void WorkPane::Look()
{
    if (!pages_->isVisible() || is_busy() || !overview_.IsOutdated())
        return;
    overview_.ReadAgain();
    pages_->Show(overview_.Pages());
}

void WorkPane::Store() const
{
    QSettings settings;
    settings.setValue(QLatin1String(kTabKey), currentIndex());
    settings.setValue(QLatin1String(kPagesKey), pages_->State());
    settings.setValue(QLatin1String(kMessagesKey), messages_->State());
    settings.setValue(QLatin1String(kStoriesKey), stories_->State());
}

bool WorkPane::WasStored()
{
    return QSettings().contains(QLatin1String(kTabKey));
}

} // namespace kiv
