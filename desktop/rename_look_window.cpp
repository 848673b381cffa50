#include "desktop/rename_look_window.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"
#include "desktop/rename_pairs.h"
#include "shell/workspace.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <utility>

namespace kiv {

namespace {

constexpr int kLookColumns = 72;
constexpr int kLookRows = 22;

constexpr ControlWords kLookRename = {"rename", "Rename", "Give the files their new names"};
constexpr ControlWords kUndo = {"rename", "Undo", "Give the files their old names again"};
constexpr ControlWords kCancelRenames = {"cancel", "Cancel",
                                         "Close this window and rename nothing"};

} // namespace

RenameLookWindow::RenameLookWindow(CommandDesk& desk, QWidget* parent)
    : SideWindow(desk, parent, "RenameLookWindow", "")
{
    auto* const column = new QVBoxLayout(this);
    folder_ = MakeReadout("folder", "The folder whose files are renamed", this);
    pairs_ = new RenamePairs(this);
    pairs_->on_return = [this] { Refresh(); };
    rename_ = MakeButton(kLookRename, this);
    rename_->setDefault(true);
    auto* const cancel = MakeButton(kCancelRenames, this);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(rename_);
    buttons->addWidget(cancel);
    column->addWidget(folder_);
    column->addWidget(pairs_, 1);
    column->addLayout(buttons);
    resize(fontMetrics().averageCharWidth() * kLookColumns,
           fontMetrics().lineSpacing() * kLookRows);
    connect(rename_, &QPushButton::clicked, this, &RenameLookWindow::PressRename);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void RenameLookWindow::OpenFor(std::string_view caption, const RenameTask& task,
                               std::function<void()> run)
{
    task_ = task;
    run_ = std::move(run);
    setWindowTitle(ShownCaption(caption));
    const ControlWords& words = task.renamer == Renamer::undo ? kUndo : kLookRename;
    rename_->setText(AsShown(words.caption));
    Describe(*rename_, words);
    GiveMnemonics(*this);
    BringUp();
    Refresh();
    pairs_->List().setFocus(); // nothing is renamed by a key that was meant for the menu
}

void RenameLookWindow::Refresh()
{
    if (run_ && isVisible())
        Show(LookAtRenames(workspace(), task_));
}

void RenameLookWindow::Show(const RenameLook& look)
{
    seen_ = look;
    SetReadout(*folder_, task_.folder.empty() ? workspace().WorkDir : task_.folder);
    pairs_->Show(look);
    rename_->setEnabled(look.is_possible);
}

void RenameLookWindow::PressRename()
{
    if (const std::optional<RenameLook> now = LookIfChanged(workspace(), task_, seen_))
        Show(*now);
    else if (desk().Run(run_))
        accept();
}

} // namespace kiv
