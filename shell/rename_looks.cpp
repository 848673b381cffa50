#include "shell/rename_looks.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/silent_reporter.h"
#include "shell/outside_programs.h"
#include "shell/rename_records.h"
#include "shell/renames.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/windows1252.h"

#include <utility>

namespace kiv {

namespace {

constexpr std::string_view kNothingOnRecord =
    "No renaming of this folder is on record, or it was undone already.";

std::string Counted(std::size_t count, std::string_view one, std::string_view many)
{
    return Joined({std::to_string(count), count == 1 ? one : many});
}

RenamePasses PassesOf(const RenameTask& task)
{
    switch (task.renamer) {
    case Renamer::web_safe:
        return WebSafePasses();
    case Renamer::thumbnails:
        return ThumbnailPasses();
    case Renamer::replacement:
        return ReplacementPasses(task.find, task.replacement);
    case Renamer::undo:
    case Renamer::lower_case:
        break;
    }
    return {};
}

/// The run that an undoing takes back, or goes on to; none: there is none on record.
std::optional<UnfinishedRun> UndoingOf(RenameRecord& record)
{
    const std::optional<UnfinishedRun>& former = record.Unfinished();
    if (former && former->is_undoing)
        return former;
    const std::optional<Renames> last = former ? former->renames : record.Last();
    if (!last)
        return std::nullopt;
    return UnfinishedRun{Reversed(*last), true};
}

/// What the run comes to; none when there is nothing that it could be about.
std::optional<RenamePlan> PlanOf(Workspace& workspace, const RenameTask& task)
{
    SilentReporter silent; // a look puts up no box
    Machine& real = workspace.machine();
    Machine machine{real.files, real.native_paths, real.clock, real.clipboard, real.programs,
                    silent,     real.pictures};
    RenameRecord record(machine, workspace.RecordsFolder);
    RenamePlan plan;
    if (task.renamer == Renamer::undo) {
        const std::optional<UnfinishedRun> undoing = UndoingOf(record);
        if (!undoing)
            return std::nullopt;
        plan = PlanRenames(machine, {}, *undoing);
    } else {
        plan = PlanRenames(machine, PassesOf(task), record.Unfinished().value_or(UnfinishedRun()));
    }
    if (!plan.renames.empty())
        record.RefuseUnwritable();
    return plan;
}

std::string NothingToDo(const RenameTask& task)
{
    switch (task.renamer) {
    case Renamer::web_safe:
        return "Every name here is safe for the web: nothing to rename.";
    case Renamer::thumbnails:
        return "No GIF or JPEG picture here lacks its \"_t\": nothing to rename.";
    case Renamer::replacement:
        return Joined({"No file name here has the text \"", task.find, "\" in it."});
    case Renamer::lower_case:
        return "Every name here is in lower case: nothing to rename.";
    case Renamer::undo:
        break;
    }
    return std::string(kNothingOnRecord);
}

constexpr std::string_view kRootWords = " This is the root of a drive.";

std::string SummaryOf(const RenameTask& task, const RenameLook& look, Files& files)
{
    const std::size_t count = look.pairs.size();
    std::string summary;
    if (look.IsEmpty())
        return NothingToDo(task);
    if (count == 0)
        summary = "No file will be renamed: the run stops at the first one.";
    else if (task.renamer == Renamer::undo)
        summary = Counted(count, " name will come back", " names will come back");
    else
        summary = Counted(count, " file will be renamed", " files will be renamed");
    if (count > 0)
        summary += look.stops ? ", then the run stops." : ".";
    if (IsRoot(files.CurrentDirectory()))
        summary += kRootWords;
    return summary;
}

std::string WarningOf(const RunError& fault)
{
    return fault.hint.empty() ? fault.text : Joined({fault.text, "\r\n", fault.hint});
}

RenamePair PairOf(const Rename& rename)
{
    return {TextOfName(rename.from), TextOfName(rename.to)};
}

void Fill(RenameLook& look, const RenamePlan& plan)
{
    for (const Rename& rename : plan.renames)
        look.pairs.push_back(PairOf(rename));
    if (plan.stops)
        look.stops = PairOf(*plan.stops);
    if (plan.fault)
        look.warning = WarningOf(*plan.fault);
}

/// What another program will do, as far as one can know.
void FillLowerCased(RenameLook& look, Workspace& workspace, const RenameTask& task)
{
    Files& files = workspace.machine().files;
    const std::string folder = task.folder.empty() ? files.CurrentDirectory() : task.folder;
    for (const FileName& name : files.List(folder, "*.*").files) {
        const std::string text = TextOfName(name.exact);
        if (LowerCase(text) != text)
            look.pairs.push_back({text, LowerCase(text)});
    }
    if (look.pairs.empty()) {
        look.summary = NothingToDo(task);
        return;
    }
    look.summary = Counted(look.pairs.size(), " file gets a name in lower case.",
                           " files get names in lower case.");
    if (IsRoot(folder))
        look.summary += kRootWords;
    look.warning = "Another program does that. It cannot be undone here.";
}

void FillOf(RenameLook& look, Workspace& workspace, const RenameTask& task)
{
    if (task.renamer == Renamer::lower_case) {
        FillLowerCased(look, workspace, task);
        return;
    }
    if (const std::optional<RenamePlan> plan = PlanOf(workspace, task))
        Fill(look, *plan);
    else
        look.is_possible = false;
    look.summary = SummaryOf(task, look, workspace.machine().files);
}

} // namespace

bool IsRoot(std::string_view folder)
{
    return NameOf(AbsolutePath(folder, folder)).empty();
}

RenameLook LookAtRenames(Workspace& workspace, const RenameTask& task)
{
    RenameLook look;
    if (task.renamer == Renamer::replacement && task.find.empty()) {
        look.summary = "Give the text to look for.";
        return look;
    }
    try {
        FillOf(look, workspace, task);
    } catch (const RunError& error) {
        look = {};
        look.summary = "Nothing can be renamed here.";
        look.warning = WarningOf(error);
    }
    return look;
}

std::optional<RenameLook> LookIfChanged(Workspace& workspace, const RenameTask& task,
                                        const RenameLook& seen)
{
    RenameLook now = LookAtRenames(workspace, task);
    if (now.pairs == seen.pairs && now.stops == seen.stops && now.is_possible == seen.is_possible)
        return std::nullopt;
    now.summary += " The files have changed since they were shown: look again.";
    return now;
}

void LowerCaseAndTell(Workspace& workspace, std::string_view folder)
{
    if (folder.empty())
        LowerCaseNames(workspace);
    else
        LowerCaseNamesOf(workspace, folder);
    workspace.machine().reporter.Status("Lower-casing of the file names started");
}

void RenameAndTell(Workspace& workspace, const std::string& find, const std::string& replacement)
{
    dorenamefiles(workspace, find, replacement);
    if (find.empty())
        return;
    const std::size_t count = workspace.Renamed.size();
    workspace.machine().reporter.Status(count == 0
                                            ? NothingToDo({Renamer::replacement, find, {}})
                                            : Counted(count, " file renamed", " files renamed"));
}

void UndoAndTell(Workspace& workspace)
{
    UndoLastRenames(workspace);
    workspace.machine().reporter.Status(Counted(workspace.Renamed.size(),
                                                " file has its old name again",
                                                " files have their old names again"));
}

} // namespace kiv
