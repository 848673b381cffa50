#include "desktop/editor_offer.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"
#include "platform/site_files.h"
#include "shell/editors.h"
#include "shell/workspace.h"
#include "text/text.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace kiv {

namespace {

constexpr int kEditorColumns = 56; // of a command with a path

QComboBox* MakeChoice(QWidget* parent, Workspace& workspace)
{
    auto* const editors = new QComboBox(parent);
    Describe(*editors, {"Editors", "",
                        "A program with its options: %f stands for the file, %l for the line to be "
                        "shown; without %f the file is put at the end"});
    editors->setAccessibleName(QStringLiteral("Editor"));
    editors->setEditable(true);
    editors->setMinimumWidth(editors->fontMetrics().averageCharWidth() * kEditorColumns);
    for (const std::string& command :
         InstalledEditors(workspace.machine().programs, workspace.ProgramFolders))
        editors->addItem(ToQt(command));
    if (!EditorIsMissing(workspace.machine().files))
        editors->setCurrentText(ToQt(Trim(workspace.EditorCommand)));
    return editors;
}

} // namespace

std::optional<std::string> AskForEditor(QWidget* parent, Workspace& workspace)
{
    QDialog dialog(parent);
    dialog.setObjectName(QStringLiteral("EditorOffer"));
    dialog.setWindowTitle(QStringLiteral("Choose an editor"));
    QComboBox* const editors = MakeChoice(&dialog, workspace);
    auto* const label =
        new QLabel(QStringLiteral("&Editor for templates, page lists and other text files:"));
    label->setBuddy(editors);
    auto* const note = new QLabel(QStringLiteral("%f stands for the file, %l for the line. "
                                                 "kiv remembers the command in ") +
                                  ToQt(kEditorFile) + u'.');
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto* const column = new QVBoxLayout(&dialog);
    column->addWidget(label);
    column->addWidget(editors);
    column->addWidget(note);
    column->addWidget(buttons);
    QPushButton* const ok = buttons->button(QDialogButtonBox::Ok);
    const auto allow = [&] { ok->setEnabled(!editors->currentText().trimmed().isEmpty()); };
    QObject::connect(editors, &QComboBox::currentTextChanged, &dialog, allow);
    allow();
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return FromQt(editors->currentText().trimmed());
}

} // namespace kiv
