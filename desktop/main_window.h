// The main window: shows the workspace, and runs its commands one at a time.
#pragma once

#include "desktop/command_desk.h"
#include "desktop/side_windows.h"
#include "desktop/window_clipboard.h"
#include "desktop/window_reporter.h"
#include "platform/stop_request.h"
#include "shell/commands.h"
#include "shell/workspace.h"

#include <QMainWindow>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

class CommandControls;
class Drives;
class LivePreview;
class PathRow;
class StatusArea;
class WorkGuard;
class WorkPane;
enum class PageAsk;

/// The parts of the machine that are no windows.
struct Surroundings {
    Drives& drives;
    Clock& clock;
    Programs& programs;
    PictureLoader& pictures;
};

class MainWindow : public QMainWindow, public CommandDesk {
    Q_OBJECT

  public:
    explicit MainWindow(const Surroundings& around);
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    ~MainWindow() override;

    /// Starts the workspace; `argument` is the program's own (a drive path). Faults are shown in
    /// boxes, so the window should stand already.
    void Start(const std::optional<std::string>& argument);

    Workspace& workspace() override { return workspace_; }
    bool Run(const std::function<void()>& operation) override
    {
        return Perform(operation, Warnings::replaced);
    }
    void OpenInEditor(const std::string& file, int line) override;
    void LookFirst(std::string_view caption, const RenameTask& task,
                   std::function<void()> run) override;
    void ShowMessage(std::string_view text) override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    enum class Warnings { replaced, kept };

    void Choose(const Command& command, std::size_t index);
    /// Runs a command with all that belongs to it. False when it failed or could not begin.
    bool Perform(const std::function<void()>& command, Warnings warnings);
    /// The command itself, between the status area's Begin and End.
    std::optional<RunError> RunGuarded(const std::function<void()>& command);
    void Open(const Command& command);
    /// Shows a message in a box, if the command may.
    void Tell(std::string_view text, const KeptPlace& where);
    void TellError(const RunError& error);
    /// "Off" for all windows, until the command has ended.
    void toggler(bool on);
    void Refresh();
    /// Looks again at what the user may have changed with another program.
    void FollowLists();
    /// Asks the command that runs to end between two files; `closes`: the window closes then.
    void AskToStop(bool closes);
    void GoTo(const std::string& typed);
    void Connect();
    /// The size of a first start, on a screen that has room for it.
    void TakeFirstSize();
    void FocusBuild();
    void OfferEditor();
    /// Shows the page that is chosen in the browser.
    void Preview();
    void BuildSaved();
    /// Does with the page that is chosen what was asked for.
    void Serve(PageAsk ask);
    void CopyAddress(const std::string& page);

    StatusArea* status_;
    WindowClipboard clipboard_;
    WindowReporter reporter_;
    Machine machine_;
    Workspace workspace_;
    PathRow* path_;
    CommandControls* controls_;
    WorkPane* work_;
    StopRequest stop_;
    WorkGuard* guard_;
    SideWindows side_windows_;
    QString work_name_; // the caption of what was chosen here; "": nothing was
    bool is_started_ = false;
    bool is_running_ = false;
    bool is_off_ = false;
    bool is_quiet_ = false;    // what the command tells stands in the list alone
    bool shall_close_ = false; // asked for while a command ran
    QWidget* had_focus_ = nullptr;
    std::unique_ptr<LivePreview> live_; // last: its server ends before the workspace goes
};

} // namespace kiv
