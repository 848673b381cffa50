// The window's preview and its building on save: a timer goes round with the site's pieces.
#pragma once

#include "preview/live_site.h"

#include <QObject>
#include <QTimer>

#include <functional>

namespace kiv {

class LivePreview : public QObject {
    Q_OBJECT

  public:
    LivePreview(Drives& drives, Workspace& workspace);

    LiveSite& Site() { return site_; }
    /// After each command.
    void Follow();

    /// Whether a command runs, or a box or menu waits for the user: nothing is done then.
    std::function<bool()> is_busy;
    /// Called when saved sources are to be built.
    std::function<void()> on_due;

  signals:
    /// Of the server's thread: something waits for the windows' thread.
    void TaskWaits();

  private:
    void Look();

    LiveSite site_;
    QTimer timer_;
};

} // namespace kiv
