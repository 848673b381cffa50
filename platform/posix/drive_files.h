// The files of the drives on a POSIX file system.
#pragma once

#include "platform/drive_files_common.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/folder_locks.h"
#include "platform/posix/names.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace kiv {

/// Looks at a file with one system call: 0 or an error number. A link is followed, or it is the
/// link itself that is looked at.
int StateOf(const std::string& native, struct stat& state);
int StateOfName(const std::string& native, struct stat& state);

class PosixDriveFiles : public DriveFiles {
  public:
    explicit PosixDriveFiles(const DriveMap& drives);

    bool FolderExists(std::string_view path) override;
    std::string RealFolder(std::string_view path) override;
    bool NameIsTaken(std::string_view path) override;
    bool IsLink(std::string_view path) override;
    void RefuseUnwritable(std::string_view path) override;
    FileStamp Stamp(std::string_view path) override;
    std::string ReadFile(std::string_view path) override;
    FileContent ReadContent(std::string_view path) override;
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
    bool IsHalfRenamed(std::string_view from, std::string_view to) override;
    bool FinishRename(std::string_view from, std::string_view to) override;
    std::string DriveLetters() override;
    std::string FromNative(std::string_view utf8) override;
    std::string ToNative(std::string_view path) override;
    void Refresh() override;
    PlaceState StateNow(const std::string& absolute) override;
    void ForgetNames() override { names_.Forget(); }

  protected:
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
    /// The drive path of a clean, absolute native path.
    std::string DrivePathOf(std::string_view native) const;
    /// Opens a plain file for reading.
    Descriptor OpenToRead(std::string_view path, struct stat& state);
    /// A file that is read whole, as a text or as a content.
    template <typename Bytes>
    Bytes ReadAll(std::string_view path);
    /// The native folder of a drive path; none when it is absent. Throws "cannot look at …".
    std::optional<std::string> FolderAt(const std::string& absolute);
    /// The state of what bears a name, by `look`. False when it is absent. Throws the same.
    using Look = int (*)(const std::string& native, struct stat& state);
    bool StateAt(const std::string& absolute, Look look, struct stat& state);
    /// Open by the present state of the disk.
    OutputFile LookedUp(std::string_view path);
    /// Whether another file than `own` (native name; empty: any) bears a name of this text, case
    /// aside.
    bool IsTakenByOthers(const std::string& folder, std::string_view text, std::string_view own);
    /// The native names of a file that has two by a rename that was cut short.
    struct HalfRenamed {
        std::string from;
        std::string to;
    };
    std::optional<HalfRenamed> FindHalfRenamed(const std::string& source,
                                               const std::string& target);
    /// What is to be written into an output file.
    struct Writing {
        std::string_view bytes;
        bool is_source = false;
        Expectation expected = {};
    };
    /// Writes what Open has found a place for: 0, an error number or kChangedMeanwhile.
    int Place(const OutputFile& file, const Writing& writing);
    int PlaceInOld(const OutputFile& file, const Writing& writing);
    void Write(const OutputFile& file, const Writing& writing);
    /// Tidies a native folder that is written into, once after each Refresh.
    void TidyFolder(std::string_view native);

    PosixNames names_;
    PosixFolderLocks locks_;
    std::map<std::string, bool, std::less<>> tidied_; // native folders; whether TellsAtClosing
    std::map<std::string, std::string, std::less<>> folder_places_; // of native ones; for PlaceOf
    std::vector<std::string> places_;                               // native: of the files written
};

} // namespace kiv
