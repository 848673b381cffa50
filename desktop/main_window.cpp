#include "desktop/main_window.h"

#include "desktop/command_controls.h"
#include "desktop/conversion_window.h"
#include "desktop/dimension_window.h"
#include "desktop/directory_window.h"
#include "desktop/editor_offer.h"
#include "desktop/help_window.h"
#include "desktop/message_box.h"
#include "desktop/messages_pane.h"
#include "desktop/news_window.h"
#include "desktop/qt_text.h"
#include "desktop/rename_window.h"
#include "desktop/status_area.h"
#include "desktop/story_window.h"
#include "desktop/window_place.h"
#include "shell/builds.h"
#include "shell/messages.h"
#include "shell/outside_programs.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace kiv {

namespace {

constexpr int kPathColumns = 42; // of a shortened path, and a little

/// The one window of its kind, made when it is first wanted.
template <typename Window>
Window& OneOf(MainWindow& main_window)
{
    auto* window = main_window.findChild<Window*>(QString(), Qt::FindDirectChildrenOnly);
    if (window == nullptr) {
        window = new Window(main_window, &main_window);
        new WindowPlace(window);
    }
    return *window;
}

} // namespace

MainWindow::MainWindow(const Surroundings& around)
    : status_(new StatusArea(this)),
      reporter_([this](std::string_view text) { ShowMessage(text); }, *status_),
      machine_{around.files,    around.native_paths, around.clock,   clipboard_,
               around.programs, reporter_,           around.pictures},
      workspace_(machine_), controls_(new CommandControls(*menuBar(), this)),
      messages_(new MessagesPane(this))
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(QStringLiteral("kiv"));
    auto* const middle = new QWidget(this);
    auto* const column = new QVBoxLayout(middle);
    column->addWidget(MakePath());
    column->addWidget(controls_);
    column->addWidget(status_);
    column->addWidget(messages_, 1);
    column->addStretch();
    setCentralWidget(middle);
    QWidget::setTabOrder(path_, controls_);

    controls_->on_chosen = [this](const Command& command, std::size_t index) {
        Choose(command, index);
    };
    messages_->on_open = [this](const std::string& file) { OpenInEditor(file); };
    messages_->on_shown = [this](bool is_open) { MakeRoomForMessages(is_open); };
    status_->on_work = [this] { toggler(false); };
    workspace_.on_change = [this] {
        Refresh();
        status_->Repaint();
    };
    Refresh();
    new WindowPlace(this);
}

QWidget* MainWindow::MakePath()
{
    auto* const panel = new QWidget(this);
    auto* const label = new QLabel(QStringLiteral("Current directory:"), panel);
    label->setObjectName(QStringLiteral("Label1"));
    path_ = new QLineEdit(panel);
    path_->setObjectName(QStringLiteral("Text2"));
    path_->setReadOnly(true);
    path_->setAccessibleName(label->text());
    path_->setMinimumWidth(fontMetrics().averageCharWidth() * kPathColumns);
    auto* const row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(label);
    row->addWidget(path_, 1);
    return panel;
}

void MainWindow::Start(const std::optional<std::string>& argument)
{
    is_running_ = true;
    const std::vector<RunError> errors = workspace_.StartWindow(argument);
    Refresh();
    for (const RunError& error : errors)
        ShowMessage(ErrorText(error));
    OfferEditor();
    is_running_ = false;
    if (QPushButton* const build = controls_->BuildButton())
        build->setFocus();
}

void MainWindow::OfferEditor()
{
    const std::optional<std::string> editor = AskForEditor(this, machine_.files);
    if (!editor)
        return;
    if (const auto error = workspace_.Run([&] { StoreEditor(workspace_, *editor); }))
        ShowMessage(ErrorText(*error));
}

void MainWindow::Choose(const Command& command, std::size_t index)
{
    if (is_running_)
        return;
    const auto run = [&] {
        if (command.disables_buttons)
            toggler(false);
        RunCommand(workspace_, command, index);
    };
    if (!command.Runs() || Run(run))
        Open(command.opens, command.mode);
}

