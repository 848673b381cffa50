#include "desktop/folder_drop.h"

#include "desktop/qt_text.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <utility>

namespace kiv {

namespace {

/// The first of what is dragged that lies on this machine; empty when nothing does.
QString FirstPath(const QMimeData& dragged)
{
    for (const QUrl& url : dragged.urls())
        if (url.isLocalFile())
            return url.toLocalFile();
    return {};
}

bool IsDrag(const QEvent& event)
{
    return event.type() == QEvent::DragEnter || event.type() == QEvent::DragMove ||
           event.type() == QEvent::Drop;
}

} // namespace

FolderDrop::FolderDrop(QWidget* window, std::function<void(const std::string& native)> on_drop)
    : QObject(window), window_(window), on_drop_(std::move(on_drop))
{
    window->setAcceptDrops(true);
    connect(
        this, &FolderDrop::Dropped, this,
        [this](const QString& path) { on_drop_(FromQtNative(path)); }, Qt::QueuedConnection);
    qApp->installEventFilter(this); // fields in the window would take a path as text
}

bool FolderDrop::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const widget = qobject_cast<const QWidget*>(watched);
    if (!IsDrag(*event) || widget == nullptr || widget->window() != window_)
        return false;
    auto& drag = static_cast<QDropEvent&>(*event);
    const QString path = FirstPath(*drag.mimeData());
    if (path.isEmpty())
        return false;
    drag.acceptProposedAction();
    // The program that it was dragged from waits until the drop is over.
    if (event->type() == QEvent::Drop)
        emit Dropped(path);
    return true;
}

} // namespace kiv
