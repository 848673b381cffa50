#include "desktop/work_guard.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <utility>

namespace kiv {

namespace {

bool IsInput(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

bool IsEscape(const QEvent& event)
{
    return event.type() == QEvent::KeyPress &&
           static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

} // namespace

WorkGuard::WorkGuard(QWidget* button, std::function<void()> on_escape, QObject* parent)
    : QObject(parent), button_(button), on_escape_(std::move(on_escape))
{
}

void WorkGuard::SetOn(bool on)
{
    if (on)
        qApp->installEventFilter(this);
    else
        qApp->removeEventFilter(this);
}

bool WorkGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (!IsInput(*event) || QApplication::activeModalWidget() != nullptr)
        return false;
    if (IsEscape(*event)) {
        on_escape_();
        return true;
    }
    // What comes to a window of the system goes on from there to its controls.
    const bool is_control = watched->isWidgetType() && watched != button_;
    return is_control || event->type() == QEvent::Shortcut;
}

} // namespace kiv
