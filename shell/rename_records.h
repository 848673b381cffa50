// What the renamers write down: a run that is cut short can be finished or taken back, and the last
// run of a folder can be taken back without its report.
#pragma once

#include "platform/machine.h"
#include "shell/rename_runs.h"

#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// The renames of the current directory. While a run is at work, or is taken back, they stand in
/// the folder itself (`kRenameJournalFile`), flushed before the first rename is done. The last run
/// stands in a file of the folder for the program's records as well, and stays there when it is
/// over. What is wrong with that one stops nobody but who wants to take it back.
class RenameRecord {
  public:
    /// `records_folder` is a drive path, empty when there is none. Reads the journal. Throws
    /// RunError of kind `file`, also for a journal that is none, or a link.
    RenameRecord(Machine& machine, const std::string& records_folder);

    /// The run that was cut short, or is at work now.
    const std::optional<UnfinishedRun>& Unfinished() const { return unfinished_; }

    /// The last run; none when none is on record. Throws RunError of kind `file`, also for a record
    /// that is none.
    std::optional<Renames> Last();

    /// Throws what Begin would where the folder may not be written into. Writes nothing.
    void RefuseUnwritable() { machine_.files.RefuseUnwritable(journal_); }
    /// A run is about to do its renames; it takes the place of one that was cut short. Unless it
    /// takes others back it is the last one from now on; warns when that cannot be recorded.
    void Begin(UnfinishedRun run);
    /// All is done but `left`, which could not be taken back and so is the last run now. Of one
    /// that was taken back whole nothing stays.
    void Finish(const Renames& left = {});
    /// The run has done nothing that is to be kept: what was on record before is so again.
    void GiveUp();

  private:
    std::string Folder();
    std::string RecordPath();
    void RecordForLater(const std::string& text);
    void WriteLast(const std::string& text);
    void ReplaceLast(const std::optional<std::string>& bytes);
    std::optional<std::string> BytesOfLast();
    std::optional<Renames> LastIfReadable();
    void ForgetLast();
    bool KeepAsLast(const Renames& left);

    Machine& machine_;
    std::string records_folder_;
    std::string journal_;                 // drive path
    std::optional<UnfinishedRun> former_; // that was there at first
    std::optional<UnfinishedRun> unfinished_;
    bool is_told_ = false;                   // that the last run cannot be recorded
    bool is_recorded_ = false;               // the last run's record is that of this run
    std::optional<std::string> former_last_; // what it was before
};

/// Warns that a run to come can be taken back by its report alone.
void TellNotKept(Reporter& reporter, std::string_view reason);

/// Warns of a run in the current directory that was cut short, and says what can be done.
void TellOfUnfinishedRenames(Machine& machine);

} // namespace kiv
