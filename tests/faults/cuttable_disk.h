// A disk with a cache of its own whose power can be cut: it knows what was flushed, and what was
// only written.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace kiv::faults {

/// Which of the writes since the last flush have reached the disk when its power goes.
enum class Survivors : std::uint8_t { none, some, all };

/// The disk appears as the file "disk" in a folder, which a loop device can stand on. It is served
/// by a thread of this process, over FUSE.
class CuttableDisk {
  public:
    /// `folder` is made and mounted; the disk begins as a copy of `image`.
    CuttableDisk(std::string folder, const std::string& image);
    CuttableDisk(const CuttableDisk&) = delete;
    CuttableDisk& operator=(const CuttableDisk&) = delete;
    ~CuttableDisk();

    std::string Path() const { return folder_ + "/disk"; }
    /// Writes what a power cut at this moment leaves on the disk to a new file. `seed` chooses the
    /// survivors when they are `some`.
    void Cut(Survivors survivors, unsigned seed, const std::string& image);

  private:
    struct Write {
        std::uint64_t offset;
        std::string bytes;
    };

    void Serve();
    /// Answers one request; false when the disk is taken away.
    bool Answer(const char* request, std::size_t size);
    void AnswerDisk(const char* request);
    void Reply(std::uint64_t request, int error, const void* bytes, std::size_t size) const;
    void Take(std::uint64_t offset, std::string bytes);
    void Flush();

    std::string folder_;
    int device_ = -1;  // where requests come from
    int current_ = -1; // the disk as it is read
    int flushed_ = -1; // the disk without what is only written
    std::uint64_t size_ = 0;
    std::mutex mutex_;
    std::vector<Write> waiting_; // since the last flush, in order
    std::thread server_;
};

/// Copies an image; holes stay holes.
void CopyImage(int from, int to);

} // namespace kiv::faults
