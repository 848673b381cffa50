// The main window on a drive C: of the test's own. Starts of programs are recorded.
#pragma once

#include "desktop/main_window.h"
#include "platform/drives.h"
#include "platform/programs.h"
#include "tests/desktop/side_window_desk.h"
#include "tests/support/folders.h"

#include <QMessageBox>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kiv {

/// A clock that stands still; looking at it is a moment in the middle of a command.
class WatchedClock : public Clock {
  public:
    std::function<void()> on_look;
    DateTime Now() override
    {
        if (on_look)
            on_look();
        return {2004, 3, 5, 14, 7, 9};
    }
};

/// Reads every message box that comes up, and presses its button.
class BoxReader : public QObject {
    Q_OBJECT

  public:
    BoxReader();
    /// The texts so far.
    QStringList texts;
    /// Called while a box is open.
    std::function<void(const QMessageBox& box)> on_box;

  private:
    void Look();
    QTimer timer_;
};

class MainWindowDesk : public test::DriveFolder {
  public:
    /// Sets an editor "pad" in "utils".
    MainWindowDesk();

    /// Makes the window and starts it in "C:\site". `example` is where the example is installed.
    MainWindow& Start(const std::optional<std::string>& argument = "C:\\site",
                      const std::string& example = "");
    MainWindow& Window() { return *window_; }
    /// Ends the window, as the end of the program does.
    void EndWindow() { window_.reset(); }

    /// The text of the status line, and of the second one.
    QString Status() const;
    QString Pass() const;
    /// Chooses a menu entry by its object name.
    void ChooseEntry(const QString& name) const;

    BoxReader boxes;
    WatchedClock clock;

    std::unique_ptr<Drives> files = MakeDriveFiles({{'C', Root().string()}});
    ProgramList programs;
    /// What the window starts programs with; for tests of real starts.
    Programs* starter = &programs;

  private:
    HeaderPictureLoader pictures_{*files};
    std::unique_ptr<MainWindow> window_;
};

} // namespace kiv
