// What the drives have in common on every system: the current directory, the list of written files,
// the order of listings.
#pragma once

#include "platform/drives.h"
#include "platform/former_files.h"
#include "platform/page_draft.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv {

class DriveFiles : public Drives {
  public:
    const std::string& CurrentDirectory() const override { return current_; }
    void ChangeDirectory(std::string_view path) override;
    bool FileExists(std::string_view path) override { return Stamp(path).exists; }
    NameChange RenameFile(std::string_view from, std::string_view to) override;
    NameChange RenameExactly(std::string_view from, std::string_view to) override;
    FolderListing List(std::string_view folder, std::string_view pattern) override;
    std::vector<std::string> ListFolders(std::string_view folder) override;
    const std::vector<std::string>& Written() const override { return written_; }
    std::vector<WrittenFile> WrittenFiles() override;
    const std::vector<std::string>& Losses() const override { return losses_; }
    void Refresh() override;
    void TellLooksTo(LookLog* log) override { log_ = log; }

    /// Commit in steps, of which those in the middle, PageDraft::Prepare and Place, are for any
    /// thread. For `file` and `bytes` see PageDraft. May throw what the first look at the folder
    /// throws.
    std::unique_ptr<PageDraft> BeginPage(const OutputFile& file, std::string_view bytes);
    /// Counts a page that has its place as written.
    void CountPage(const PageDraft& page);

  protected:
    /// What must be done in a folder before the first file is written there.
    virtual void TidyFolderOf(const OutputFile& file) = 0;
    virtual std::unique_ptr<PageDraft> MakeDraft(const OutputFile& file, std::string_view bytes,
                                                 bool is_former_known) = 0;
    /// A file was written, which was not there before when `is_new`.
    virtual void NoteWritten(const OutputFile& file, bool is_new) = 0;

    /// Whether an absolute path is longer than the system can take.
    virtual bool IsTooLong(const std::string& absolute) const = 0;

    /// The names in a folder, in any order: those of plain files or those of folders.
    virtual std::vector<FileName> Names(const std::string& folder, bool folders) = 0;

    /// A plain file whose name may be in exact form, as the exact form of what it is called.
    /// `absolute`: as FileToUse gives it. Throws "cannot rename x: …" when there is none.
    virtual std::string ExactNameOf(const std::string& absolute) = 0;
    /// Which names count as the new one's: all of the same text, case aside, or what the system
    /// itself takes for it.
    enum class Alike { text, exact };
    /// Renames a file that is there and bears `change.from` to `change.to`, in the folder of
    /// `target`.
    virtual void Rename(const std::string& source, const std::string& target,
                        const NameChange& change, Alike alike) = 0;

    /// The absolute form of a path; empty when it is no place: "\\server\share", a NUL in it.
    /// Throws when it is too long.
    std::string Absolute(std::string_view path) const;
    /// The same for the name of a file: the empty name and one that ends in a separator are none.
    std::string AbsoluteFile(std::string_view path) const;
    /// The same, but what is no place is refused: "cannot read x: no such file".
    std::string FileToUse(std::string_view path, std::string_view action) const;

    // For the log of looks, if there is one; see there. What is no place is not told of.
    void TellLook(const std::string& absolute)
    {
        if (log_ != nullptr && !absolute.empty()) [[unlikely]]
            log_->Looks(absolute);
    }
    void TellOpening(const std::string& absolute)
    {
        if (log_ != nullptr) [[unlikely]]
            log_->Opens(absolute);
    }
    void TellRead(std::string_view path, std::string_view bytes)
    {
        if (log_ != nullptr) [[unlikely]]
            log_->HasRead(Absolute(path), bytes);
    }
    void TellWritten(const OutputFile& file, const std::string_view* bytes = nullptr)
    {
        if (log_ != nullptr) [[unlikely]]
            log_->HasWritten(file, bytes);
    }

    void SetCurrent(std::string absolute) { current_ = std::move(absolute); }

