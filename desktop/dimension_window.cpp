#include "desktop/dimension_window.h"

#include "desktop/controls.h"
#include "platform/run_error.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kiv {

namespace {

struct DimensionField {
    ControlWords words;
    std::string Dimensions::*value;
};

constexpr std::array<DimensionField, 4> kFields = {{
    {{"start_width", "Starting width", "The picture's width as it is"}, &Dimensions::start_width},
    {{"start_height", "Starting height", "The picture's height as it is"},
     &Dimensions::start_height},
    {{"new_width", "New width", "The width to be; leave it empty to have it calculated"},
     &Dimensions::new_width},
    {{"new_height", "New height", "The height to be; calculated when there is a new width"},
     &Dimensions::new_height},
}};

constexpr ControlWords kCalculate = {"calculate", "Calculate",
                                     "Work out the missing side in proportion"};
constexpr ControlWords kDone = {"done", "Done", "Close this window; the fields keep their numbers"};
constexpr ControlWords kClear = {"clear", "Clear", "Empty all four fields"};

} // namespace

DimensionWindow::DimensionWindow(CommandDesk& desk, QWidget* parent)
    : SideWindow(desk, parent, "DimensionWindow", "Convert dimensions")
{
    auto* const column = new QVBoxLayout(this);
    auto* const form = new QFormLayout;
    column->addLayout(form);
    for (std::size_t i = 0; i < kFields.size(); ++i)
        fields_[i] = AddField(*form, kFields[i].words);
    column->addStretch();

    auto* const buttons = new QHBoxLayout;
    column->addLayout(buttons);
    auto* const calculate = MakeButton(kCalculate, this);
    auto* const done = MakeButton(kDone, this);
    auto* const clear = MakeButton(kClear, this);
    calculate->setDefault(true);
    buttons->addStretch();
    for (QPushButton* const button : {calculate, done, clear})
        buttons->addWidget(button);
    GiveMnemonics(*this);

    connect(calculate, &QPushButton::clicked, this, &DimensionWindow::PressCalculate);
    connect(done, &QPushButton::clicked, this, &QDialog::hide);
    connect(clear, &QPushButton::clicked, this, [this] {
        ShowFields({});
        fields_.front()->setFocus();
    });
}

void DimensionWindow::ShowFields(const Dimensions& fields)
{
    for (std::size_t i = 0; i < kFields.size(); ++i)
        SetLineText(*fields_[i], fields.*kFields[i].value);
}

void DimensionWindow::PressCalculate()
{
    Dimensions fields;
    for (std::size_t i = 0; i < kFields.size(); ++i)
        fields.*kFields[i].value = LineText(*fields_[i]);
    try {
        Calculate(fields);
        ShowFields(fields);
    } catch (const RunError& error) {
        desk().ShowMessage(RefusalText(error));
    }
}

} // namespace kiv
