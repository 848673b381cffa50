// The lower edge of the main window: status line, pass, New Year indicator, and a bar that shows
// how far a command has come.
#pragma once

#include <QElapsedTimer>
#include <QWidget>

#include <functional>
#include <string>
#include <string_view>

class QLabel;
class QProgressBar;
class QToolButton;

namespace kiv {

class StatusArea : public QWidget {
    Q_OBJECT

  public:
    explicit StatusArea(QWidget* parent);

    /// A command runs from Begin to End. Meanwhile the windows are repainted every now and then,
    /// and look at keys and clicks: who runs commands keeps those from them that do not stop it.
    void Begin();
    void End();
    /// Whether the command that runs, or ran last, has told a status.
    bool HasTold() const { return has_told_; }
    /// How many of its steps the command that runs, or ran last, has behind it, and of how many.
    int Done() const { return done_; }
    int All() const { return all_; }
    /// The button that asks for the end of the command.
    QToolButton* StopButton() const { return stop_; }
    /// Shows a text in the status line until the next one comes; the windows are not repainted.
    void Note(std::string_view text);
    /// Shows what is pending and lets the windows repaint. No key and no click is looked at.
    void Repaint();

    void ShowNewYear(std::string_view text);

    /// The status line.
    void Status(std::string_view text);
    /// The pass: "ASP", "HTM" or empty.
    void PassStatus(std::string_view text);
    /// Step `done` of `all` is behind us.
    void Step(int done, int all);
    /// The same while another program has the next step in work. 0 of 0: the bar moves.
    void Wait(int done, int all);

    /// Called before a command that takes its time is shown at work.
    std::function<void()> on_work;

  private:
    void PlaceAll();
    void Changed();
    void ShowPending();

    QLabel* status_label_;
    QLabel* pass_label_;
    QLabel* new_year_label_;
    QProgressBar* bar_;
    QToolButton* stop_;
    std::string status_;
    std::string pass_;
    int done_ = 0;
    int all_ = 0;
    bool is_running_ = false;
    bool waits_ = false;
    bool has_told_ = false;
    QElapsedTimer since_repaint_;
};

} // namespace kiv
