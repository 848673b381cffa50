#include "desktop/help_window.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"
#include "shell/help_text.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <array>

namespace kiv {

namespace {

constexpr int kColumns = 96;
constexpr int kRows = 30;

constexpr ControlWords kClose = {"Command1", "close", "Close this window"};

struct SectionWords {
    std::string_view name;
    std::string_view tip;
};
constexpr std::array<SectionWords, 4> kSections = {{
    {"Command2", "Show the words that begin with @"},
    {"Command3", "Show the words that begin with !! and their arguments"},
    {"Command4", "Show what may stand at the top of _html.txt"},
    {"Command5", "Show mail, databases, block tags, included files and the rest"},
}};

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
    for (std::size_t i = 0; i < kSections.size(); ++i) {
        const HelpSection& section = HelpSections()[i];
        auto* const button =
            MakeButton({kSections[i].name, section.button, kSections[i].tip}, this);
        buttons->addWidget(button);
        connect(button, &QPushButton::clicked, this,
                [this, text = section.text] { SetFieldText(*box_, text()); });
        if (i == 0)
            button->setFocus();
    }
    buttons->addStretch();
    auto* const close = MakeButton(kClose, this);
    close->setDefault(true);
    buttons->addWidget(close);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    GiveMnemonics(*this);

    const QFontMetrics metrics = box_->fontMetrics();
    resize(metrics.horizontalAdvance(u'0') * kColumns, metrics.lineSpacing() * kRows);
}

void HelpWindow::Fill()
{
    box_->clear();
}

} // namespace kiv
