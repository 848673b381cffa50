#include "desktop/window_place.h"

#include <QEvent>
#include <QSettings>
#include <QWidget>

namespace kiv {

namespace {

QString KeyOf(const QWidget& window)
{
    return QStringLiteral("places/") + window.objectName();
}

} // namespace

WindowPlace::WindowPlace(QWidget* window) : QObject(window), window_(window)
{
    window->restoreGeometry(QSettings().value(KeyOf(*window)).toByteArray());
    window->installEventFilter(this);
}

bool WindowPlace::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == window_ && event->type() == QEvent::Hide)
        QSettings().setValue(KeyOf(*window_), window_->saveGeometry());
    return false;
}

} // namespace kiv
