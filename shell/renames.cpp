#include "shell/renames.h"

#include "platform/run_error.h"
#include "shell/rename_records.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace kiv {

namespace {

/// The folder in which a run renames, for itself alone.
struct Run {
    explicit Run(Workspace& workspace)
        : files(workspace.machine().files), done(workspace.Renamed),
          lock(files.LockFolder(files.CurrentDirectory())),
          record(workspace.machine(), workspace.RecordsFolder)
    {
    }

    Files& files;
    Renames& done;
    std::unique_ptr<FolderLock> lock;
    RenameRecord record;
};

/// Finishes a run that was cut short; the record then has its renames and those to come.
Renames FinishFormer(Run& run, Reporter& reporter)
{
    if (run.record.state() != RenameRecord::State::begun)
        return {};
    FinishRenames(run.files, run.record.renames(), run.done);
    reporter.reportmsg("An earlier renaming of this folder was cut short. Its remaining names have "
                       "been changed first.");
    return run.record.renames();
}

/// A run that has failed is over with what it has done: the next one begins anew.
void EndOnRecord(RenameRecord& record, const Renames& done)
{
    try {
        record.Begin(done);
        record.Finish();
    } catch (const RunError&) {
        // The disk that refused the rename refuses this as well; what is on record can be taken
        // back all the same.
    }
}

/// Does `renames`, the last of `all` that the run is to have on record.
void DoOnRecord(Run& run, Renames all, const Renames& renames)
{
    run.record.Begin(all);
    const auto before = static_cast<std::ptrdiff_t>(run.done.size());
    try {
        DoRenames(run.files, renames, run.done);
    } catch (const RunError&) {
        all.resize(all.size() - renames.size());
        all.insert(all.end(), run.done.begin() + before, run.done.end());
        EndOnRecord(run.record, all);
        throw;
    }
    run.record.Finish();
}

/// Whether a report tells of the run that is on record. That of a run that was cut short does not
/// tell of the rename at which it was.
bool IsReportOf(const RenameRecord& record, const Renames& renames)
{
    const Renames& recorded = record.renames();
    if (record.state() != RenameRecord::State::begun)
        return renames == recorded;
    return std::all_of(renames.begin(), renames.end(), [&](const Rename& rename) {
        return std::find(recorded.begin(), recorded.end(), rename) != recorded.end();
    });
}

void RenameAll(Workspace& workspace, const RenamePasses& passes)
{
    Machine& machine = workspace.machine();
    Run run(workspace);
    Renames all = FinishFormer(run, machine.reporter);
    const RenamePlan plan = PlanRenames(machine, passes);
    all.insert(all.end(), plan.renames.begin(), plan.renames.end());
    if (!all.empty())
        DoOnRecord(run, std::move(all), plan.renames);
    if (plan.fault)
        throw RunError(*plan.fault);
}

void RenameOrPlan(Workspace& workspace, const RenamePasses& passes, Renaming renaming)
{
    if (renaming == Renaming::real) {
        RenameAll(workspace, passes);
        return;
    }
    RenamePlan plan = PlanRenames(workspace.machine(), passes);
    workspace.Renamed = std::move(plan.renames);
    if (plan.fault)
        throw RunError(*plan.fault);
}

void RenameAndTell(Workspace& workspace, const RenamePasses& passes, Renaming renaming,
                   std::string_view status)
{
    RenameOrPlan(workspace, passes, renaming);
    if (renaming == Renaming::real)
        workspace.machine().reporter.Status(status);
}

} // namespace

void dodirfix(Workspace& workspace, Renaming renaming)
{
    RenameAndTell(workspace, WebSafePasses(), renaming, "Names fixed");
}

void dodirt(Workspace& workspace, Renaming renaming)
{
    RenameAndTell(workspace, ThumbnailPasses(), renaming, "_t complete");
}

void dorenamefiles(Workspace& workspace, const std::string& find, const std::string& replacement,
                   Renaming renaming)
{
    if (find.empty())
        workspace.machine().reporter.reportmsg("Fill in find field, please");
    else
        RenameOrPlan(workspace, ReplacementPasses(find, replacement), renaming);
}

void UndoRenames(Workspace& workspace, const Renames& renames)
{
    Run run(workspace);
    const bool is_on_record = IsReportOf(run.record, renames);
    UndoRenames(run.files, is_on_record ? run.record.renames() : renames, run.done);
    if (is_on_record)
        run.record.Forget();
}

void UndoLastRenames(Workspace& workspace)
{
    Run run(workspace);
    if (run.record.state() == RenameRecord::State::none)
        throw RunError(ErrorKind::file,
                       Joined({"cannot undo the renaming of ", run.files.CurrentDirectory(),
                               ": there is none on record, or it was undone already"}));
    UndoRenames(run.files, run.record.renames(), run.done);
    run.record.Forget();
}

std::string SampleFileName(Files& files)
{
    try {
        std::vector<std::string> names = files.ListFiles(".", "*.*");
        return names.empty() ? std::string() : std::move(names.front());
    } catch (const RunError&) {
        return {};
    }
}

} // namespace kiv
