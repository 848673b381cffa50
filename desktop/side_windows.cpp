#include "desktop/side_windows.h"

#include "desktop/conversion_window.h"
#include "desktop/dimension_window.h"
#include "desktop/directory_window.h"
#include "desktop/help_window.h"
#include "desktop/news_window.h"
#include "desktop/rename_look_window.h"
#include "desktop/rename_window.h"
#include "desktop/task_window.h"
#include "desktop/window_place.h"

#include <QWidget>

#include <utility>

namespace kiv {

namespace {

QList<SideWindow*> All(const QWidget& parent)
{
    return parent.findChildren<SideWindow*>(Qt::FindDirectChildrenOnly);
}

} // namespace

template <typename Window>
Window& SideWindows::OneOf()
{
    auto* window = parent_->findChild<Window*>(QString(), Qt::FindDirectChildrenOnly);
    if (window == nullptr) {
        window = new Window(desk_, parent_);
        new WindowPlace(window);
    }
    return *window;
}

TaskWindow& SideWindows::TaskOf(const Command& command)
{
    auto* window =
        parent_->findChild<TaskWindow*>(TaskWindow::NameOf(command), Qt::FindDirectChildrenOnly);
    if (window == nullptr) {
        window = new TaskWindow(desk_, parent_, command);
        new WindowPlace(window);
    }
    return *window;
}

bool SideWindows::Open(const Command& command)
{
    switch (command.opens) {
    case Opens::directories:
        OneOf<DirectoryWindow>().BringUp();
        return true;
    case Opens::renamer:
        OneOf<RenameWindow>().BringUp();
        return true;
    case Opens::dimensions:
        OneOf<DimensionWindow>().BringUp();
        return true;
    case Opens::conversion:
        OneOf<ConversionDialog>().OpenIn(command.mode);
        return true;
    case Opens::news:
        OneOf<NewsWindow>().BringUp();
        return true;
    case Opens::help:
        OneOf<HelpWindow>().BringUp();
        return true;
    case Opens::task:
        TaskOf(command).Open();
        return true;
    default:
        return false;
    }
}

void SideWindows::LookFirst(std::string_view caption, const RenameTask& task,
                            std::function<void()> run)
{
    OneOf<RenameLookWindow>().OpenFor(caption, task, std::move(run));
}

void SideWindows::Refresh()
{
    for (SideWindow* const window : All(*parent_))
        window->Refresh();
}

void SideWindows::SetEnabled(bool on)
{
    for (SideWindow* const window : All(*parent_))
        window->setEnabled(on);
}

void SideWindows::Close()
{
    for (SideWindow* const window : All(*parent_))
        window->close();
}

} // namespace kiv
