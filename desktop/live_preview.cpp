#include "desktop/live_preview.h"

namespace kiv {

LivePreview::LivePreview(Drives& drives, Workspace& workspace)
    : site_(drives, workspace, [this] { emit TaskWaits(); })
{
    connect(this, &LivePreview::TaskWaits, this, &LivePreview::Look, Qt::QueuedConnection);
    connect(&timer_, &QTimer::timeout, this, &LivePreview::Look);
}

void LivePreview::Follow()
{
    site_.Follow();
    if (!site_.IsActive())
        timer_.stop();
    else
        timer_.start(site_.Wait());
}

void LivePreview::Look()
{
    if (is_busy())
        return; // what is left now is there at the next look
    site_.RunTasks();
    if (site_.IsBuildDue())
        on_due();
    timer_.setInterval(site_.Wait());
}

} // namespace kiv