bool MainWindow::Perform(const std::function<void()>& command, Warnings warnings)
{
    if (is_running_)
        return false;
    is_running_ = true;
    reporter_.ForgetWarnings();
    status_->Begin();
    const std::optional<RunError> error = workspace_.Run(command);
    status_->End();
    toggler(true);
    Refresh();
    for (SideWindow* const window : findChildren<SideWindow*>(Qt::FindDirectChildrenOnly))
        window->Refresh();
    if (warnings == Warnings::replaced)
        messages_->ShowMessages(MessagesOf(workspace_, reporter_.Warnings(), error));
    if (error)
        ShowMessage(ErrorText(*error));
    is_running_ = false;
    if (shall_close_)
        close();
    return !error;
}

void MainWindow::toggler(bool on)
{
    if (on != is_off_)
        return;
    is_off_ = !on;
    if (on)
        QCoreApplication::processEvents(); // clicks of the time when all was off go nowhere
    else
        had_focus_ = QApplication::focusWidget();
    controls_->toggler(on);
    for (SideWindow* const window : findChildren<SideWindow*>(Qt::FindDirectChildrenOnly))
        window->setEnabled(on);
    if (on && had_focus_ != nullptr)
        had_focus_->setFocus();
}

void MainWindow::ShowMessage(std::string_view text)
{
    status_->Repaint();
    ShowBox(this, text);
}

void MainWindow::Open(Opens what, std::string_view mode)
{
    switch (what) {
    case Opens::nothing:
        break;
    case Opens::directories:
        OneOf<DirectoryWindow>(*this).BringUp();
        break;
    case Opens::renamer:
        OneOf<RenameWindow>(*this).BringUp();
        break;
    case Opens::dimensions:
        OneOf<DimensionWindow>(*this).BringUp();
        break;
    case Opens::conversion:
        OneOf<ConversionDialog>(*this).OpenIn(mode);
        break;
    case Opens::news:
        OneOf<NewsWindow>(*this).BringUp();
        break;
    case Opens::help:
        OneOf<HelpWindow>(*this).BringUp();
        break;
    case Opens::stories:
        OneOf<StoryWindow>(*this).BringUp();
        break;
    case Opens::end:
        close();
        break;
    }
}

void MainWindow::OpenInEditor(const std::string& file)
{
    Perform([&] { Edit(workspace_, file); }, Warnings::kept);
}

void MainWindow::Refresh()
{
    controls_->Refresh(workspace_);
    status_->ShowNewYear(NewYearText(workspace_));
    path_->setText(ToQt(workspace_.ShownDirectory()));
    path_->setCursorPosition(0);
    path_->setToolTip(ToTip(workspace_.WorkDir));
    path_->setAccessibleDescription(ToQt(workspace_.WorkDir));
}

void MainWindow::MakeRoomForMessages(bool is_open)
{
    if (isMaximized() || isFullScreen())
        return;
    QLayout& inner = *centralWidget()->layout();
    const int pane = is_open ? messages_->minimumSizeHint().height() : -messages_->height();
    const int wanted = height() + pane + (is_open ? inner.spacing() : -inner.spacing());
    inner.activate(); // else the window could not be smaller than with the pane
    layout()->activate();
    resize(width(), wanted);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (is_running_) {
        shall_close_ = true;
        event->ignore();
        return;
    }
    for (SideWindow* const window : findChildren<SideWindow*>(Qt::FindDirectChildrenOnly))
        window->close();
    messages_->ShowMessages({}); // the place that is remembered is that without them
    QMainWindow::closeEvent(event);
}

void MainWindow::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    QPushButton* const build = controls_->BuildButton();
    if (enter && path_->hasFocus() && build != nullptr)
        build->click();
    else
        QMainWindow::keyPressEvent(event);
}

} // namespace kiv
