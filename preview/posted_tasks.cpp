#include "preview/posted_tasks.h"

#include <utility>

namespace kiv {

void PostedTasks::Post(std::function<void()> task)
{
    {
        const std::scoped_lock lock(mutex_);
        tasks_.push_back(std::move(task));
    }
    has_tasks_.notify_one();
}

void PostedTasks::Run()
{
    std::vector<std::function<void()>> tasks;
    {
        const std::scoped_lock lock(mutex_);
        tasks.swap(tasks_);
    }
    for (const std::function<void()>& task : tasks) // unlocked: a task may post another one
        task();
}

void PostedTasks::Wait(std::chrono::milliseconds time)
{
    std::unique_lock lock(mutex_);
    has_tasks_.wait_for(lock, time, [this] { return !tasks_.empty(); });
}

void PostedTasks::Clear()
{
    const std::scoped_lock lock(mutex_);
    tasks_.clear();
}

} // namespace kiv
