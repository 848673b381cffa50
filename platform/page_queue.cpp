#include "platform/page_queue.h"

#include "platform/process.h"
#include "platform/run_error.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <string_view>
#include <utility>

namespace kiv {

namespace {

// To start a thread takes as long as to write a few pages: a small build is done before that
// is worth while. On a slow disk it is from the second page on.
constexpr auto kWorthwhile = std::chrono::milliseconds(1);
// To write as many takes longer than that on any disk.
constexpr std::size_t kMany = 100; // pages

constexpr std::size_t kLargestBuffer = std::size_t{1} << 20U;

std::string_view NameIn(std::string_view native)
{
    std::size_t begin = native.size();
    while (begin > 0 && native[begin - 1] != '/' && native[begin - 1] != '\\')
        --begin;
    return native.substr(begin);
}

/// Whether a file system surely takes a name for no other one than those that differ in the case of
/// its letters. Some have short names for long ones, leave out what stands at their end, or know of
/// alphabets what this program does not.
bool IsPlain(std::string_view name)
{
    constexpr auto is_plain = [](char c) { return c > ' ' && c < '\x7F' && c != '~'; };
    return !name.empty() && name.back() != '.' && std::ranges::all_of(name, is_plain);
}

/// A page has a file open until it is put in its place and counted. Behind it are as many that the
/// threads have yet to close, and as many again that they are about to be given.
std::size_t MostPages()
{
    constexpr std::size_t kShare = 8; // the rest is for whatever else is open
    return std::clamp<std::size_t>(MostOpenFiles() / kShare, 1, PageQueue::kMostPages);
}

/// Restores a flag at the end of a scope.
class Raised {
  public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;
    ~Raised() { flag_ = false; }

