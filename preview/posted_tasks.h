// What other threads want done in the thread of the drives.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

namespace kiv {

class PostedTasks {
  public:
    /// From any thread.
    void Post(std::function<void()> task);
    /// Does what was posted up to now; in the one thread that takes the tasks.
    void Run();
    /// Waits so long, or until there is a task.
    void Wait(std::chrono::milliseconds time);
    /// Forgets what was posted and not done.
    void Clear();

  private:
    std::mutex mutex_; // for tasks_
    std::condition_variable has_tasks_;
    std::vector<std::function<void()>> tasks_;
};

} // namespace kiv
