// Pages that were handed over: prepared side by side, put in their places in order.
#pragma once

#include "platform/drive_files_common.h"
#include "platform/page_workers.h"

#include <cstddef>
#include <deque>
#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace kiv {

/// Of one thread, that of the files. Whatever goes wrong with a page while it is prepared, it is
/// written once more by Files::Commit when its turn has come: so what fails is what would have
/// failed without this, and nothing else. Where that happens once, the pages behind it go the same
/// way until End.
class PageQueue {
  public:
    PageQueue(DriveFiles& files, const ThreadLimits& limits);
    PageQueue(const PageQueue&) = delete;
    PageQueue& operator=(const PageQueue&) = delete;
    /// Writes what is left. Nobody is told of its failure.
    ~PageQueue();

    bool IsEmpty() const { return pages_.empty(); }
    /// Whether a file may be one of those that are on their way.
    bool MayHold(const OutputFile& file);

    /// See Files::ExpectHandOvers.
    void Expect(std::size_t count) { expected_ = count; }
    /// See Files::HandOver.
    void HandOver(const OutputFile& file, std::string& bytes, Files::AtFailure at_failure);
    /// Puts every page in its place. A failure is kept, and the pages behind it are dropped.
    void PutAll();
    /// Throws the failure that was kept, again and again: whoever met it first may have taken it
    /// for something that he can do without.
    void ThrowFailure() const;
    /// PutAll; lets the threads rest, and throws the failure for the last time.
    void End();

    // What may be on its way at a time.
    static constexpr std::size_t kMostPages = 64;
    static constexpr std::size_t kMostBytes = std::size_t{64} * 1024 * 1024;

  private:
    struct Page {
        OutputFile file;
        std::string place;
        std::string bytes;
        Files::AtFailure at_failure;
        PageJob job; // without a draft it goes the ordinary way
    };

    bool IsWorthwhile() const;
    std::string PlaceOf(const OutputFile& file);
    void WriteAtOnce(const OutputFile& file, const std::string& bytes);
    void MakeRoom(std::size_t bytes);
    void Add(std::unique_ptr<Page> page);
    void PutFirst();
    void Put(Page& page, bool is_placed);
    void PutPlainly(Page& page);
    void Fail();
    void GiveBuffer(std::string& bytes, std::size_t size);
    void KeepBuffer(std::string& bytes);

    DriveFiles& files_;
    const bool begins_at_once_;
    const std::size_t most_pages_;                // that may be on their way at a time
    std::deque<std::unique_ptr<Page>> pages_;     // in order, some of them in their places already
    std::unordered_set<std::string_view> places_; // of these
    std::size_t bytes_ = 0;                       // of these
    std::size_t expected_ = 0;                    // in this run of pages
    std::vector<std::string> buffers_;            // to be used again
    std::string asked_native_;                    // whose place was asked for last
    std::string asked_place_;
    std::exception_ptr failure_;
    PageWorkers::Duration written_at_once_{}; // how long that took
    PageWorkers::Duration waited_at_once_{};  // and waited
    int count_at_once_ = 0;
    bool is_wary_ = false;
    bool is_putting_ = false;
    PageWorkers workers_; // the first to end: its threads know the pages
};

} // namespace kiv
