#include "desktop/help_window.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"
#include "shell/help_text.h"
#include "shell/manual.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kiv {

namespace {

constexpr int kHelpColumns = 96;
constexpr int kHelpRows = 30;

constexpr ControlWords kManual = {"manual", "Manual", "Open the whole manual in the browser"};
constexpr ControlWords kClose = {"Command1", "close", "Close this window"};

QPlainTextEdit* MakeHelpBox(QWidget* parent)
{
    auto* const box = new QPlainTextEdit(parent);
    Describe(*box, {"help_text", "", "What the section's button shows; it can be copied"});
    box->setToolTip({}); // it would cover the text
    box->setAccessibleName(ToQt("Help text"));
    box->setReadOnly(true);
    box->setTabChangesFocus(true);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    return box;
}

} // namespace

HelpWindow::HelpWindow(CommandDesk& desk, QWidget* parent)
    : SideWindow(desk, parent, "HelpWindow", "KIV HELP")
{
    auto* const column = new QVBoxLayout(this);
    box_ = MakeHelpBox(this);
    column->addWidget(box_);

    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    for (const HelpSection& section : HelpSections()) {
        auto* const button = MakeButton({section.object_name, section.caption, section.tip}, this);
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this,
                [this, text = section.text] { SetFieldText(*box_, text()); });
        if (&section == &HelpSections().front())
            button->setFocus();
    }
    buttons->addStretch();
    auto* const manual = MakeButton(kManual, this);
    buttons->addWidget(manual);
    connect(manual, &QPushButton::clicked, this,
            [this] { this->desk().Run([this] { OpenManual(workspace()); }); });
    auto* const close = MakeButton(kClose, this);
    close->setDefault(true);
    buttons->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    GiveMnemonics(*this);

    const QFontMetrics metrics = box_->fontMetrics();
    resize(metrics.horizontalAdvance(u'0') * kHelpColumns, metrics.lineSpacing() * kHelpRows);
}

void HelpWindow::Fill()
{
    SetFieldText(*box_, HelpSections().front().text());
}

} // namespace kiv
