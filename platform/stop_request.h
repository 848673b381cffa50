// A command that is to end before it is done: who asks for it, and what it ends with.
#pragma once

#include <atomic>
#include <exception>

namespace kiv {

/// May be asked by a signal handler or another thread, and is looked at where a command may well
/// end: between two files.
class StopRequest {
  public:
    StopRequest() = default;
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    void Ask() noexcept { is_asked_.store(true, std::memory_order_relaxed); }
    bool IsAsked() const noexcept { return is_asked_.load(std::memory_order_relaxed); }
    /// Before the next command.
    void Forget() noexcept { is_asked_.store(false, std::memory_order_relaxed); }

  private:
    std::atomic<bool> is_asked_ = false;
    static_assert(std::atomic<bool>::is_always_lock_free); // else no signal handler might ask
};

/// A command ends because it was asked to. No fatal error: what was finished before stays, and what
/// is written is whole.
struct Stopped : std::exception {
    const char* what() const noexcept override { return "stopped"; }
};

} // namespace kiv
