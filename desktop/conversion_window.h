// "Convert to html": converts the clipboard's text in the mode that the menu handed in.
#pragma once

#include "desktop/side_window.h"
#include "utilities/conversions.h"

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace kiv {

class ConversionDialog : public SideWindow {
    Q_OBJECT

  public:
    ConversionDialog(CommandDesk& desk, QWidget* parent);

    /// Opens the window in a mode, with all boxes clear. The text field keeps its text.
    void OpenIn(std::string_view mode);

  private:
    void ShowState();
    void PressDoIt();

    ConversionWindow state_;
    QLabel* label_ = nullptr;
    std::array<QCheckBox*, kConversionBoxes.size()> boxes_{};
    QLineEdit* text_field_ = nullptr;
};

} // namespace kiv
