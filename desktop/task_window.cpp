#include "desktop/task_window.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"
#include "shell/commands.h"
#include "shell/workspace.h"

#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QVBoxLayout>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

constexpr int kTaskColumns = 84;
constexpr int kRowsWithList = 20;

constexpr ControlWords kLines = {"files", "Files", "What is changed or sent"};
constexpr ControlWords kBrowse = {"browse", "Browse...", "Choose the folder from a list"};
constexpr ControlWords kCancelTask = {"cancel", "Cancel", "Close this window and change nothing"};

const SiteTask& TaskOf(const Command& command)
{
    const SiteTask* const task = FindSiteTask(command.name);
    if (task == nullptr)
        qFatal("a command without a task: %s", command.name.data());
    return *task;
}

} // namespace

QString TaskWindow::NameOf(const Command& command)
{
    return u"TaskWindow-"_s + ToQt(command.name);
}

TaskWindow::TaskWindow(CommandDesk& desk, QWidget* parent, const Command& command)
    : SideWindow(desk, parent, FromQt(NameOf(command)), FromQt(ShownCaption(command.caption))),
      task_(TaskOf(command))
{
    pick_folder = [this](const QString& title) {
        return QFileDialog::getExistingDirectory(this, title);
    };
    auto* const column = new QVBoxLayout(this);
    auto* const explanation = new QLabel(AsShown(task_.explanation), this);
    explanation->setObjectName(u"explanation"_s);
    explanation->setWordWrap(true);
    column->addWidget(explanation);
    auto* const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    column->addLayout(form);
    for (const TaskQuestion& question : task_.questions)
        AddQuestion(*form, question);
    if (task_.look != nullptr)
        AddList();
    trouble_ = MakeTrouble(u"trouble"_s, this);
    column->addWidget(trouble_);
    if (task_.look == nullptr)
        column->addStretch();

    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    run_ = MakeButton({"run", task_.button, command.tip}, this);
    run_->setDefault(true);
    auto* const cancel = MakeButton(kCancelTask, this);
    buttons->addStretch();
    buttons->addWidget(run_);
    buttons->addWidget(cancel);
    GiveMnemonics(*this);
    const int rows = task_.look != nullptr ? kRowsWithList : 0;
    resize(fontMetrics().averageCharWidth() * kTaskColumns, fontMetrics().lineSpacing() * rows);
    connect(run_, &QPushButton::clicked, this, &TaskWindow::Press);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TaskWindow::AddQuestion(QFormLayout& form, const TaskQuestion& question)
{
    const ControlWords words = {question.name, question.caption, question.tip};
    if (question.kind == TaskQuestion::Kind::folder) {
        AddFolderQuestion(form, question);
        return;
    }
    if (question.kind == TaskQuestion::Kind::text) {
        fields_.push_back({.text = AddField(form, words)});
        connect(fields_.back().text, &QLineEdit::textChanged, this, &TaskWindow::FollowAnswers);
        return;
    }
    auto* const choices = new QComboBox(this);
    Describe(*choices, words);
    for (const std::string_view choice : question.choices)
        choices->addItem(ToQt(choice));
    form.addRow(MakeLabel(question.caption, *choices), choices);
    fields_.push_back({.choices = choices});
    connect(choices, &QComboBox::currentTextChanged, this, [this] {
        FollowAnswers();
        Look();
    });
}

void TaskWindow::AddFolderQuestion(QFormLayout& form, const TaskQuestion& question)
{
    auto* const field = new QLineEdit(this);
    Describe(*field, {question.name, question.caption, question.tip});
    auto* const browse = MakeButton(kBrowse, this);
    browse->setObjectName(u"browse_"_s + ToQt(question.name));
    browse->setAutoDefault(false);
    auto* const row = new QHBoxLayout;
    row->addWidget(field, 1);
    row->addWidget(browse);
    form.addRow(MakeLabel(question.caption, *field), row);
    fields_.push_back({.text = field});
    connect(field, &QLineEdit::textChanged, this, &TaskWindow::FollowAnswers);
    connect(browse, &QPushButton::clicked, this, [this, field, &question] {
        if (const QString folder = pick_folder(ToQt(question.caption)); !folder.isEmpty())
            field->setText(folder);
    });
}

void TaskWindow::AddList()
{
    lines_ = new QStringListModel(this);
    list_ = new QListView(this);
    Describe(*list_, kLines);
    list_->setAccessibleName(ToQt(kLines.caption));
    list_->setModel(lines_);
    list_->setUniformItemSizes(true);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    summary_ = new QLabel(this);
    summary_->setObjectName(u"summary"_s);
    summary_->setTextFormat(Qt::PlainText);
    summary_->setWordWrap(true);
    summary_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* const column = static_cast<QVBoxLayout*>(layout());
    column->addWidget(list_, 1);
    column->addWidget(summary_);
}

void TaskWindow::Open()
{
    BringUp();
    // Only now it is known how wide the lines of the explanation are.
    const int needed = layout()->totalHeightForWidth(width());
    resize(width(), qMax(height(), needed));
    Look();
}

void TaskWindow::Fill()
{
    folder_ = workspace().WorkDir;
    const TaskAnswers answers =
        task_.first_answers != nullptr ? task_.first_answers(workspace()) : TaskAnswers();
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const QString answer = i < answers.size() ? ToQt(answers[i]) : QString();
        if (fields_[i].text != nullptr) {
            fields_[i].text->setText(answer);
            continue;
        }
        const QSignalBlocker blocker(fields_[i].choices);
        fields_[i].choices->setCurrentText(answer);
    }
    FollowAnswers();
}

