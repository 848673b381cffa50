// A desk for the windows beside the main window: a workspace on a drive C: of the test's own, all
// words and starts recorded, the clipboard the real one.
#pragma once

#include "desktop/command_desk.h"
#include "desktop/window_clipboard.h"
#include "platform/drives.h"
#include "platform/programs.h"
#include "shell/workspace.h"
#include "tests/support/folders.h"
#include "tests/support/recorders.h"

#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kiv {

using Texts = std::vector<std::string>;

/// The working directory is "C:\site"; the day is 5 March 2004.
class SideWindowDesk : public CommandDesk, public test::DriveFolder {
  public:
    SideWindowDesk();

    Workspace& workspace() override { return workspace_; }
    bool Run(const std::function<void()>& operation) override;
    void OpenInEditor(const std::string& file, int line) override;
    void LookFirst(std::string_view caption, const RenameTask& task,
                   std::function<void()> /*run*/) override
    {
        looks.push_back(std::string(caption) + ' ' + task.folder);
    }
    void ShowMessage(std::string_view text) override { words.shown.emplace_back(text); }

    /// Every file below a folder of drive C:, with its bytes.
    test::FileTree Tree(const std::string& below) const { return test::ReadTree(Native(below)); }

    test::RecordingReporter words; // the reporter's and the windows' own messages
    Texts looks;                   // that were to come before a renaming: caption and folder
    std::string error;             // of the last command, "division"; "" when it went through
    ProgramList programs;
    WindowClipboard clipboard;

  private:
    std::unique_ptr<Drives> files_ = MakeDriveFiles({{'C', Root().string()}});
    FrozenClock clock_{{2004, 3, 5, 14, 7, 9}};
    HeaderPictureLoader pictures_{*files_};
    Machine machine_{*files_, *files_, clock_, clipboard, programs, words, pictures_};
    Workspace workspace_{machine_};
};

/// The control of this object name; a missing one fails the test program.
template <typename Control>
Control& Find(const QWidget& window, const QString& name)
{
    auto* const control = window.findChild<Control*>(name);
    if (control == nullptr)
        qFatal("no control %s", qPrintable(name));
    return *control;
}

/// Clicks a button with the mouse.
void Press(const QWidget& window, const QString& name);

/// A text as it is seen: "&&" is "&", a single "&" is not there.
QString Seen(const QString& text);

/// The object names of all controls that Tab reaches in a window that is shown, from `first` on.
QStringList TabOrder(const QWidget& window, const QString& first);

/// What is missing in a window that is shown: a control without object name, tooltip or spoken
/// name, out of the tab order, or with a letter for Alt that another one has. "" when all is well.
QString Faults(const QWidget& window);

} // namespace kiv
