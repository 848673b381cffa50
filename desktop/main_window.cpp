#include "desktop/main_window.h"

#include "desktop/command_controls.h"
#include "desktop/editor_offer.h"
#include "desktop/first_steps_pane.h"
#include "desktop/folder_drop.h"
#include "desktop/live_preview.h"
#include "desktop/message_box.h"
#include "desktop/path_row.h"
#include "desktop/qt_text.h"
#include "desktop/status_area.h"
#include "desktop/window_place.h"
#include "desktop/work_guard.h"
#include "desktop/work_pane.h"
#include "platform/drives.h"
#include "shell/builds.h"
#include "shell/command_status.h"
#include "shell/editors.h"
#include "shell/messages.h"
#include "shell/outside_programs.h"
#include "shell/typed_folder.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QMenuBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include <utility>

namespace kiv {

namespace {

// Of the window at a first start, and about what its frame takes of the screen.
constexpr int kFirstWidth = 900;
constexpr int kFirstHeight = 640;
constexpr QSize kFrame(8, 40);

} // namespace

MainWindow::MainWindow(const Surroundings& around)
    : status_(new StatusArea(this)),
      reporter_([this](std::string_view text, const KeptPlace& where) { Tell(text, where); },
                *status_),
      machine_{around.drives,   around.drives, around.clock,   clipboard_,
               around.programs, reporter_,     around.pictures},
      workspace_(machine_), path_(new PathRow(workspace_, this)),
      controls_(new CommandControls(*menuBar(), this)),
      work_(new WorkPane(*this, around.drives, controls_->Letters(), this)),
      guard_(new WorkGuard(
          status_->StopButton(), [this] { AskToStop(false); }, this)),
      side_windows_(*this, this), live_(std::make_unique<LivePreview>(around.drives, workspace_))
{
    setObjectName(QStringLiteral("MainWindow"));
    setWindowTitle(QStringLiteral("kiv"));
    auto* const middle = new QWidget(this);
    auto* const column = new QVBoxLayout(middle);
    column->addWidget(path_);
    column->addWidget(controls_);
    column->addWidget(status_);
    column->addWidget(work_, 1);
    setCentralWidget(middle);
    QWidget::setTabOrder(path_, controls_);
    Connect();
    Refresh();
    TakeFirstSize();
    new WindowPlace(this);
    if (!WorkPane::WasStored())
        TakeFirstSize(); // the place is one of a window without the pane
}

MainWindow::~MainWindow() = default;

void MainWindow::TakeFirstSize()
{
    const QSize room = screen()->availableSize() - kFrame;
    resize(QSize(kFirstWidth, kFirstHeight).boundedTo(room));
}

void MainWindow::Connect()
{
    controls_->on_chosen = [this](const Command& command, std::size_t index) {
        Choose(command, index);
    };
    work_->FirstSteps().on_editor = [this] { OfferEditor(); };
    work_->on_begun = [this] { FocusBuild(); }; // the button that was pressed has gone
    work_->on_ask = [this](PageAsk ask) { Serve(ask); };
    live_->is_busy = work_->is_busy = [this] {
        return is_running_ || QApplication::activeModalWidget() != nullptr ||
               QApplication::activePopupWidget() != nullptr;
    };
    live_->on_due = [this] { BuildSaved(); };
    status_->on_work = [this] { toggler(false); };
    path_->on_go = [this](const std::string& typed) { GoTo(typed); };
    reporter_.StopWhen(&stop_);
    connect(status_->StopButton(), &QToolButton::clicked, this, [this] { AskToStop(false); });
    new FolderDrop(this, [this](const std::string& native) { GoTo(native); });
    workspace_.on_change = [this] {
        Refresh();
        status_->Repaint();
    };
}

void MainWindow::GoTo(const std::string& typed)
{
    Run([&] { GoToTyped(workspace_, typed); });
}

void MainWindow::Start(const std::optional<std::string>& argument)
{
    is_running_ = true;
    const QScopedValueRollback<QString> name(work_name_, QStringLiteral("Start"));
    const std::vector<RunError> errors = workspace_.StartWindow(argument);
    Refresh();
    for (const RunError& error : errors)
        TellError(error);
    if (EditorIsMissing(machine_.files))
        OfferEditor();
    is_running_ = false;
    is_started_ = true;
    work_->Begin();
    FocusBuild();
}

void MainWindow::FocusBuild()
{
    if (QPushButton* const build = controls_->BuildButton())
        build->setFocus();
}

void MainWindow::OfferEditor()
{
    const std::optional<std::string> editor = AskForEditor(this, workspace_);
    if (!editor)
        return;
    if (const auto error = workspace_.Run([&] { StoreEditor(workspace_, *editor); }))
        TellError(*error);
    else if (is_started_)
        status_->Status("Editor chosen");
    Refresh();
}

void MainWindow::Choose(const Command& command, std::size_t index)
{
    if (is_running_)
        return;
    const QScopedValueRollback<QString> name(work_name_, ShownCaption(command.caption));
    const auto run = [&] {
        if (command.disables_buttons)
            toggler(false);
        if (command.builds)
            live_->Site().Build(command.run);
        else
            RunCommand(workspace_, command, index);
    };
    if (WantsLook(command, workspace_)) {
        LookFirst(command.caption, {*command.looks_at},
                  [this, &command, index] { RunCommand(workspace_, command, index); });
        return;
    }
    if (command.Runs() && !Run(run))
        return;
    if (!command.done.empty() && !status_->HasTold())
        status_->Status(command.done);
    Open(command);
}

bool MainWindow::Perform(const std::function<void()>& command, Warnings warnings)
{
    if (is_running_)
        return false;
    is_running_ = true;
    FollowLists();
    reporter_.ForgetWarnings();
    const std::optional<RunError> error = RunGuarded(command);
    live_->Follow();
    toggler(true);
    Refresh();
    side_windows_.Refresh();
    if (warnings == Warnings::replaced)
        work_->FollowCommand(reporter_.Warnings(), error, !is_quiet_);
    if (error)
        TellError(*error);
    is_running_ = false;
    const bool went_well = !error && !stop_.IsAsked();
    stop_.Forget();
    if (shall_close_)
        close();
    return went_well;
}

std::optional<RunError> MainWindow::RunGuarded(const std::function<void()>& command)
{
    std::optional<RunError> error;
    status_->Begin();
    guard_->SetOn(true);
    try {
        error = workspace_.Run(command);
        if (error)
            status_->Status(FailedStatus(*error));
    } catch (const Stopped&) {
        status_->Status(StoppedStatus(status_->Done(), status_->All()));
    }
    guard_->SetOn(false);
    status_->End();
    return error;
}

void MainWindow::AskToStop(bool closes)
{
    if (!is_running_)
        return;
    stop_.Ask();
    shall_close_ = shall_close_ || closes;
    status_->Note(StoppingStatus(shall_close_));
}

void MainWindow::FollowLists()
{
    if (const std::optional<RunError> error = workspace_.FollowLists())
        TellError(*error);
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
    work_->setEnabled(on);
    side_windows_.SetEnabled(on);
    if (on && had_focus_ != nullptr)
        had_focus_->setFocus();
}

void MainWindow::LookFirst(std::string_view caption, const RenameTask& task,
                           std::function<void()> run)
{
    side_windows_.LookFirst(caption, task, std::move(run));
}

void MainWindow::ShowMessage(std::string_view text)
{
    status_->Repaint();
    ShowBox(this, text);
}

void MainWindow::Tell(std::string_view text, const KeptPlace& where)
{
    if (is_quiet_)
        return;
    status_->Repaint();
    ShowBox(this, text, ShownPlace(where, workspace_.WorkDir));
}

void MainWindow::TellError(const RunError& error)
{
    if (is_quiet_)
        return;
    status_->Repaint();
    ShowErrorBox(this, work_name_, error);
}

void MainWindow::Open(const Command& command)
{
    if (side_windows_.Open(command))
        return;
    switch (command.opens) {
    case Opens::stories:
        work_->ShowWhy();
        break;
    case Opens::editors:
        OfferEditor();
        break;
    case Opens::preview:
        Preview();
        break;
    case Opens::page:
        Serve(PageAsk::browser);
        break;
    case Opens::lists:
        work_->ReadAgain();
        break;
    case Opens::new_site:
        work_->FirstSteps().BeginSite();
        break;
    case Opens::end:
        close();
        break;
    default:
        break;
    }
}

void MainWindow::Preview()
{
    const std::string page = work_->ChosenPath();
    LiveSite& site = live_->Site();
    if (!site.IsShown())
        Perform([&] { site.BuildAndShow(); }, Warnings::replaced);
    if (site.IsShown())
        Perform([&] { site.OpenBrowser(page); }, Warnings::kept);
}

void MainWindow::BuildSaved()
{
    is_quiet_ = true; // nobody has asked for it: the list tells
    Perform([this] { live_->Site().BuildAgain(); }, Warnings::replaced);
    is_quiet_ = false;
}

void MainWindow::Serve(PageAsk ask)
{
    const std::string page = work_->ChosenPath();
    switch (ask) {
    case PageAsk::browser:
        Perform([&] { ShowInBrowser(workspace_, page); }, Warnings::kept);
        break;
    case PageAsk::folder:
        Perform([&] { ExploreFolderOf(workspace_, page); }, Warnings::kept);
        break;
    case PageAsk::address:
        CopyAddress(page);
        break;
    case PageAsk::preview:
        Preview();
        break;
    case PageAsk::why:
        work_->ShowWhy();
        break;
    }
}

void MainWindow::CopyAddress(const std::string& page)
{
    const std::string shown = live_->Site().AddressOf(page);
    const QString file = ToQtNative(machine_.native_paths.ToNative(page));
    QGuiApplication::clipboard()->setText(
        shown.empty() ? QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded) : ToQtNative(shown));
    reporter_.Status("Address copied");
}

void MainWindow::OpenInEditor(const std::string& file, int line)
{
    if (Perform([&] { EditAt(workspace_, file, line); }, Warnings::kept))
        status_->Status("Opened in the editor");
}

void MainWindow::Refresh()
{
    const QPushButton* const build = controls_->BuildButton();
    const bool builds_next = build != nullptr && focusWidget() == build;
    controls_->Refresh(workspace_);
    if (builds_next && build->isHidden())
        FocusBuild(); // else it would be the next button that Enter presses
    status_->ShowNewYear(NewYearText(workspace_));
    path_->Refresh();
    work_->FirstSteps().Refresh();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (is_running_) {
        AskToStop(true);
        event->ignore();
        return;
    }
    live_->Site().Stop();
    side_windows_.Close();
    work_->Store();
    QMainWindow::closeEvent(event);
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    const bool comes_back = event->type() == QEvent::ActivationChange && isActiveWindow();
    if (!comes_back || is_running_ || !is_started_)
        return;
    FollowLists();
    Refresh();
}

} // namespace kiv
