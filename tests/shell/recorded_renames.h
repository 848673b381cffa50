// A folder whose renames are recorded.
#pragma once

#include "platform/site_files.h"
#include "shell/rename_records.h"
#include "shell/renames.h"
#include "shell_desk.h"

#include <filesystem>

namespace kiv {

class RecordedRenames : public ShellTest {
  protected:
    RecordedRenames()
    {
        workspace.LookAt("C:\\site");
        workspace.RecordsFolder = "C:\\state\\kiv\\renames";
    }

    void PutNames(const Texts& names)
    {
        for (const std::string& name : names)
            Put("site/" + name, name);
    }

    /// Leaves the folder as a run leaves it that is killed behind so many of its renames.
    void CutShort(const Renames& renames, std::size_t done, bool is_undoing = false)
    {
        RenameRecord(machine, workspace.RecordsFolder).Begin({renames, is_undoing});
        for (std::size_t i = 0; i < done; ++i)
            std::filesystem::rename(Native("site/" + renames[i].from),
                                    Native("site/" + renames[i].to));
        files->Refresh();
    }

    /// What the program keeps for later about one folder.
    std::string RecordFile()
    {
        const Texts names = NamesIn("state/kiv/renames");
        return names.size() == 1 ? "state/kiv/renames/" + names[0] : "";
    }

    bool HasJournal() { return Exists("site/" + std::string(kRenameJournalFile)); }
};

inline const Renames kPlan = {{"a b", "a-b"}, {"c d", "c-d"}, {"e f", "e-f"}};

} // namespace kiv
