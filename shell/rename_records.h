// What the renamers write down: a run that is cut short can be finished or taken back, and the last
// run of a folder can be taken back without its report.
#pragma once

#include "platform/machine.h"
#include "shell/directory_tools.h"

#include <string>
#include <string_view>

namespace kiv {

/// The renames of the current directory that were done last. While a run is at work they stand in
/// the folder itself (`kRenameJournalFile`), flushed before the first rename is done; after it in a
/// file of the folder for the program's records.
class RenameRecord {
  public:
    enum class State { none, begun, done };

    /// `records_folder` is a drive path, empty when there is none. Reads what is recorded. Throws
    /// RunError of kind `file`, also for a record that is no record.
    RenameRecord(Machine& machine, const std::string& records_folder);

    State state() const { return state_; }
    const Renames& renames() const { return renames_; }

    /// A run is about to do these renames: it takes the place of whatever is recorded. Warns when
    /// it cannot be recorded for later.
    void Begin(const Renames& renames);
    /// All of them are done.
    void Finish();
    /// All of them are taken back.
    void Forget();

  private:
    void Read(const std::string& path);
    void RecordForLater(const std::string& text);

    Machine& machine_;
    std::string folder_;  // its native path, as text
    std::string journal_; // drive path
    std::string record_;  // empty: none is kept
    State state_ = State::none;
    Renames renames_;
};

/// Warns of a run in the current directory that was cut short, and says what can be done.
void TellOfUnfinishedRenames(Machine& machine);

} // namespace kiv
