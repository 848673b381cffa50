// The main window: shows the workspace, and runs its commands one at a time.
#pragma once

#include "desktop/command_desk.h"
#include "desktop/window_clipboard.h"
#include "desktop/window_reporter.h"
#include "shell/commands.h"
#include "shell/workspace.h"

#include <QMainWindow>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

class QLineEdit;

namespace kiv {

class CommandControls;
class MessagesPane;
class StatusArea;

/// The parts of the machine that are no windows.
struct Surroundings {
    Files& files;
    NativePaths& native_paths;
    Clock& clock;
    Programs& programs;
    PictureLoader& pictures;
};

class MainWindow : public QMainWindow, public CommandDesk {
    Q_OBJECT

  public:
    explicit MainWindow(const Surroundings& around);

    /// Starts the workspace; `argument` is the program's own (a drive path). Faults are shown in
    /// boxes, so the window should stand already.
    void Start(const std::optional<std::string>& argument);

    Workspace& workspace() override { return workspace_; }
    bool Run(const std::function<void()>& operation) override
    {
        return Perform(operation, Warnings::replaced);
    }
    void OpenInEditor(const std::string& file) override;
    void ShowMessage(std::string_view text) override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    enum class Warnings { replaced, kept };

    QWidget* MakePath();
    void Choose(const Command& command, std::size_t index);
    /// Runs a command with all that belongs to it. False when it failed or could not begin.
    bool Perform(const std::function<void()>& command, Warnings warnings);
    void Open(Opens what, std::string_view mode);
    /// "Off" for all windows, until the command has ended.
    void toggler(bool on);
    void Refresh();
    void MakeRoomForMessages(bool is_open);
    void OfferEditor();

    StatusArea* status_;
    WindowClipboard clipboard_;
    WindowReporter reporter_;
    Machine machine_;
    Workspace workspace_;
    CommandControls* controls_;
    MessagesPane* messages_;
    QLineEdit* path_ = nullptr;
    bool is_running_ = false;
    bool is_off_ = false;
    bool shall_close_ = false; // asked for while a command ran
    QWidget* had_focus_ = nullptr;
};

} // namespace kiv
