// A command of the site that asks something first, or shows what it would do: its questions, the
// files that it would change, and the button that has it done.
#pragma once

#include "desktop/side_window.h"
#include "shell/site_tasks.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QStringListModel;

namespace kiv {

struct Command;

class TaskWindow : public SideWindow {
    Q_OBJECT

  public:
    /// `command` is one with a task.
    TaskWindow(CommandDesk& desk, QWidget* parent, const Command& command);
    /// The object name of the window of a command.
    static QString NameOf(const Command& command);

    /// Brings the window up with the answers to begin with, and looks.
    void Open();
    /// Another working directory has other files: the window closes.
    void Refresh() override;

    /// Asks for a folder; an empty one when the user wants none.
    std::function<QString(const QString& title)> pick_folder;

  protected:
    void Fill() override;

  private:
    struct Field {
        QLineEdit* text = nullptr; // one of the two is there
        QComboBox* choices = nullptr;
    };

    void AddQuestion(QFormLayout& form, const TaskQuestion& question);
    void AddFolderQuestion(QFormLayout& form, const TaskQuestion& question);
    void AddList();
    TaskAnswers Answers() const;
    void FollowAnswers();
    /// What the task would do, as a command; nothing when it failed or could not begin.
    std::optional<TaskLook> WorkOut();
    void Look();
    void Show(const TaskLook& look, std::string_view note = {});
    void Press();

    const SiteTask& task_;
    std::string folder_; // the working directory that it is about
    TaskLook seen_;
    std::vector<Field> fields_;
    QListView* list_ = nullptr; // null: nothing is shown before
    QStringListModel* lines_ = nullptr;
    QLabel* summary_ = nullptr;
    QLabel* trouble_ = nullptr;
    QPushButton* run_ = nullptr;
};

} // namespace kiv
