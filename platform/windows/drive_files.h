// The files of the drives on Windows.
#pragma once

#include "platform/drive_files_common.h"
#include "platform/windows/folders.h"
#include "platform/windows/handle.h"
#include "platform/windows/names.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kiv {

/// How many units the longest name in a folder has.
constexpr std::size_t kLongestName = 255;

class WindowsDriveFiles : public DriveFiles {
  public:
    explicit WindowsDriveFiles(const DriveMap& drives);

    bool FolderExists(std::string_view path) override;
    std::string RealFolder(std::string_view path) override;
    bool NameIsTaken(std::string_view path) override;
    bool IsLink(std::string_view path) override;
    FileStamp Stamp(std::string_view path) override;
    std::string ReadFile(std::string_view path) override;
    std::string ReadPart(std::string_view path, std::uint64_t offset, std::size_t count) override;
    OutputFile Open(std::string_view path) override;
    std::string PlaceOf(const OutputFile& file) override;
    void Commit(const OutputFile& file, std::string_view bytes) override;
    void AppendToFile(std::string_view path, std::string_view bytes) override;
    void CommitSource(const OutputFile& file, std::string_view bytes,
                      const Expectation& expected) override;
    void FlushWritten() override;
    std::unique_ptr<FolderLock> LockFolder(std::string_view folder) override;
    bool MakeFolder(std::string_view path) override;
    bool DeleteFile(std::string_view path) override;
    bool NameIsTooLong(std::string_view exact) override;
    /// Windows renames in one step: there is nothing to finish.
    bool IsHalfRenamed(std::string_view, std::string_view) override { return false; }
    bool FinishRename(std::string_view, std::string_view) override { return false; }
    std::string DriveLetters() override;
    std::string FromNative(std::string_view utf8) override;
    std::string ToNative(std::string_view path) override;
    void Refresh() override;
    PlaceState StateNow(const std::string& absolute) override;

  protected:
    /// A path may spell a name in another case than the disk does.
    std::string IdentityOf(const OutputFile& file) override { return PlaceOf(file); }
    bool IsTooLong(const std::string& absolute) const override
    {
        return names_.IsTooLong(absolute);
    }
    std::vector<FileName> Names(const std::string& folder, bool folders) override;
    std::string ExactNameOf(const std::string& absolute) override;
    void Rename(const std::string& source, const std::string& target, const NameChange& change,
                Alike alike) override;
    void TidyFolderOf(const OutputFile& file) override;
    std::unique_ptr<PageDraft> MakeDraft(const OutputFile& file, std::string_view bytes,
                                         bool is_former_known) override;
    void NoteWritten(const OutputFile& file, bool is_new) override;

  private:
    /// The state of what bears a name, by `look`. False when it is absent. Throws "cannot look
    /// at …".
    using Look = unsigned long (*)(const std::wstring& native, WindowsState& state);
    bool StateAt(const std::string& absolute, Look look, WindowsState& state) const;
    bool NativeStateAt(const std::wstring& native, std::string_view absolute, Look look,
                       WindowsState& state) const;
    bool IsFolderAt(const std::string& absolute) const;
    /// The absolute path of a file; what Windows allows for none is refused.
    std::string PossibleFile(std::string_view path, std::string_view action) const;
    /// The native path of a name in exact form.
    std::wstring InFolder(std::string_view folder, std::string_view exact) const;
    /// Opens a file and tells its size.
    WindowsHandle OpenToRead(const std::string& absolute, std::uint64_t& size);

    /// What is to be written into an output file.
    struct Writing {
        std::string_view bytes;
        bool is_source = false;
        Expectation expected = {};
    };
    /// Writes what Open has found a place for: 0, an error number or kChangedMeanwhile.
    unsigned long Place(const OutputFile& file, const Writing& writing);
    unsigned long PlaceInOld(const OutputFile& file, const Writing& writing);
    void Write(const OutputFile& file, const Writing& writing);
    WindowsNames names_;
    std::unordered_set<std::wstring> tidied_;                      // native folders
    std::vector<OutputFile> places_;                               // of the files written
    std::unordered_map<std::wstring, std::wstring> final_folders_; // of native ones; for PlaceOf
};

/// Whether Windows allows the names in an absolute path.
bool HasGoodNames(std::string_view absolute);

} // namespace kiv
