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
        line_.push_back(&job);
        try {
            jobs_.push_back(&job);
        } catch (...) {
            line_.pop_back();
            throw;
        }
        waiting = jobs_.size();
        HandDiscarded();
    }
    if (have_rested_)
        GoApart();
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
    return std::min(limits_.most, Processors());
}

std::size_t PageWorkers::Processors()
{
    if (!processors_)
        processors_ = std::thread::hardware_concurrency();
    return *processors_;
}

void PageWorkers::StartWhenWorthwhile(std::size_t waiting)
{
    if (waiting <= threads_.size() || threads_.size() + 1 >= limits_.most ||
        threads_.size() + 1 >= MostNow())
        return;
    try {
        const SignalsHeldBack held_back; // they are for the thread that was there before
        KeepApart(threads_.emplace_back([this] { Run(); }));
    } catch (const std::exception&) {
        // There is no room for one. What nobody else does is done while it is awaited.
    }
}

/// The caller may be on another processor than it was when the threads began to rest.
void PageWorkers::GoApart()
{
    have_rested_ = false;
    for (std::thread& thread : threads_)
        KeepApart(thread);
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
    ++in_work_;
    std::unique_ptr<PageDraft> discarded;
    if (!discarded_.empty()) {
        discarded = std::move(discarded_.back());
        discarded_.pop_back();
    }
    if (!jobs_.empty())
        TakeJob(lock);
    if (discarded) {
        lock.unlock();
        discarded.reset();
        lock.lock();
    }
    if (--in_work_ == 0)
        done_.notify_one();
}

/// Prepares the next page, then gives their places to those whose turn has come.
void PageWorkers::TakeJob(Lock& lock)
{
    PageJob& job = *jobs_.front();
    jobs_.pop_front();
    const bool is_asked = is_long_;
    lock.unlock();
    const WaitWatch watch(!is_asked);
    job.draft->Prepare();
    const Duration waited = watch.Waited();
    const bool is_long = watch.Elapsed() > kSlow;
    lock.lock();
    is_long_ = is_long;
    if (is_asked || !is_long) // else nobody knows whether it was work
        pace_ += (waited - pace_) / kRemembered;
    job.state.store(PageJob::State::prepared, std::memory_order_relaxed);
    PlaceReady(lock);
}

/// Whoever has prepared the first of the line puts it in its place, and those behind it that were
/// ready before. One thread at a time: so they appear in order. A refused page stays the first.
void PageWorkers::PlaceReady(Lock& lock)
{
    using State = PageJob::State;
    while (!is_placing_ && !line_.empty() &&
           line_.front()->state.load(std::memory_order_relaxed) == State::prepared) {
        PageJob& job = *line_.front();
        is_placing_ = true;
        lock.unlock();
        const bool is_placed = job.draft->Place();
        lock.lock();
        is_placing_ = false;
        if (is_placed)
            line_.pop_front();
        job.state.store(is_placed ? State::placed : State::refused, std::memory_order_release);
        if (awaited_ == &job)
            done_.notify_one();
    }
}

bool PageWorkers::Await(const PageJob& job)
{
    Lock lock(mutex_, std::defer_lock);
    if (!job.IsDone())
        lock.lock();
    while (!job.IsDone()) {
        // Who waits for a disk is no help: there may be room for the next page meanwhile.
        if (!jobs_.empty() && (threads_.empty() || !IsSlow())) {
            TakeOne(lock);
            continue;
        }
        awaited_ = &job;
        done_.wait(lock);
        awaited_ = nullptr;
    }
    return job.state.load(std::memory_order_relaxed) == PageJob::State::placed;
}

void PageWorkers::Cancel()
{
    Lock lock(mutex_);
    jobs_.clear();
    done_.wait(lock, [this] { return in_work_ == 0; });
    line_.clear();
}

void PageWorkers::Discard(std::unique_ptr<PageDraft> draft)
{
    if (to_discard_.size() >= most_discarded_)
        return; // with it
    try {
        to_discard_.push_back(std::move(draft));
    } catch (const std::bad_alloc&) {
        // It ends here and now.
    }
}

/// Behind the lock.
void PageWorkers::HandDiscarded()
{
    if (discarded_.empty())
        discarded_.swap(to_discard_);
}

void PageWorkers::Rest()
{
    EndDiscarded();
    // More than the processors are for a slow disk, and the next one may be another.
    if (!limits_.is_given && !threads_.empty() && threads_.size() >= Processors())
        End();
    have_rested_ = !threads_.empty();
}

void PageWorkers::EndDiscarded()
{
    Lock lock(mutex_);
    for (HandDiscarded(); !discarded_.empty(); HandDiscarded()) {
        if (IsSlow())
            to_do_.notify_all();
        TakeOne(lock);
    }
    done_.wait(lock, [this] { return in_work_ == 0; });
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
    is_ending_ = false;
}

} // namespace kiv
