// Files as they would be: what is written is kept in memory and read back from there, and the disk
// stays as it is.
#pragma once

#include "platform/files.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Everything that was not written here is looked up in the files underneath. Names ignore case,
/// also where the disk has two that differ in nothing else. Renaming is refused: nobody needs to
/// know what it would be.
class UnwrittenFiles : public Files {
  public:
    explicit UnwrittenFiles(Files& underneath) : real_(underneath) {}

    /// The bytes that a file would have; null when it was not written.
    const std::string* Content(std::string_view path) const;

    bool FileExists(std::string_view path) override;
    std::string ReadFile(std::string_view path) override;
    FileContent ReadContent(std::string_view path) override;
    std::string ReadPart(std::string_view path, std::uint64_t offset, std::size_t count) override;

    const std::string& CurrentDirectory() const override { return real_.CurrentDirectory(); }
    void ChangeDirectory(std::string_view path) override { real_.ChangeDirectory(path); }
    bool FolderExists(std::string_view path) override;
    std::string RealFolder(std::string_view path) override { return real_.RealFolder(path); }
    bool NameIsTooLong(std::string_view exact) override { return real_.NameIsTooLong(exact); }
    bool IsHalfRenamed(std::string_view, std::string_view) override { return false; }
    FileStamp Stamp(std::string_view path) override;
    OutputFile Open(std::string_view path) override;
    std::string PlaceOf(const OutputFile& file) override
    {
        return file.native.empty() ? file.path : real_.PlaceOf(file);
    }
    void Commit(const OutputFile& file, std::string_view bytes) override;
    void AppendToFile(std::string_view path, std::string_view bytes) override;
    void CommitSource(const OutputFile& file, std::string_view bytes,
                      const Expectation& expected) override;
    void FlushWritten() override {}
    const std::vector<std::string>& Losses() const override { return losses_; }
    std::unique_ptr<FolderLock> LockFolder(std::string_view folder) override;
    bool MakeFolder(std::string_view path) override;
    bool DeleteFile(std::string_view path) override;
    NameChange RenameFile(std::string_view from, std::string_view to) override;
    NameChange RenameExactly(std::string_view from, std::string_view to) override;
    bool FinishRename(std::string_view, std::string_view) override { return false; }
    FolderListing List(std::string_view folder, std::string_view pattern) override;
    std::vector<std::string> ListFolders(std::string_view folder) override;
    const std::vector<std::string>& Written() const override { return written_; }
    std::vector<WrittenFile> WrittenFiles() override;
    void Refresh() override { written_.clear(); }

  private:
    struct Kept {
        std::string path;                 // as it was written
        std::optional<std::string> bytes; // none: the file is gone
    };

    /// The absolute path, its case aside.
    std::string KeyOf(std::string_view path) const;
    bool IsAsOnDisk(const std::string& path);
    const Kept* Find(std::string_view path) const;
    void Keep(std::string_view path, std::string bytes);

    Files& real_;
    std::map<std::string, Kept> kept_;        // by key
    std::map<std::string, std::string> made_; // folders, by key
    std::vector<std::string> written_;
    std::vector<std::string> losses_; // none: nothing is replaced
};

} // namespace kiv
