#include "desktop/conversion_window.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"
#include "shell/utilities.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kiv {

namespace {

constexpr int kConversionColumns = 52;

struct BoxWords {
    bool ConversionBoxes::*box;
    std::string_view name;
    std::string_view tip;
};
constexpr std::array<BoxWords, kConversionBoxes.size()> kBoxes = {{
    {&ConversionBoxes::links_list, "links_list",
     "Convert to HTML: put no paragraph around the whole"},
    {&ConversionBoxes::single_spaced, "single_spaced",
     "Convert to HTML: make every line a paragraph"},
    {&ConversionBoxes::poetry_p, "poetry_p",
     "Convert to HTML: keep the lines; an empty line begins a new paragraph"},
    {&ConversionBoxes::keep_smart_quotes, "keep_smart_quotes",
     "Clean quotes: leave curly quotation marks as they are"},
    {&ConversionBoxes::poetry_br, "poetry_br",
     "Convert to HTML: keep the lines; an empty line becomes two line breaks"},
}};

QCheckBox* MakeBox(const ConversionBox& row, QWidget* parent)
{
    auto* const box = new QCheckBox(AsShown(row.caption), parent);
    const auto* const words = std::find_if(kBoxes.begin(), kBoxes.end(),
                                           [&](const BoxWords& of) { return of.box == row.box; });
    Describe(*box, {words->name, row.caption, words->tip});
    return box;
}

constexpr ControlWords kTextField = {"text_field", "Before each row",
                                     "Tab to Pipe: what to put in front of each row's bracket"};
constexpr ControlWords kDoIt = {"do_it", "Text in Clipboard. Do It!",
                                "Convert the text in the clipboard and put the result back there"};
constexpr ControlWords kExit = {"exit", "Exit", "Close this window"};

} // namespace

ConversionDialog::ConversionDialog(CommandDesk& desk, QWidget* parent)
    : SideWindow(desk, parent, "ConversionWindow", "")
{
    auto* const column = new QVBoxLayout(this);
    label_ = MakeReadout("label", "What the button does", this);
    column->addWidget(label_);
    for (std::size_t i = 0; i < boxes_.size(); ++i) {
        boxes_[i] = MakeBox(kConversionBoxes[i], this);
        column->addWidget(boxes_[i]);
    }
    auto* const form = new QFormLayout;
    column->addLayout(form);
    text_field_ = AddField(*form, kTextField);
    column->addStretch();

    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    auto* const do_it = MakeButton(kDoIt, this);
    auto* const exit = MakeButton(kExit, this);
    do_it->setDefault(true);
    do_it->setFocus();
    buttons->addStretch();
    buttons->addWidget(do_it);
    buttons->addWidget(exit);
    GiveMnemonics(*this);
    resize(fontMetrics().averageCharWidth() * kConversionColumns, sizeHint().height());

    connect(do_it, &QPushButton::clicked, this, &ConversionDialog::PressDoIt);
    connect(exit, &QPushButton::clicked, this, &QDialog::close);
    SetMode(state_, "");
    ShowState();
}

void ConversionDialog::OpenIn(std::string_view mode)
{
    SetMode(state_, mode);
    ShowState();
    BringUp();
}

void ConversionDialog::ShowState()
{
    setWindowTitle(ToQt(state_.caption));
    SetReadout(*label_, state_.label);
    for (std::size_t i = 0; i < boxes_.size(); ++i)
        boxes_[i]->setChecked(state_.boxes.*kConversionBoxes[i].box);
}

void ConversionDialog::PressDoIt()
{
    for (std::size_t i = 0; i < boxes_.size(); ++i)
        state_.boxes.*kConversionBoxes[i].box = boxes_[i]->isChecked();
    state_.text_field = LineText(*text_field_);
    desk().Run([this] { ConvertClipboard(workspace(), state_); });
    ShowState();
}

} // namespace kiv
