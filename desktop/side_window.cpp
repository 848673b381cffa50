#include "desktop/side_window.h"

#include "desktop/qt_text.h"

namespace kiv {

SideWindow::SideWindow(CommandDesk& desk, QWidget* parent, std::string_view name,
                       std::string_view title)
    : QDialog(parent), desk_(desk)
{
    setObjectName(ToQt(name));
    setWindowTitle(ToQt(title));
}

void SideWindow::BringUp()
{
    if (!isVisible())
        Fill();
    show();
    raise();
    activateWindow();
}

} // namespace kiv
