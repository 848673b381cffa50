// Drives that lie in memory, for tests that make thousands of calls a second.
#pragma once

#include "platform/drive_files_common.h"
#include "tests/support/memory_tree.h"

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// A drive C:, whose native path is "/c", and an empty Z: for all other native paths. They answer
/// as the real ones on Linux do, but there are no links, no rights and no other programs.
class MemoryDrives : public DriveFiles {
  public:
    MemoryDrives();

    /// Lays a file or a folder down behind the program's back, and the folders it lies in.
    /// `below`: a native path below drive C:, "site/a.txt", cut at "/". What no file system takes
    /// is left out: parts that are empty, "." or "..", too long or have a NUL in them, a file in
    /// the place of a folder.
    void Put(std::string_view below, std::string_view bytes);
    void PutFolder(std::string_view below);

    /// The bytes of every file of a folder on drive C: and below it, by native path below it.
    std::map<std::string, std::string> Tree(std::string_view below = {}) const;

    /// What was read or looked for since the last ForgetSought: absolute paths in upper case. A
    /// file that is only written is not among them.
    const std::set<std::string>& Sought() const { return sought_; }
    void ForgetSought() { sought_.clear(); }

    bool FolderExists(std::string_view path) override;
    std::string RealFolder(std::string_view path) override;
    bool NameIsTaken(std::string_view path) override;
    FileStamp Stamp(std::string_view path) override;
    std::string ReadFile(std::string_view path) override;
    std::string ReadPart(std::string_view path, std::uint64_t offset, std::size_t count) override;
    OutputFile Open(std::string_view path) override;
    std::string PlaceOf(const OutputFile& file) override;
    void Commit(const OutputFile& file, std::string_view bytes) override;
    void AppendToFile(std::string_view path, std::string_view bytes) override;
    void CommitSource(const OutputFile& file, std::string_view bytes,
                      const Expectation& expected) override;
    void FlushWritten() override {}
    std::unique_ptr<FolderLock> LockFolder(std::string_view folder) override;
    bool MakeFolder(std::string_view path) override;
    bool DeleteFile(std::string_view path) override;
    bool NameIsTooLong(std::string_view exact) override;
    bool IsHalfRenamed(std::string_view, std::string_view) override { return false; }
    bool FinishRename(std::string_view, std::string_view) override { return false; }
    std::string DriveLetters() override { return "CZ"; }
    std::string FromNative(std::string_view utf8) override;
    std::string ToNative(std::string_view path) override;
    PlaceState StateNow(const std::string& absolute) override;

  protected:
    void TidyFolderOf(const OutputFile&) override {}
    /// One that always goes the ordinary way, by Commit.
    std::unique_ptr<PageDraft> MakeDraft(const OutputFile& file, std::string_view bytes,
                                         bool is_former_known) override;
    void NoteWritten(const OutputFile&, bool) override {}
    bool IsTooLong(const std::string& absolute) const override;
    std::vector<FileName> Names(const std::string& folder, bool folders) override;
    std::string ExactNameOf(const std::string& absolute) override;
    void Rename(const std::string& source, const std::string& target, const NameChange& change,
                Alike alike) override;

  private:
    /// Where an absolute path leads.
    struct Place {
        MemoryNode* folder = nullptr; // null: there is none; at a root the root itself
        std::string name;             // native, as it is or as written
        MemoryNode* node = nullptr;   // null: nothing is there
    };
    Place PlaceOf(std::string_view absolute);
    /// The folder at an absolute path; null when there is none.
    MemoryNode* FolderAt(std::string_view absolute);
    /// The file to read or stamp, noted as sought; null when there is none.
    MemoryNode* FileAt(const std::string& absolute);
    MemoryNode& FileToRead(std::string_view path);
    static bool IsTakenByOthers(const MemoryNode& folder, std::string_view text,
                                const MemoryNode& own);
    /// A native path, cut; the node at its end, a folder, is made. Null: no file system takes it.
    MemoryNode* MadeFolder(std::string_view below);

    std::map<char, MemoryNode> roots_;
    std::set<std::string> sought_;
    std::int64_t changes_ = 0;
};

} // namespace kiv::test
