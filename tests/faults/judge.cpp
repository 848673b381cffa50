#include "faults/judge.h"

#include "faults/report_text.h"
#include "faults/system.h"

#include <algorithm>
#include <csignal>
#include <cstring>
#include <map>
#include <utility>

namespace kiv::faults {

namespace {

constexpr int kMistakeFound = 99; // as a sanitizer ends a program

void Append(Complaints& complaints, const Complaints& more)
{
    for (const Complaint& complaint : more)
        if (std::find(complaints.begin(), complaints.end(), complaint) == complaints.end())
            complaints.push_back(complaint);
}

bool SanitizerSpoke(const Ending& ending)
{
    return ending.exit_code == kMistakeFound ||
           ending.err.find("ERROR: AddressSanitizer") != std::string::npos ||
           ending.err.find("runtime error: ") != std::string::npos;
}

const Entry* EntryOf(const Tree& tree, const std::string& path)
{
    const auto found = tree.find(path);
    return found == tree.end() ? nullptr : &found->second;
}

bool IsLike(const Entry* found, const Entry* known)
{
    if (found == nullptr || known == nullptr)
        return found == known;
    return found->kind == known->kind && found->bytes == known->bytes;
}

/// Whether a file that grows holds whole lines of what it is to hold.
bool HasGrown(const Entry* found, const Entry* wanted)
{
    if (found == nullptr || wanted == nullptr)
        return found == nullptr;
    return wanted->bytes.starts_with(found->bytes) &&
           (found->bytes.empty() || found->bytes.back() == '\n');
}

/// Old or new, never between; nothing that nobody expects. "" when so.
std::string WhatBecameOf(const std::string& path, const Tree& found, const Case& with)
{
    const Entry* const now = EntryOf(found, path);
    const Entry* const old = EntryOf(with.before, path);
    const Entry* const wanted = EntryOf(with.after, path);
    const bool passes = now != nullptr && with.scenario.passing.contains(path);
    const bool grows = with.scenario.growing.contains(path) && HasGrown(now, wanted);
    if (passes || grows || IsLike(now, old) || IsLike(now, wanted))
        return {};
    if (now == nullptr)
        return path + " is gone";
    if (now->bytes.empty())
        return path + " is empty";
    return path +
           (old == nullptr && wanted == nullptr ? " is nobody's" : " is neither old nor new");
}

void AskOfFiles(const Tree& found, const Case& with, bool succeeded, Complaints& complaints)
{
    for (const Tree* const tree : {&with.before, &with.after, &found})
        for (const auto& [path, entry] : *tree) {
            if (entry.kind == Entry::Kind::folder || IsOurs(path))
                continue;
            // A file that is made wrong, told as done, and can be made again is no loss.
            const bool loss = !succeeded || !CanBeMadeAgain(with.scenario, path);
            const std::string what = WhatBecameOf(path, found, with);
            if (!what.empty())
                Append(complaints, {{loss ? Kind::loss : Kind::false_success, what}});
        }
}

/// Of files that change their names: the bytes of each are there, under one name or another.
void AskOfBytes(const Tree& found, const Case& with, Complaints& complaints)
{
    for (const auto& [path, entry] : with.before) {
        if (entry.kind == Entry::Kind::folder)
            continue;
        const bool there =
            std::any_of(found.begin(), found.end(), [&known = entry](const auto& other) {
                return IsLike(&other.second, &known);
            });
        if (!there)
            complaints.push_back({Kind::loss, "what was in " + path + " is gone"});
    }
}

/// Whether a run has said of a file that some of that could not be kept.
bool TellsOfLost(const Ending& ending)
{
    return ending.out.find("was replaced and has lost") != std::string::npos;
}

/// Owner, rights and attributes stay. Where they cannot, the run says so, and nobody but the new
/// owner has more rights than before.
void AskOfRights(const Tree& found, const Case& with, bool lost_told, Complaints& complaints)
{
    if (with.scenario.renames)
        return;
    constexpr mode_t kOfOthers = 07077;
    for (const auto& [path, entry] : with.before) {
        const Entry* const now = EntryOf(found, path);
        if (now == nullptr)
            continue;
        const std::string other = OtherRights(entry, *now);
        const bool has_more = (now->mode & kOfOthers & ~entry.mode) != 0;
        if (!other.empty() && (!lost_told || has_more))
            complaints.push_back({Kind::rights, path + ": another " + other});
    }
}

void AskOfWritten(const Report& report, const Tree& found, const Case& with, Complaints& complaints)
{
    for (const std::string& file : report.files) {
        const auto is_it = [&](const auto& named) { return IsPathOf(file, named.first); };
        const auto wanted = std::find_if(with.after.begin(), with.after.end(), is_it);
        if (wanted == with.after.end())
            continue; // it was to be taken away again
        if (report.failed && with.scenario.growing.contains(wanted->first))
            continue; // its first lines were written
        if (!IsLike(EntryOf(found, wanted->first), &wanted->second))
            complaints.push_back({Kind::false_success, wanted->first + " is not what is reported"});
    }
}

void AskOfSuccess(const Case& with, const Ending& ending, const Tree& found, Complaints& complaints)
{
    if (const std::string difference = FirstDifference(with.after, WithoutOurs(found));
        !difference.empty())
        complaints.push_back({Kind::false_success, difference});
    if (!with.scenario.json && ending.out != with.out)
        complaints.push_back({Kind::false_success, "another result"});
}

/// The first file that is to be gone at the end of a run; "" when there is none.
std::string FirstThatPasses(const Tree& found, const Case& with)
{
    for (const std::string& path : with.scenario.passing)
        if (found.contains(path))
            return path;
    return FirstOfOurs(found);
}

/// The command does what the scenario says it does; else its tries would show nothing.
void AskOfChanges(const Case& made, Complaints& complaints)
{
    std::set<std::string> paths = made.scenario.changes;
    for (const Tree* const tree : {&made.before, &made.after})
        for (const auto& [path, entry] : *tree)
            if (entry.kind != Entry::Kind::folder)
                paths.insert(path);
    for (const std::string& path : paths) {
        const bool changed = !IsLike(EntryOf(made.before, path), EntryOf(made.after, path));
        if (changed != made.scenario.changes.contains(path))
            complaints.push_back(
                {Kind::unfinished, path + (changed ? " was not to change" : " did not change")});
    }
}

bool IsDone(const Case& with, const Tree& found)
{
    return SameBytes(with.after, found) || (with.scenario.renames && SameBytes(with.before, found));
}

std::string EndOf(const Ending& ending)
{
    if (ending.hung)
        return "it hangs";
    if (ending.signal != 0)
        return std::string("signal ") + ::strsignal(ending.signal);
    const std::optional<Report> report = ReportOf(ending.out);
    const std::string words = report ? report->error : ending.err.substr(0, ending.err.find('\n'));
    return "exit code " + std::to_string(ending.exit_code) + (words.empty() ? "" : ": " + words);
}

} // namespace

Tree WithoutOurs(const Tree& tree)
{
    Tree rest;
    for (const auto& [path, entry] : tree)
        if (!IsOurs(path))
            rest.insert(rest.end(), {path, entry});
    return rest;
}

Complaints JudgeEnding(const Scenario& scenario, const Ending& ending,
                       const Circumstances& circumstances)
{
    Complaints complaints;
    if (SanitizerSpoke(ending))
        complaints.push_back({Kind::crash, "sanitizer: " + ending.err.substr(0, 200)});
    if (ending.hung)
        complaints.push_back({Kind::hang, "it hangs"});
    else if (ending.signal != 0 && !ending.killed)
        complaints.push_back({Kind::crash, EndOf(ending)});
    if (ending.killed || ending.signal != 0 || ending.hung || SanitizerSpoke(ending))
        return complaints;
    if (ending.exit_code > 1)
        complaints.push_back({Kind::crash, EndOf(ending)});
    if (!scenario.json)
        return complaints;
    const std::optional<Report> report = ReportOf(ending.out);
    if (!report && circumstances.output_failed && ending.exit_code == 1)
        return complaints;
    if (!report)
        complaints.push_back({Kind::report, "no whole report with " + EndOf(ending)});
    else if (report->failed != (ending.exit_code != 0) && !circumstances.output_failed)
        complaints.push_back({Kind::report, "the report tells another end than the exit code"});
    return complaints;
}

Complaints JudgeRun(const Workbench& bench, const Case& with, const Ending& ending,
                    const Circumstances& circumstances)
{
    Complaints complaints = JudgeEnding(with.scenario, ending, circumstances);
    const Tree found = bench.Look();
    const bool ended = !ending.killed && !ending.hung && ending.signal == 0;
    const bool succeeded = ended && ending.exit_code == 0;
    if (with.scenario.renames)
        AskOfBytes(found, with, complaints);
    else
        AskOfFiles(found, with, succeeded, complaints);
    AskOfRights(found, with, TellsOfLost(ending), complaints);
    if (succeeded)
        AskOfSuccess(with, ending, found, complaints);
    const std::optional<Report> report = ReportOf(ending.out);
    if (ended && report && !with.scenario.renames)
        AskOfWritten(*report, found, with, complaints);
    const std::string ours = FirstThatPasses(found, with);
    const bool may_stay = circumstances.tidying_failed ||
                          (with.scenario.renames && ending.exit_code != 0); // its journal
    if (ended && !ours.empty() && !may_stay)
        complaints.push_back({Kind::left_over, bench.Plain(ours) + " stays"});
    return complaints;
}

Complaints JudgeNextRun(const Workbench& bench, const Case& with, const Ending& former)
{
    Complaints complaints;
    const Ending ending = RunOnce(bench.LaunchOf(with.scenario));
    Tree found = bench.Look();
    bool well =
        ending.exit_code == 0 || (with.scenario.once && SameBytes(with.after, WithoutOurs(found)));
    if (!IsDone(with, WithoutOurs(found)) && with.scenario.renames && ending.exit_code == 1) {
        // A run may also say that there is one to be taken back first.
        well = RunOnce(bench.LaunchOf(with.scenario, {"undo-renames", "C:\\site"})).exit_code == 0;
        found = bench.Look();
    }
    Append(complaints, JudgeEnding(with.scenario, ending, {}));
    if (!IsDone(with, WithoutOurs(found)))
        complaints.push_back({Kind::unfinished, FirstDifference(with.after, WithoutOurs(found)) +
                                                    ", " + EndOf(ending)});
    else if (!well)
        complaints.push_back({Kind::unfinished, "all is there, but " + EndOf(ending)});
    if (const std::string ours = FirstOfOurs(found); !ours.empty())
        complaints.push_back({Kind::left_over, bench.Plain(ours) + " stays after the next run"});
    AskOfRights(found, with, TellsOfLost(former) || TellsOfLost(ending), complaints);
    return complaints;
}

Complaints JudgeUndoing(const Workbench& bench, const Case& with, const Ending& ending)
{
    const std::optional<Report> told = ReportOf(ending.out);
    if (ending.exit_code < 0 || !told || !told->tells_of_renames)
        return {};
    const std::string report = bench.Folder() + "/report.json";
    WriteWholeFile(report, ending.out);
    const Ending undoing =
        RunOnce(bench.LaunchOf(with.scenario, {"undo-renames", "C:\\site", "--report", report}));
    const std::string difference = FirstDifference(with.before, WithoutOurs(bench.Look()));
    if (difference.empty() && undoing.exit_code == 0)
        return {};
    return {{Kind::unfinished,
             "undone by its report: " + (difference.empty() ? EndOf(undoing) : difference)}};
}

Complaints JudgeUndoingLast(const Workbench& bench, const Case& with, const Ending& ending)
{
    // A run that could not record its renames for later has said so.
    if (ending.out.find("The old names are not kept") != std::string::npos)
        return {};
    const Ending undoing = RunOnce(bench.LaunchOf(with.scenario, {"undo-renames", "C:\\site"}));
    const Tree found = bench.Look();
    const std::string difference = FirstDifference(with.before, WithoutOurs(found));
    Complaints complaints;
    if (!difference.empty())
        complaints.push_back({Kind::unfinished, "undone: " + difference + ", " + EndOf(undoing)});
    if (const std::string ours = FirstOfOurs(found); !ours.empty())
        complaints.push_back({Kind::left_over, bench.Plain(ours) + " stays after undoing"});
    return complaints;
}

Complaints JudgeSources(const Case& with, const Tree& found, bool told_done)
{
    Complaints complaints;
    if (with.scenario.renames) {
        AskOfBytes(found, with, complaints);
        return complaints;
    }
    for (const Tree* const tree : {&with.before, &with.after})
        for (const auto& [path, entry] : *tree) {
            if (entry.kind == Entry::Kind::folder || CanBeMadeAgain(with.scenario, path))
                continue;
            const std::string what = WhatBecameOf(path, found, with);
            if (!what.empty())
                Append(complaints, {{Kind::loss, what}});
            else if (told_done && !IsLike(EntryOf(found, path), EntryOf(with.after, path)))
                Append(complaints, {{Kind::false_success, path + " is still old"}});
        }
    return complaints;
}

Complaints Judge(const Workbench& bench, const Case& with, const Ending& ending,
                 const Circumstances& circumstances)
{
    Complaints complaints = JudgeRun(bench, with, ending, circumstances);
    const bool reverses = with.scenario.renames && CommandOf(with.scenario) != "undo-renames";
    const Tree left = reverses ? bench.Look() : Tree();
    const Tree records = reverses ? bench.Records() : Tree();
    Append(complaints, JudgeNextRun(bench, with, ending));
    if (!reverses)
        return complaints;
    if (!ending.killed) {
        bench.Lay(left, records);
        Append(complaints, JudgeUndoing(bench, with, ending));
    }
    bench.Lay(left, records);
    Append(complaints, JudgeUndoingLast(bench, with, ending));
    return complaints;
}

Case MakeCase(const Workbench& bench, const Scenario& scenario, Complaints& complaints)
{
    Case made;
    made.scenario = scenario;
    bench.Lay(scenario.tree);
    for (const Arguments& arguments : scenario.prepare)
        if (RunOnce(bench.LaunchOf(scenario, arguments)).exit_code != 0)
            complaints.push_back({Kind::unfinished, "it cannot be prepared"});
    made.before = bench.Look();
    for (const auto& [path, entry] : scenario.edits)
        made.before[path] = entry;
    bench.LayBefore(made);
    const double start = SecondsNow();
    const Ending ending = RunOnce(bench.LaunchOf(scenario));
    made.seconds = SecondsNow() - start;
    made.after = bench.Look();
    made.out = ending.out;
    AskOfChanges(made, complaints);
    Append(complaints, Judge(bench, made, ending, {}));
    return made;
}

} // namespace kiv::faults
