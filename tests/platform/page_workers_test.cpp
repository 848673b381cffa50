// What the threads do with pages whose drafts are the test's own.
#include "platform/page_workers.h"

#include <condition_variable>
#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>
#include <vector>

namespace kiv {
namespace {

using Outcome = PreparedPage::Outcome;
using Numbers = std::vector<int>;

/// What has happened to the drafts, told by several threads.
class Events {
  public:
    void Prepared()
    {
        const std::lock_guard lock(mutex_);
        ++prepared_;
        changed_.notify_all();
    }
    void AwaitPrepared(int count)
    {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return prepared_ >= count; });
    }
    void Put(int number)
    {
        const std::lock_guard lock(mutex_);
        put_.push_back(number);
    }
    Numbers AllPut()
    {
        const std::lock_guard lock(mutex_);
        return put_;
    }
    void Ended()
    {
        const std::lock_guard lock(mutex_);
        ++ended_;
    }
    int EndedCount()
    {
        const std::lock_guard lock(mutex_);
        return ended_;
    }

  private:
    std::mutex mutex_;
    std::condition_variable changed_;
    int prepared_ = 0;
    Numbers put_;
    int ended_ = 0;
};

struct Course {
    int others_first = 0;    // how many others are prepared before it is
    bool throws = false;     // when it is prepared
    bool is_refused = false; // its place
    Outcome outcome = Outcome::drafted;
};

const OutputFile kNoFile;

class TestDraft : public PageDraft {
  public:
    TestDraft(int number, const Course& course, Events& events)
        : PageDraft(kNoFile, {}, true), number_(number), course_(course), events_(events)
    {
    }
    ~TestDraft() override { events_.Ended(); }

  protected:
    PreparedPage Make() override
    {
        if (course_.others_first > 0)
            events_.AwaitPrepared(course_.others_first);
        if (course_.throws)
            throw std::runtime_error("no memory");
        events_.Prepared();
        return {course_.outcome};
    }
    bool Put() override
    {
        events_.Put(number_);
        return !course_.is_refused;
    }

  private:
    int number_;
    Course course_;
    Events& events_;
};

class PageWorkersTest : public testing::Test {
  protected:
    /// Jobs 1 to the number of courses.
    void Begin(std::size_t threads, const std::vector<Course>& courses)
    {
        workers = std::make_unique<PageWorkers>(ThreadLimits{threads, true});
        Add(courses);
    }
    void Add(const std::vector<Course>& courses)
    {
        for (const Course& course : courses) {
            jobs.push_back(std::make_unique<PageJob>());
            const int number = static_cast<int>(jobs.size());
            jobs.back()->draft = std::make_unique<TestDraft>(number, course, events);
            workers->Add(*jobs.back());
        }
    }
    /// Whether each got its place.
    std::vector<bool> AwaitAll()
    {
        std::vector<bool> placed;
        for (const auto& job : jobs)
            placed.push_back(workers->Await(*job));
        return placed;
    }

    Events events;
    std::vector<std::unique_ptr<PageJob>> jobs;
    std::unique_ptr<PageWorkers> workers; // ends before what its threads know
};

TEST_F(PageWorkersTest, WhatIsReadyFirstWaitsForThoseBeforeIt)
{
    Begin(4, {{3}, {}, {}, {}});
    EXPECT_EQ(AwaitAll(), (std::vector<bool>{true, true, true, true}));
    EXPECT_EQ(events.AllPut(), (Numbers{1, 2, 3, 4}));
}

TEST_F(PageWorkersTest, TheyGetTheirPlacesThoughNobodyAwaitsThem)
{
    Begin(2, {{}, {}, {}});
    while (!jobs.back()->IsDone())
        std::this_thread::yield();
    EXPECT_EQ(events.AllPut(), (Numbers{1, 2, 3}));
}

