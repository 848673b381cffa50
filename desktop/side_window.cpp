#include "desktop/side_window.h"

#include "desktop/qt_text.h"

#include <QScreen>

namespace kiv {

namespace {

constexpr int kTitleBar = 36; // of the desktop's, about; how high it is, is known too late

} // namespace

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
    const QSize room = screen()->availableGeometry().size() - QSize(0, kTitleBar);
    resize(size().boundedTo(room));
    show();
    raise();
    activateWindow();
}

} // namespace kiv
