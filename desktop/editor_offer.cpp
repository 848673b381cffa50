#include "desktop/editor_offer.h"

#include "desktop/qt_text.h"
#include "platform/run_error.h"
#include "shell/list_files.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

#include <array>

namespace kiv {

namespace {

#ifdef Q_OS_WIN
constexpr bool kUsualEditorRuns = true; // once it is installed, as the message says
#else
constexpr bool kUsualEditorRuns = false;
#endif

// Editors with a window, the plain ones first; the last opens a file with what the desktop prefers.
constexpr std::array<const char*, 13> kEditors = {
    "gnome-text-editor", "gedit",   "kate",    "kwrite", "mousepad", "pluma",   "xed",
    "featherpad",        "l3afpad", "leafpad", "geany",  "gvim",     "xdg-open"};

QStringList InstalledEditors()
{
    QStringList installed;
    for (const char* const editor : kEditors) {
        const QString name = QString::fromLatin1(editor);
        if (!QStandardPaths::findExecutable(name).isEmpty())
            installed.push_back(name);
    }
    return installed;
}

/// A setting that cannot be read was told of at the start.
bool EditorIsMissing(Files& files)
{
    try {
        return loadeditor(files).editor_is_missing;
    } catch (const RunError&) {
        return false;
    }
}

} // namespace

std::optional<std::string> AskForEditor(QWidget* parent, Files& files)
{
    if (kUsualEditorRuns || !EditorIsMissing(files))
        return std::nullopt;
    QDialog dialog(parent);
    dialog.setObjectName(QStringLiteral("EditorOffer"));
    dialog.setWindowTitle(QStringLiteral("kiv"));
    dialog.setLayout(new QVBoxLayout);
    auto* const label =
        new QLabel(QStringLiteral("&Editor for templates, page lists and other text files:"));
    auto* const editors = new QComboBox;
    editors->setObjectName(QStringLiteral("Editors"));
    editors->setAccessibleName(QStringLiteral("Editor"));
    editors->setEditable(true);
    editors->addItems(InstalledEditors());
    editors->setToolTip(QStringLiteral("A program, with options if it needs any; the name of the "
                                       "file is added at the end"));
    label->setBuddy(editors);
    auto* const note = new QLabel(QStringLiteral("kiv remembers it in %1.").arg(ToQt(kEditorFile)));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    for (QWidget* const widget : {static_cast<QWidget*>(label), static_cast<QWidget*>(editors),
                                  static_cast<QWidget*>(note), static_cast<QWidget*>(buttons)})
        dialog.layout()->addWidget(widget);
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
