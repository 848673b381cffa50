#include "desktop/first_steps_pane.h"

#include "desktop/controls.h"
#include "desktop/mnemonics.h"
#include "desktop/qt_text.h"
#include "shell/first_steps.h"
#include "shell/typed_folder.h"
#include "shell/workspace.h"

#include <QCommandLinkButton>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace kiv {

namespace {

using namespace Qt::StringLiterals;

constexpr int kFirstStepsColumns = 64;

constexpr ControlWords kBegin = {"BeginSite", "Begin a site",
                                 "Makes three pages, a template and a style sheet"};
constexpr ControlWords kOpenStart = {"OpenStartFolder", "Open the folder kiv was started in", ""};
constexpr ControlWords kOpen = {"OpenFolder", "Open a folder",
                                "One that has a page list, _html.txt, and a template"};
constexpr ControlWords kExample = {"OpenExample", "Look at the example",
                                   "Makes a copy of a museum's site that is yours to play with"};
constexpr ControlWords kEditor = {"FirstEditor", "Choose an editor",
                                  "Choose the program that opens templates and page lists"};

/// The tip of the words stands below the button's caption, too.
void Explain(QCommandLinkButton& button, const ControlWords& words)
{
    Describe(button, words);
    button.setDescription(ToQt(words.tip));
    // Else the least is the caption alone.
    QWidget& widget = button;
    const int width = widget.fontMetrics().averageCharWidth() * kFirstStepsColumns;
    widget.setMinimumSize(width, widget.heightForWidth(width));
}

QLabel* MakeTitle(QWidget* parent)
{
    auto* const title = new QLabel(u"How do you want to begin?"_s, parent);
    QFont font = title->font();
    font.setBold(true);
    title->setFont(font);
    return title;
}

/// What to do about the editor that the start has missed.
QWidget* MakeEditorRow(QWidget* parent, const std::function<void()>& choose)
{
    auto* const panel = new QWidget(parent);
    auto* const row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    QPushButton* const button = MakeButton(kEditor, panel);
    row->addWidget(new QLabel(u"kiv has no editor yet to open page lists and templates with."_s),
                   1);
    row->addWidget(button);
    QObject::connect(button, &QPushButton::clicked, panel, choose);
    return panel;
}

} // namespace

FirstStepsPane::FirstStepsPane(CommandDesk& desk, QSet<QChar> taken, QWidget* parent)
    : QWidget(parent), desk_(desk)
{
    setObjectName(u"FirstSteps"_s);
    pick_folder = [this](const QString& title) { return AskForFolder(title); };
    auto* const column = new QVBoxLayout(this);
    column->addWidget(MakeTitle(this));
    QPushButton* const begin = AddWay(kBegin);
    open_start_ = AddWay(kOpenStart);
    QPushButton* const open = AddWay(kOpen);
    example_ = AddWay(kExample);
    editor_ = MakeEditorRow(this, [this] { on_editor(); });
    column->addWidget(editor_);
    column->addStretch();
    GiveLetters(taken);

    connect(begin, &QPushButton::clicked, this, &FirstStepsPane::BeginSite);
    connect(open_start_, &QPushButton::clicked, this, [this] {
        desk_.Run([this] { GoToPicked(desk_.workspace(), desk_.workspace().StartFolder); });
    });
    connect(open, &QPushButton::clicked, this,
            [this] { RunIn(u"The folder of your site"_s, GoToPicked); });
    connect(example_, &QPushButton::clicked, this,
            [this] { RunIn(u"A folder for the copy of the example"_s, OpenExampleIn); });
}

void FirstStepsPane::BeginSite()
{
    RunIn(u"The folder of the new site"_s, BeginSiteIn);
}

void FirstStepsPane::GiveLetters(QSet<QChar>& taken)
{
    const QList<QPushButton*> buttons = findChildren<QPushButton*>();
    QStringList captions;
    for (const QPushButton* const button : buttons)
        captions << button->text();
    captions = WithMnemonics(captions, taken);
    for (qsizetype i = 0; i < buttons.size(); ++i)
        buttons[i]->setText(captions[i]);
}

QCommandLinkButton* FirstStepsPane::AddWay(const ControlWords& words)
{
    auto* const button = new QCommandLinkButton(AsShown(words.caption), this);
    Explain(*button, words);
    layout()->addWidget(button);
    return button;
}

void FirstStepsPane::Refresh()
{
    const std::optional<FirstSteps> steps = FirstStepsOf(desk_.workspace());
    if (steps) {
        Explain(*open_start_, {kOpenStart.name, kOpenStart.caption, steps->start_site});
        open_start_->setVisible(!steps->start_site.empty());
        example_->setVisible(steps->has_example);
        editor_->setVisible(steps->editor_is_missing);
    }
    const bool was_open = std::exchange(is_open_, steps.has_value());
    if (is_open_ != was_open && on_shown)
        on_shown(is_open_);
}

void FirstStepsPane::RunIn(const QString& title, void (*command)(Workspace&, std::string_view))
{
    if (const std::optional<std::string> folder = pick_folder(title))
        desk_.Run([&] { command(desk_.workspace(), *folder); });
}

std::optional<std::string> FirstStepsPane::AskForFolder(const QString& title)
{
    NativePaths& paths = desk_.workspace().machine().native_paths;
    const QString folder = QFileDialog::getExistingDirectory(this, title, QDir::homePath());
    if (folder.isEmpty())
        return std::nullopt;
    return paths.FromNative(FromQtNative(folder));
}

} // namespace kiv
