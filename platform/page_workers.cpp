#include "platform/page_workers.h"

#include "platform/interrupts.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <new>
#include <system_error>
#include <utility>

namespace kiv {

namespace {

// As many as keep a disk busy that answers a call in a millisecond: of the four or five calls for a
// page one is made by whoever puts it in its place.
constexpr std::size_t kMostThreads = 8;
constexpr std::size_t kMostGiven = 64;
// Nobody waits as long for a disk of the machine's own that is awake. Where every page waits so
// long, it is for a server, or for a disk that has many to serve.
constexpr auto kSlow = std::chrono::microseconds(250);
constexpr int kRemembered = 8; // pages; each new one counts for one in so many

} // namespace

ThreadLimits ThreadLimits::From(std::string_view given)
{
    std::size_t count = 0;
    const char* const end = given.data() + given.size();
    const auto [rest, fault] = std::from_chars(given.data(), end, count);
    if (given.empty() || fault != std::errc() || rest != end || count == 0)
        return {kMostThreads, false};
    return {std::min(count, kMostGiven), true};
}

PageWorkers::~PageWorkers()
{
    Cancel();
    End();
}

void PageWorkers::ExpectPace(Duration page)
{
    const Lock lock(mutex_);
    pace_ = page;
}

void PageWorkers::Add(PageJob& job)
{
    std::size_t waiting = 0;
    {
        const Lock lock(mutex_);
        jobs_.push_back(&job);
        waiting = jobs_.size();
    }
    to_do_.notify_one();
    StartWhenWorthwhile(waiting);
}

bool PageWorkers::IsSlow() const
{
    return pace_ > kSlow;
}

std::size_t PageWorkers::MostNow()
{
    if (limits_.is_given)
        return limits_.most;
    if (const Lock lock(mutex_); IsSlow())
        return limits_.most;
    if (!processors_)
        processors_ = std::thread::hardware_concurrency();
    return std::min(limits_.most, *processors_);
}

void PageWorkers::StartWhenWorthwhile(std::size_t waiting)
{
    if (waiting <= threads_.size() || threads_.size() + 1 >= limits_.most ||
        threads_.size() + 1 >= MostNow())
        return;
    const SignalsHeldBack held_back; // they are for the thread that was there before
    try {
        threads_.emplace_back([this] { Run(); });
    } catch (const std::exception&) {
        // There is no room for one. What nobody else does is done while it is awaited.
    }
}

void PageWorkers::Run()
{
    Lock lock(mutex_);
    for (;;) {
        to_do_.wait(lock, [this] { return is_ending_ || !jobs_.empty() || !discarded_.empty(); });
        if (jobs_.empty() && discarded_.empty())
            return;
        TakeOne(lock);
    }
}

/// The next job and one of the drafts that nobody needs any more, so that these never pile up.
void PageWorkers::TakeOne(Lock& lock)
{
    std::unique_ptr<PageDraft> discarded;
    if (!discarded_.empty()) {
        discarded = std::move(discarded_.back());
        discarded_.pop_back();
    }
    if (!jobs_.empty()) {
        PageJob& job = *jobs_.front();
        jobs_.pop_front();
        ++in_work_;
        lock.unlock();
        const WaitWatch watch;
        job.draft->Prepare();
        const Duration waited = watch.Waited();
        lock.lock();
        pace_ += (waited - pace_) / kRemembered;
        --in_work_;
        job.is_ready.store(true, std::memory_order_release);
        if (is_awaited_)
            done_.notify_one();
    }
    lock.unlock();
    discarded.reset();
    lock.lock();
}

void PageWorkers::Await(PageJob& job)
{
    if (job.is_ready.load(std::memory_order_acquire))
        return;
    Lock lock(mutex_);
    while (!job.is_ready.load(std::memory_order_acquire)) {
        // Who waits for a disk is no help: pages that are ready have to get their places meanwhile.
        if (!jobs_.empty() && (threads_.empty() || !IsSlow())) {
            TakeOne(lock);
            continue;
        }
        is_awaited_ = true;
        done_.wait(lock);
        is_awaited_ = false;
    }
}

void PageWorkers::Cancel()
{
    Lock lock(mutex_);
    jobs_.clear();
    is_awaited_ = true;
    done_.wait(lock, [this] { return in_work_ == 0; });
    is_awaited_ = false;
}

void PageWorkers::Discard(std::unique_ptr<PageDraft> draft)
{
    const Lock lock(mutex_);
    try {
        discarded_.push_back(std::move(draft));
    } catch (const std::bad_alloc&) {
        // It ends here and now.
    }
}

void PageWorkers::End()
{
    {
        const Lock lock(mutex_);
        is_ending_ = true;
    }
    to_do_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
    discarded_.clear();
    is_ending_ = false;
}

} // namespace kiv