TEST_F(PageWorkersTest, NothingBehindARefusedPageGetsAPlace)
{
    Begin(4, {{}, {0, false, true}, {}, {}});
    events.AwaitPrepared(4);
    EXPECT_TRUE(workers->Await(*jobs[0]));
    EXPECT_FALSE(workers->Await(*jobs[1]));
    workers->Cancel();
    EXPECT_EQ(events.AllPut(), (Numbers{1, 2})); // the second was tried
}

TEST_F(PageWorkersTest, NothingBehindAPageThatCouldNotBePreparedGetsAPlace)
{
    for (const Course& fault : {Course{2, true}, Course{2, false, false, Outcome::failed}}) {
        jobs.clear();
        Begin(4, {{}, fault, {}});
        EXPECT_TRUE(workers->Await(*jobs[0]));
        EXPECT_FALSE(workers->Await(*jobs[1]));
        workers->Cancel();
    }
    EXPECT_EQ(events.AllPut(), (Numbers{1, 1}));
}

TEST_F(PageWorkersTest, AFileThatHoldsTheBytesHasItsPlace)
{
    Begin(2, {{}, {0, false, false, Outcome::held}, {}});
    EXPECT_EQ(AwaitAll(), (std::vector<bool>{true, true, true}));
    EXPECT_EQ(events.AllPut(), (Numbers{1, 3}));
}

TEST_F(PageWorkersTest, WithoutAnotherThreadWhoAwaitsAPageDoesTheWork)
{
    Begin(1, {{}, {}, {}});
    EXPECT_EQ(events.AllPut(), Numbers());
    EXPECT_TRUE(workers->Await(*jobs[1]));
    EXPECT_EQ(events.AllPut(), (Numbers{1, 2}));
    EXPECT_TRUE(workers->Await(*jobs[2]));
    EXPECT_EQ(events.AllPut(), (Numbers{1, 2, 3}));
}

TEST_F(PageWorkersTest, AfterARestTheyGoOn)
{
    Begin(3, {{}, {}, {}});
    EXPECT_EQ(AwaitAll(), (std::vector<bool>{true, true, true}));
    for (int run = 0; run < 3; ++run) {
        workers->Rest();
        jobs.clear();
        Add({{}, {}});
        EXPECT_EQ(AwaitAll(), (std::vector<bool>{true, true}));
    }
    EXPECT_EQ(events.AllPut(), (Numbers{1, 2, 3, 1, 2, 1, 2, 1, 2}));
}

TEST_F(PageWorkersTest, WhatIsTakenOffOnesHandsHasEndedWhenTheyRest)
{
    for (const std::size_t threads : {1U, 2U, 8U}) {
        jobs.clear();
        const int before = events.EndedCount();
        Begin(threads, std::vector<Course>(20));
        AwaitAll();
        for (const auto& job : jobs)
            workers->Discard(std::move(job->draft));
        workers->Rest();
        EXPECT_EQ(events.EndedCount() - before, 20) << threads;
    }
}

TEST_F(PageWorkersTest, WhatWasNotHandedOnYetHasEndedToo)
{
    Begin(1, {{}, {}});
    AwaitAll();
    workers->Discard(std::move(jobs[0]->draft));
    workers->Discard(std::move(jobs[1]->draft));
    Add({{}}); // hands both on; one of them ends with the job
    EXPECT_TRUE(workers->Await(*jobs[2]));
    workers->Discard(std::move(jobs[2]->draft));
    EXPECT_EQ(events.EndedCount(), 1);
    workers->Rest();
    EXPECT_EQ(events.EndedCount(), 3);
}

TEST_F(PageWorkersTest, WhatIsCanceledBeforeAnybodyBeganItIsLeftAlone)
{
    Begin(1, {{}, {}});
    workers->Cancel();
    workers->Rest();
    EXPECT_EQ(events.AllPut(), Numbers());
    EXPECT_FALSE(jobs[0]->IsDone());
}

} // namespace
} // namespace kiv
