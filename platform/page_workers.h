// The threads that prepare pages and give them their places.
#pragma once

#include "platform/page_draft.h"
#include "platform/process.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>
#include <vector>

namespace kiv {

/// How many threads there may be, the one that hands pages over among them.
struct ThreadLimits {
    std::size_t most = 1;
    bool is_given = false; // by the user; else the machine and its disks have a say

    /// What a user has set ("": nothing, which a value that is no number from 1 on also is).
    static ThreadLimits From(std::string_view given);
};

/// A page's draft and how far it is.
struct PageJob {
    enum class State : std::uint8_t {
        waiting,  // or being prepared
        prepared, // or being put in its place
        placed,
        refused, // it could not be placed, and nor is any page behind it
    };
    std::unique_ptr<PageDraft> draft;
    std::atomic<State> state = State::waiting;

    /// No thread works on it any more.
    bool IsDone() const { return state.load(std::memory_order_acquire) >= State::placed; }
};

/// How long a thread waits in what it does, from here on. Whoever works all the time, or stands
/// back for other programs, does not wait: more threads would be of no use to him.
class WaitWatch {
  public:
    using Clock = std::chrono::steady_clock;

    /// `expects_none`: whatever comes is taken for work, and the system need not be asked.
    explicit WaitWatch(bool expects_none = false)
        : waits_(expects_none ? std::nullopt : std::optional(WaitsOfThread())), start_(Clock::now())
    {
    }
    Clock::duration Elapsed() const { return Clock::now() - start_; }
    /// The whole time since, or none when there was nothing to wait for.
    Clock::duration Waited() const
    {
        return !waits_ || WaitsOfThread() == *waits_ ? Clock::duration() : Elapsed();
    }

  private:
    std::optional<std::uint64_t> waits_;
    Clock::time_point start_;
};

/// All calls but for the threads' own come from one thread, which takes part in the work when it
/// would only wait. Threads are started when there is more to do than those that are there can
/// take: one for each processor as long as it is work, and more when the disk is what they wait
/// for.
class PageWorkers {
  public:
    using Duration = WaitWatch::Clock::duration;

    /// `most_discarded`: how many drafts may wait for being handed to the threads.
    explicit PageWorkers(const ThreadLimits& limits, std::size_t most_discarded = kMostDiscarded)
        : limits_(limits), most_discarded_(most_discarded)
    {
    }
    PageWorkers(const PageWorkers&) = delete;
    PageWorkers& operator=(const PageWorkers&) = delete;
    ~PageWorkers();

    /// How long a page waits, by what is known before the first job.
    void ExpectPace(Duration page);
    /// Has a page prepared, and put in its place when all those before it are in theirs. The job
    /// stays where it is until it is done or canceled.
    void Add(PageJob& job);
    /// Comes back when the job is done: true when the page has its place.
    bool Await(const PageJob& job);
    /// Takes back the jobs that nobody has begun, and waits for the others. What is prepared behind
    /// a refused page gets no place.
    void Cancel();
    /// Takes a draft off one's hands: to close a file may take a while. The threads get it with the
    /// next job. Where too many wait for that, it ends here and now.
    void Discard(std::unique_ptr<PageDraft> draft);
    /// Comes back when what was discarded has ended.
    void EndDiscarded();
    /// There is no job any more. Comes back when what was discarded has ended. The threads wait for
    /// other jobs, but for those that were there for a slow disk: to end one takes as long as
    /// writing some pages.
    void Rest();

  private:
    using Lock = std::unique_lock<std::mutex>;

    void Run();
    void HandDiscarded();
    void TakeOne(Lock& lock);
    void TakeJob(Lock& lock);
    void PlaceReady(Lock& lock);
    void End();
    void GoApart();
    void StartWhenWorthwhile(std::size_t waiting);
    std::size_t MostNow();
    std::size_t Processors();
    bool IsSlow() const;

    static constexpr std::size_t kMostDiscarded = 64;

    const ThreadLimits limits_;
    const std::size_t most_discarded_;
    std::optional<std::size_t> processors_;
    std::vector<std::thread> threads_;
    std::vector<std::unique_ptr<PageDraft>> to_discard_;
    bool have_rested_ = false;

    // Everybody's, behind the lock.
    std::mutex mutex_;
    std::condition_variable to_do_;
    std::condition_variable done_;
    std::deque<PageJob*> jobs_; // that nobody has begun
    std::deque<PageJob*> line_; // those that have no place yet, in order
    std::vector<std::unique_ptr<PageDraft>> discarded_;
    std::size_t in_work_ = 0;
    Duration pace_{};      // for how long the last pages waited
    bool is_long_ = false; // whether the last page took long
    const PageJob* awaited_ = nullptr;
    bool is_placing_ = false; // a thread puts the first of the line in its place
    bool is_ending_ = false;
};

} // namespace kiv