    /// What tells a file to be written from every other that is written.
    virtual std::string IdentityOf(const OutputFile& file) { return file.native; }
    /// Whether it is known already what a file was before the run. Else whoever changes it tells by
    /// KeepFormer, right before.
    bool IsFormerKnown(const OutputFile& file);
    void KeepFormer(const OutputFile& file, const FormerFile& former)
    {
        KnownAt(file).Keep(former);
    }
    /// The same for a file that is to be added to or deleted: reads it when it must. Never throws
    /// but for lack of memory.
    void KeepFormerAt(std::string_view path);

    /// A file was closed after `bytes` were written as its whole content.
    void CountWritten(const OutputFile& file, std::string_view bytes);
    /// A file was closed after something was added to it.
    void CountAppended(const OutputFile& file);
    /// It could not keep all that the former one had: "its owner", "its group", …
    void CountLost(const std::string& absolute, const std::vector<std::string_view>& lost);

    /// What another program had put into the place of a file, when a run was stopped, has been
    /// given a name of its own: that of the file with ".saved" behind it.
    void CountSaved(const std::string& saved);

    /// Throws "cannot write x: …" when a file is there that must not be, or none that must be.
    static void RefuseUnexpected(const OutputFile& file, const Expectation& expected);
    [[noreturn]] static void RefuseChanged(std::string_view path);
    [[noreturn]] void RefuseFolder(std::string_view path, std::string_view absolute);
    /// Throws for a file that is too large to be read whole.
    static void RefuseTooLarge(std::string_view path, std::uint64_t size);
    /// Reads a file of `size` bytes whole; `read` takes up to so many from its begin and tells how
    /// many there were. Where they end before, another program is writing the file: it is read
    /// again, as large as `size_now` tells, a few times, and then refused. Throws RunError of kind
    /// `memory` where `read` finds none.
    using ReadFirst = std::function<std::size_t(std::size_t count)>;
    using TellSize = std::function<std::uint64_t()>;
    static void ReadWhole(std::string_view path, std::uint64_t size, const ReadFirst& read,
                          const TellSize& size_now);

    /// What the state of a file is told by. A file system's time stamps are coarse: two writes of
    /// this program may fall on one tick, so a young stamp counts the writes too. `now` and `young`
    /// are in the unit of `changed`.
    std::int64_t Distinct(std::int64_t changed, std::int64_t now, std::int64_t young) const
    {
        return now - changed < young ? changed + writes_ : changed;
    }

  private:
    FolderListing Listing(std::string_view folder, std::string_view pattern, bool folders);

    /// How a written file is now.
    enum class State { as_before, changed, unread };
    /// What is known of a place that is written to.
    struct KnownPlace {
        std::size_t number;                    // of this place, in the order in which they came up
        std::optional<FormerFile> former = {}; // none where it only got the bytes that it had
        State state = State::as_before;

        /// The first one stays.
        void Keep(const FormerFile& one)
        {
            if (!former)
                former = one;
        }
        /// Whether a place that holds `content` now held something else, or nothing, before.
        bool IsChange(std::string_view content) const { return former && !former->Held(content); }
    };
    using KnownPlaces = std::unordered_map<std::string, KnownPlace>; // by IdentityOf

    KnownPlace& KnownAt(const OutputFile& file)
    {
        return known_.try_emplace(IdentityOf(file), KnownPlace{.number = known_.size()})
            .first->second;
    }
    void CountWritten(const OutputFile& file, KnownPlace& place, std::string_view bytes);
    void CountClosed(const OutputFile& file, KnownPlace& place, State state);
    State StateOfContent(const std::string& path, const KnownPlace& known);

    LookLog* log_ = nullptr;
    std::string current_;
    std::vector<std::string> written_;
    KnownPlaces known_;
    std::vector<KnownPlace*> places_of_written_;
    std::vector<std::string> losses_;
    std::int64_t writes_ = 0; // never starts anew: stamps outlive a Refresh
};

} // namespace kiv
