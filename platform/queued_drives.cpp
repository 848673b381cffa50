#include "platform/queued_drives.h"

#include "platform/page_queue.h"

#include <cstdlib>
#include <string_view>
#include <utility>

namespace kiv {

namespace {

/// Whatever may see a page, or the lack of one, waits until all are in their places. That is any
/// look: a name may be that of a page by a link, in other case, by another drive. What can be told
/// without the disk is told at once, and so is a place to write to that is none of the pages'.
class QueuedDrives : public Drives {
  public:
    QueuedDrives(std::unique_ptr<DriveFiles> drives, const ThreadLimits& limits)
        : drives_(std::move(drives)), queue_(*drives_, limits)
    {
    }

    void ExpectHandOvers(std::size_t count) override { queue_.Expect(count); }
    void HandOver(const OutputFile& file, std::string& bytes, AtFailure&& at_failure) override
    {
        queue_.HandOver(file, bytes, std::move(at_failure));
    }
    void Settle() override { Settled(); }
    void EndHandOvers() override { queue_.End(); }
    OutputFile Open(std::string_view path) override;
    std::string PlaceOf(const OutputFile& file) override { return drives_->PlaceOf(file); }
    const std::string& CurrentDirectory() const override { return drives_->CurrentDirectory(); }

    // Readers.
    bool FileExists(std::string_view path) override { return Settled().FileExists(path); }
    std::string ReadFile(std::string_view path) override { return Settled().ReadFile(path); }
    FileContent ReadContent(std::string_view path) override { return Settled().ReadContent(path); }
    std::string ReadPart(std::string_view path, std::uint64_t offset, std::size_t count) override
    {
        return Settled().ReadPart(path, offset, count);
    }
    bool FolderExists(std::string_view path) override { return Settled().FolderExists(path); }
    std::string RealFolder(std::string_view path) override { return Settled().RealFolder(path); }
    bool NameIsTaken(std::string_view path) override { return Settled().NameIsTaken(path); }
    bool IsLink(std::string_view path) override { return Settled().IsLink(path); }
    void RefuseUnwritable(std::string_view path) override { Settled().RefuseUnwritable(path); }
    FileStamp Stamp(std::string_view path) override { return Settled().Stamp(path); }
    FolderListing List(std::string_view folder, std::string_view pattern) override
    {
        return Settled().List(folder, pattern);
    }
    std::vector<std::string> ListFolders(std::string_view folder) override
    {
        return Settled().ListFolders(folder);
    }
    bool NameIsTooLong(std::string_view exact) override { return Settled().NameIsTooLong(exact); }
    bool IsHalfRenamed(std::string_view from, std::string_view to) override
    {
        return Settled().IsHalfRenamed(from, to);
    }

    // Writers.
    void ChangeDirectory(std::string_view path) override { Settled().ChangeDirectory(path); }
    void Commit(const OutputFile& file, std::string_view bytes) override
    {
        Settled().Commit(file, bytes);
    }
    void AppendToFile(std::string_view path, std::string_view bytes) override
    {
        Settled().AppendToFile(path, bytes);
    }
    void CommitSource(const OutputFile& file, std::string_view bytes,
                      const Expectation& expected) override
    {
        Settled().CommitSource(file, bytes, expected);
    }
    void FlushWritten() override { Settled().FlushWritten(); }
    std::unique_ptr<FolderLock> LockFolder(std::string_view folder) override
    {
        return Settled().LockFolder(folder);
    }
    bool MakeFolder(std::string_view path) override { return Settled().MakeFolder(path); }
    bool DeleteFile(std::string_view path) override { return Settled().DeleteFile(path); }
    NameChange RenameFile(std::string_view from, std::string_view to) override
    {
        return Settled().RenameFile(from, to);
    }
    NameChange RenameExactly(std::string_view from, std::string_view to) override
    {
        return Settled().RenameExactly(from, to);
    }
    bool FinishRename(std::string_view from, std::string_view to) override
    {
        return Settled().FinishRename(from, to);
    }

    // What throws nothing.
    const std::vector<std::string>& Losses() const override { return Put().Losses(); }
    const std::vector<std::string>& Written() const override { return Put().Written(); }
    std::vector<WrittenFile> WrittenFiles() override { return Put().WrittenFiles(); }
    void Refresh() override { Put().Refresh(); }
    std::string DriveLetters() override { return Put().DriveLetters(); }
    std::string FromNative(std::string_view utf8) override { return Put().FromNative(utf8); }
    std::string ToNative(std::string_view path) override { return Put().ToNative(path); }
    void TellLooksTo(LookLog* log) override { Put().TellLooksTo(log); }
    PlaceState StateNow(const std::string& absolute) override { return Put().StateNow(absolute); }
    void ForgetNames() override { Put().ForgetNames(); }

  private:
    /// All pages are in their places, but for those that could not be written.
    DriveFiles& Put() const
    {
        queue_.PutAll();
        return *drives_;
    }
    /// All pages are in their places, or this throws the error of one that is not.
    DriveFiles& Settled()
    {
        queue_.PutAll();
        queue_.ThrowFailure();
        return *drives_;
    }

    std::unique_ptr<DriveFiles> drives_;
    mutable PageQueue queue_; // what it holds has been written, for all that anybody can see
};

OutputFile QueuedDrives::Open(std::string_view path)
{
    queue_.ThrowFailure();
    OutputFile file = drives_->Open(path);
    if (queue_.MayHold(file))
        return Settled().Open(path);
    return file;
}

} // namespace

std::unique_ptr<Drives> WithPageQueue(std::unique_ptr<DriveFiles> drives, std::size_t threads)
{
    const char* const given = std::getenv("KIV_THREADS");
    const ThreadLimits limits = threads != 0 ? ThreadLimits{threads, true}
                                             : ThreadLimits::From(given != nullptr ? given : "");
    if (limits.most == 1)
        return drives;
    return std::make_unique<QueuedDrives>(std::move(drives), limits);
}

} // namespace kiv
