// "Convert dimensions": from a picture's size and one side of its new size to the other side.
#pragma once

#include "desktop/side_window.h"
#include "utilities/dimensions.h"

#include <array>

class QLineEdit;

namespace kiv {

class DimensionWindow : public SideWindow {
    Q_OBJECT

  public:
    DimensionWindow(CommandDesk& desk, QWidget* parent);

  private:
    void ShowFields(const Dimensions& fields);
    void PressCalculate();

    std::array<QLineEdit*, 4> fields_{};
};

} // namespace kiv
