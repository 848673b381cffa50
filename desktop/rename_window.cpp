#include "desktop/rename_window.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"
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

constexpr int kColumns = 56;

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
    column->addStretch();

    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    auto* const rename = MakeButton(kRename, this);
    rename->setDefault(true);
    buttons->addStretch();
    buttons->addWidget(rename);
    GiveMnemonics(*this);
    find_->setFocus();
    resize(fontMetrics().averageCharWidth() * kColumns, sizeHint().height());

    connect(rename, &QPushButton::clicked, this, &RenameWindow::PressRename);
}

void RenameWindow::Refresh()
{
    SetReadout(*folder_, workspace().WorkDir);
    SetReadout(*sample_, SampleFileName(workspace().machine().files));
}

void RenameWindow::PressRename()
{
    const std::string find = LineText(*find_);
    const std::string replacement = LineText(*replacement_);
    desk().Run([&] { dorenamefiles(workspace(), find, replacement); });
    Refresh(); // files before a failed one are renamed
}

} // namespace kiv
