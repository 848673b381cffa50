#include "desktop/rename_window.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"
#include "desktop/rename_pairs.h"
#include "shell/renames.h"
#include "shell/workspace.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kiv {

namespace {

constexpr int kRenameColumns = 72;
constexpr int kRenameRows = 24;

constexpr ControlWords kFind = {"find", "Find",
                                "The text to look for in every file name; case matters"};
constexpr ControlWords kReplacement = {"replacement", "Replace with",
                                       "What to put for it; empty takes the text out"};
constexpr ControlWords kRename = {"rename", "Rename",
                                  "Rename every file of the folder that has the text in its name"};

} // namespace

RenameWindow::RenameWindow(CommandDesk& desk, QWidget* parent)
    : SideWindow(desk, parent, "RenameWindow", "Rename files")
{
    auto* const column = new QVBoxLayout(this);
    auto* const form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    column->addLayout(form);
    folder_ = MakeReadout("folder", "The folder whose files are renamed", this);
    sample_ = MakeReadout("sample", "The name of the first file, as a sample", this);
    form->addRow(new QLabel(ToQt("Folder"), this), folder_);
    form->addRow(new QLabel(ToQt("First file"), this), sample_);
    find_ = AddField(*form, kFind);
    replacement_ = AddField(*form, kReplacement);
    pairs_ = new RenamePairs(this);
    pairs_->on_return = [this] { Refresh(); };
    column->addWidget(pairs_, 1);

    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    auto* const rename = MakeButton(kRename, this);
    rename->setDefault(true);
    buttons->addStretch();
    buttons->addWidget(rename);
    GiveMnemonics(*this);
    find_->setFocus();
    resize(fontMetrics().averageCharWidth() * kRenameColumns,
           fontMetrics().lineSpacing() * kRenameRows);

    for (const QLineEdit* const field : {find_, replacement_})
        connect(field, &QLineEdit::textChanged, this, &RenameWindow::Look);
    connect(rename, &QPushButton::clicked, this, &RenameWindow::PressRename);
}

void RenameWindow::showEvent(QShowEvent* event)
{
    SideWindow::showEvent(event);
    Look();
}

void RenameWindow::Refresh()
{
    SetReadout(*folder_, workspace().WorkDir);
    SetReadout(*sample_, SampleFileName(workspace().machine().files));
    Look();
}

RenameTask RenameWindow::Task() const
{
    return {Renamer::replacement, LineText(*find_), LineText(*replacement_)};
}

void RenameWindow::Look()
{
    if (isVisible())
        Show(LookAtRenames(workspace(), Task()));
}

void RenameWindow::Show(const RenameLook& look)
{
    seen_ = look;
    pairs_->Show(look);
}

void RenameWindow::PressRename()
{
    const RenameTask task = Task();
    if (const std::optional<RenameLook> now = LookIfChanged(workspace(), task, seen_)) {
        Show(*now);
        return;
    }
    desk().Run([&] { RenameAndTell(workspace(), task.find, task.replacement); });
    Refresh(); // files before a failed one are renamed
}

} // namespace kiv