  private:
    bool& flag_;
};

} // namespace

PageQueue::PageQueue(DriveFiles& files, const ThreadLimits& limits)
    : files_(files), begins_at_once_(limits.is_given), most_pages_(MostPages()),
      workers_(limits, most_pages_)
{
}

PageQueue::~PageQueue()
{
    PutAll();
}

bool PageQueue::MayHold(const OutputFile& file)
{
    if (pages_.empty())
        return false;
    asked_native_.clear();
    asked_place_ = files_.PlaceOf(file);
    asked_native_ = file.native;
    const std::string_view place = asked_place_;
    return place.empty() || !IsPlain(NameIn(file.native)) || places_.contains(place);
}

bool PageQueue::IsWorthwhile() const
{
    return !is_wary_ && (begins_at_once_ || expected_ >= kMany || written_at_once_ > kWorthwhile);
}

/// A page is looked up before it is made and again when it is handed over.
std::string PageQueue::PlaceOf(const OutputFile& file)
{
    if (asked_native_.empty() || file.native != asked_native_)
        return files_.PlaceOf(file);
    asked_native_.clear();
    return std::move(asked_place_);
}

void PageQueue::HandOver(const OutputFile& file, std::string& bytes, Files::AtFailure at_failure)
{
    ThrowFailure();
    std::string place =
        IsWorthwhile() && IsPlain(NameIn(file.native)) ? PlaceOf(file) : std::string();
    if (place.empty() || places_.contains(place))
        return WriteAtOnce(file, bytes);
    MakeRoom(bytes.size());
    ThrowFailure();
    if (is_wary_) // by now: a thread would give this page its place before those that wait
        return WriteAtOnce(file, bytes);
    auto page = std::make_unique<Page>();
    page->file = file;
    page->place = std::move(place);
    page->at_failure = std::move(at_failure);
    page->bytes.swap(bytes);
    const std::size_t size = page->bytes.size();
    Add(std::move(page));
    GiveBuffer(bytes, size);
    while (!pages_.empty() && pages_.front()->job.IsDone())
        PutFirst();
    ThrowFailure();
}

void PageQueue::WriteAtOnce(const OutputFile& file, const std::string& bytes)
{
    PutAll();
    ThrowFailure();
    const WaitWatch watch;
    files_.Commit(file, bytes);
    written_at_once_ += watch.Elapsed();
    waited_at_once_ += watch.Waited();
    workers_.ExpectPace(waited_at_once_ / ++count_at_once_);
}

void PageQueue::MakeRoom(std::size_t bytes)
{
    while (!pages_.empty() && (pages_.size() >= most_pages_ || bytes_ + bytes > kMostBytes))
        PutFirst();
}

void PageQueue::Add(std::unique_ptr<Page> added)
{
    added->job.draft = files_.BeginPage(added->file, added->bytes);
    buffers_.reserve(kMostPages);
    pages_.push_back(std::move(added));
    Page& page = *pages_.back();
    bytes_ += page.bytes.size();
    try {
        places_.insert(page.place);
        workers_.Add(page.job);
    } catch (const std::bad_alloc&) {
        page.job.draft.reset(); // then without, before another one can get past it
        PutAll();
    }
}

void PageQueue::PutAll()
{
    // A log of looks is told of each page in its place, and may well have a look at it.
    while (!pages_.empty() && !is_putting_)
        PutFirst();
}

void PageQueue::PutFirst()
{
    PageJob& job = pages_.front()->job;
    const bool is_placed = job.draft && workers_.Await(job);
    const std::unique_ptr<Page> page = std::move(pages_.front());
    pages_.pop_front();
    places_.erase(page->place);
    bytes_ -= page->bytes.size();
    Put(*page, is_placed);
    KeepBuffer(page->bytes);
}

void PageQueue::Put(Page& page, bool is_placed)
{
    const Raised putting(is_putting_);
    try {
        if (is_placed) {
            files_.CountPage(*page.job.draft);
            workers_.Discard(std::move(page.job.draft));
        } else {
            PutPlainly(page);
        }
    } catch (RunError& error) {
        if (page.at_failure)
            page.at_failure(error);
        Fail();
    } catch (...) { // for want of memory
        Fail();
    }
}

/// What the others have drafted is given up: they may be what fills the disk.
void PageQueue::PutPlainly(Page& page)
{
    is_wary_ = true;
    workers_.Cancel();
    page.job.draft.reset();
    for (const std::unique_ptr<Page>& other : pages_)
        other->job.draft.reset();
    workers_.EndDiscarded(); // and these may be the files of which too many are open
    files_.Commit(page.file, page.bytes);
}

/// Keeps the error that is being handled.
void PageQueue::Fail()
{
    failure_ = std::current_exception();
    workers_.Cancel();
    places_.clear();
    pages_.clear();
    bytes_ = 0;
}

/// For the next page, which is most likely about as large as the last one was.
void PageQueue::GiveBuffer(std::string& bytes, std::size_t size)
{
    if (!buffers_.empty()) {
        bytes.swap(buffers_.back());
        buffers_.pop_back();
        return;
    }
    try {
        bytes.reserve(std::min(size + size / 2, kLargestBuffer));
    } catch (const std::bad_alloc&) {
        // There may be no next page, and else it asks for its memory itself.
    }
}

void PageQueue::KeepBuffer(std::string& bytes)
{
    if (bytes.capacity() > kLargestBuffer || buffers_.size() >= buffers_.capacity())
        return;
    bytes.clear();
    buffers_.push_back(std::move(bytes));
}

void PageQueue::ThrowFailure() const
{
    try {
        if (failure_)
            std::rethrow_exception(failure_);
    } catch (const RunError& error) {
        throw RunError(error); // a copy: those whom it passes may add what is no part of it
    }
}

void PageQueue::End()
{
    PutAll();
    workers_.Rest();
    buffers_.clear();
    asked_native_.clear();
    is_wary_ = false;
    expected_ = 0;
    written_at_once_ = {};
    waited_at_once_ = {};
    count_at_once_ = 0;
    if (const std::exception_ptr failure = std::exchange(failure_, nullptr))
        std::rethrow_exception(failure);
}

} // namespace kiv
