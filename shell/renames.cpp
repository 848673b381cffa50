#include "shell/renames.h"

#include "platform/run_error.h"
#include "shell/rename_records.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <cstddef>
#include <memory>
#include <optional>
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

/// Says that a run is there that was cut short. A dry run says the same.
void TellOfFormer(const UnfinishedRun& former, Reporter& reporter)
{
    if (former.is_undoing)
        reporter.reportmsg("Undoing an earlier renaming of this folder was cut short. The "
                           "remaining old names are put back first.");
    else
        reporter.reportmsg("An earlier renaming of this folder was cut short. Its remaining names "
                           "are changed first.");
}

/// Ends an undoing, with an error when some names could not be put back.
void EndTakingBack(RenameRecord& record, const LeftRenames& left)
{
    try {
        record.Finish(left.renames);
    } catch (const RunError&) {
        if (!left.fault)
            throw;
    }
    if (left.fault)
        throw RunError(*left.fault);
}

/// Goes on taking back what was being taken back when that was cut short.
void GoOnTakingBack(Run& run, const UnfinishedRun& undoing)
{
    EndTakingBack(run.record, UndoRenames(run.files, Reversed(undoing.renames),
                                          BothNames::are_a_half_rename, run.done));
}

/// Finishes a run that was cut short. Its renames and those to come count as one run; but what it
/// took back is over.
Renames FinishFormer(Run& run, Reporter& reporter)
{
    const std::optional<UnfinishedRun> former = run.record.Unfinished();
    if (!former)
        return {};
    TellOfFormer(*former, reporter);
    if (former->is_undoing) {
        GoOnTakingBack(run, *former);
        return {};
    }
    FinishRun(run.files, former->renames, run.done);
    return former->renames;
}

/// A run that has failed is over with what it has done: the next one begins anew.
void EndOnRecord(RenameRecord& record, const Renames& done)
{
    try {
        if (done.empty()) {
            record.GiveUp();
            return;
        }
        record.Begin({done});
        record.Finish();
    } catch (const RunError&) {
        // The disk that refused the rename refuses this as well; what is on record can be taken
        // back all the same.
    }
}

/// Does `renames`, the last of `all` that the run is to have on record.
void DoOnRecord(Run& run, Renames all, const Renames& renames)
{
    run.record.Begin({all});
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

/// Takes renames back, on record as any run.
void TakeBack(Run& run, const Renames& renames)
{
    const bool was_cut_short = run.record.Unfinished().has_value();
    if (renames.empty() && !was_cut_short)
        return;
    run.record.Begin({Reversed(renames), true});
    LeftRenames left;
    try {
        left = UndoRenames(run.files, renames,
                           was_cut_short ? BothNames::are_a_half_rename : BothNames::are_the_users,
                           run.done);
    } catch (const RunError&) {
        EndOnRecord(run.record, {}); // what is on record, or in the report, still holds
        throw;
    }
    EndTakingBack(run.record, left);
}

/// Whether a report tells of a run that was cut short. It does not tell of the rename at which the
/// run was.
bool IsReportOf(Files& files, const Renames& recorded, const Renames& report)
{
    if (report.empty())
        return NothingIsDone(files, recorded);
    return AreAmong(report, recorded);
}

/// Takes back what a report tells of, where a run was cut short.
void TakeBackWithFormer(Run& run, const UnfinishedRun& former, const Renames& report)
{
    const bool is_being_undone = former.is_undoing && !report.empty() &&
                                 IsReportOf(run.files, former.renames, Reversed(report));
    if (is_being_undone)
        GoOnTakingBack(run, former);
    else if (IsReportOf(run.files, former.renames, report))
        TakeBack(run, former.renames);
    else if (!report.empty())
        throw RunError(
            ErrorKind::file,
            Joined({"cannot undo what the report tells of in ", run.files.CurrentDirectory(),
                    ": another renaming was cut short there. Undo that one first, "
                    "without a report"}),
            {run.files.CurrentDirectory()}, "Start undo-renames without --report.");
}

void RenameAll(Workspace& workspace, const RenamePasses& passes)
{
    Machine& machine = workspace.machine();
    Run run(workspace);
    Renames all = FinishFormer(run, machine.reporter);
    const RenamePlan plan = PlanRenames(machine, passes);
    all.insert(all.end(), plan.renames.begin(), plan.renames.end());
    if (!all.empty() && workspace.RecordsFolder.empty() && !workspace.RenamesAreReported)
        TellNotKept(machine.reporter, "the environment names no folder for them");
    if (!all.empty() || run.record.Unfinished())
        DoOnRecord(run, std::move(all), plan.renames);
    if (plan.fault)
        throw RunError(*plan.fault);
}

RenamePlan PlanAll(Workspace& workspace, const RenamePasses& passes)
{
    Machine& machine = workspace.machine();
    RenameRecord record(machine, workspace.RecordsFolder);
    const std::optional<UnfinishedRun>& former = record.Unfinished();
    if (former)
        TellOfFormer(*former, machine.reporter);
    RenamePlan plan = PlanRenames(machine, passes, former.value_or(UnfinishedRun()));
    if (!plan.renames.empty())
        record.RefuseUnwritable();
    return plan;
}

void RenameOrPlan(Workspace& workspace, const RenamePasses& passes, Renaming renaming)
{
    if (renaming == Renaming::real) {
        RenameAll(workspace, passes);
        return;
    }
    RenamePlan plan = PlanAll(workspace, passes);
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
    RefuseForms(renames);
    Run run(workspace);
    if (const std::optional<UnfinishedRun> former = run.record.Unfinished())
        TakeBackWithFormer(run, *former, renames);
    else
        TakeBack(run, renames);
}

void UndoLastRenames(Workspace& workspace)
{
    Run run(workspace);
    const std::optional<UnfinishedRun> former = run.record.Unfinished();
    if (former && former->is_undoing) {
        GoOnTakingBack(run, *former);
        return;
    }
    const std::optional<Renames> last = former ? former->renames : run.record.Last();
    if (!last)
        throw RunError(ErrorKind::file,
                       Joined({"cannot undo the renaming of ", run.files.CurrentDirectory(),
                               ": there is none on record, or it was undone already"}),
                       {run.files.CurrentDirectory()},
                       "If you kept the JSON report of the renaming, give it with --report.");
    TakeBack(run, *last);
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