void TaskWindow::Refresh()
{
    if (isVisible() && workspace().WorkDir != folder_)
        reject();
}

TaskAnswers TaskWindow::Answers() const
{
    TaskAnswers answers;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const Field& field = fields_[i];
        if (field.choices != nullptr)
            answers.push_back(FromQt(field.choices->currentText()));
        else if (task_.questions[i].kind == TaskQuestion::Kind::folder)
            answers.push_back(FromQtNative(field.text->text().trimmed()));
        else
            answers.push_back(LineText(*field.text));
    }
    return answers;
}

void TaskWindow::FollowAnswers()
{
    const std::string fault =
        task_.fault != nullptr ? task_.fault(workspace(), Answers()) : std::string();
    trouble_->setText(ToQt(fault));
    trouble_->setVisible(!fault.empty());
    run_->setEnabled(fault.empty() && (task_.look == nullptr || seen_.is_possible));
}

std::optional<TaskLook> TaskWindow::WorkOut()
{
    TaskLook look;
    if (!desk().Run([&] { look = task_.look(workspace(), Answers()); }))
        return std::nullopt;
    return look;
}

void TaskWindow::Look()
{
    if (task_.look == nullptr || !isVisible())
        return;
    Show({.summary = "Looking ..."});
    const std::optional<TaskLook> look = WorkOut();
    Show(look.value_or(TaskLook{.summary = "It cannot be told what would be done."}));
}

void TaskWindow::Show(const TaskLook& look, std::string_view note)
{
    seen_ = look;
    QStringList lines;
    for (const std::string& line : look.lines)
        lines << ToQt(line);
    lines_->setStringList(lines);
    summary_->setText(ToQt(look.summary) + ToQt(note));
    FollowAnswers();
}

void TaskWindow::Press()
{
    const TaskAnswers answers = Answers();
    if (task_.look != nullptr) {
        const std::optional<TaskLook> now = WorkOut();
        if (!now)
            return;
        if (*now != seen_) {
            Show(*now, " The files have changed since they were shown: look again.");
            return;
        }
    }
    if (desk().Run([&] { task_.run(workspace(), answers); }))
        accept();
}

} // namespace kiv
