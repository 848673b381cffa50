#include "shell/rename_records.h"

#include "platform/drive_path.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/text_key.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kIsLink =
    ": it is a link. kiv records a renaming under this name; move the link away";
constexpr std::string_view kIsNoRecord =
    ": it is no record of renames. Move it away once the names in ";

// The first line, of a run and of its taking back; the folder stands in the second, and each
// further line has two names.
constexpr std::string_view kHead = "kiv renames 1";
constexpr std::string_view kUndoHead = "kiv renames back 1";
constexpr char kBetween = '\t';

/// What a name may hold and a line may not, and the mark that introduces it there.
struct Escape {
    std::string_view mark;
    std::string_view escape;
};
constexpr std::array<Escape, 4> kEscapes = {{
    {"\\", "\\\\"}, // first: the others put this mark in
    {"\t", "\\t"},
    {"\r", "\\r"},
    {"\n", "\\n"},
}};

/// A name on one line: line ends and tabs are allowed in names.
std::string Escaped(std::string_view name)
{
    std::string text(name);
    for (const Escape& each : kEscapes)
        ReplaceEach(text, each.mark, each.escape);
    return text;
}

std::string Unescaped(std::string_view text)
{
    std::string name;
    while (!text.empty()) {
        const auto* const found =
            std::find_if(kEscapes.begin(), kEscapes.end(),
                         [&](const Escape& each) { return text.starts_with(each.escape); });
        const bool is_escape = found != kEscapes.end();
        name.append(is_escape ? found->mark : text.substr(0, 1));
        text.remove_prefix(is_escape ? found->escape.size() : 1);
    }
    return name;
}

std::string RecordText(std::string_view folder, const UnfinishedRun& run)
{
    std::string text = Joined({run.is_undoing ? kUndoHead : kHead, kCrLf, Escaped(folder), kCrLf});
    for (const Rename& rename : run.renames)
        Append(text,
               {Escaped(rename.from), std::string_view(&kBetween, 1), Escaped(rename.to), kCrLf});
    return text;
}

/// A record as it was read.
struct ReadRecord {
    UnfinishedRun run;
    std::string folder;
};

/// None when the bytes are no record.
std::optional<ReadRecord> ParseRenameRecord(std::string_view bytes)
{
    ReadRecord record;
    if (Contains(bytes, std::string_view("\0", 1))) // which no name has
        return std::nullopt;
    const std::string_view head = bytes.empty() ? bytes : TakeLine(bytes);
    record.run.is_undoing = head == kUndoHead;
    if ((head != kHead && head != kUndoHead) || bytes.empty())
        return std::nullopt;
    record.folder = Unescaped(TakeLine(bytes));
    while (!bytes.empty()) {
        const std::vector<std::string_view> names = Split(TakeLine(bytes), kBetween);
        if (names.size() != 2)
            return std::nullopt;
        record.run.renames.push_back({Unescaped(names[0]), Unescaped(names[1])});
        const Rename& rename = record.run.renames.back();
        if (!FaultOfForm(rename.from).empty() || !FaultOfForm(rename.to).empty())
            return std::nullopt; // no renamer has written it
    }
    return record;
}

std::string JournalPath(const Files& files)
{
    return WithSeparator(files.CurrentDirectory()).append(kRenameJournalFile);
}

} // namespace

RenameRecord::RenameRecord(Machine& machine, const std::string& records_folder)
    : machine_(machine), records_folder_(records_folder), journal_(JournalPath(machine.files))
{
    if (machine.files.IsLink(journal_))
        throw RunError(ErrorKind::file, Joined({"cannot use ", journal_, kIsLink}), {journal_});
    if (!machine.files.FileExists(journal_))
        return;
    // A folder that has moved takes its journal along.
    std::optional<ReadRecord> record = ParseRenameRecord(machine.files.ReadFile(journal_));
    if (!record)
        throw RunError(ErrorKind::file,
                       Joined({"cannot read ", journal_, kIsNoRecord,
                               machine.files.CurrentDirectory(), " are as they should be"}),
                       {journal_});
    unfinished_ = former_ = std::move(record->run);
}

std::string RenameRecord::Folder()
{
    return machine_.files.RealFolder(machine_.files.CurrentDirectory());
}

std::string RenameRecord::RecordPath()
{
    // The second line of the record finds out when two folders have one key.
    return Joined({WithSeparator(records_folder_), TextKey(Folder()), ".txt"});
}

std::optional<Renames> RenameRecord::Last()
{
    Files& files = machine_.files;
    if (records_folder_.empty())
        return std::nullopt;
    const std::string path = RecordPath();
    if (!files.FileExists(path))
        return std::nullopt;
    std::optional<ReadRecord> record = ParseRenameRecord(files.ReadFile(path));
    const std::string& folder = files.CurrentDirectory();
    if (!record || record->run.is_undoing || record->folder != files.RealFolder(folder))
        throw RunError(ErrorKind::file,
                       Joined({"cannot read ", path, ": it is no record of renames. Those in ",
                               folder, " can be taken back by the report of their run alone"}),
                       {path},
                       "If you kept the JSON report of the renaming, give it with --report.");
    return std::move(record->run.renames);
}

void RenameRecord::Begin(UnfinishedRun run)
{
    const std::string text = RecordText(Folder(), run);
    machine_.files.WriteRecord(journal_, text);
    unfinished_ = std::move(run);
    if (!unfinished_->is_undoing && !unfinished_->renames.empty() && !records_folder_.empty())
        RecordForLater(text);
}

void RenameRecord::WriteLast(const std::string& text)
{
    MakeFolders(machine_.files, records_folder_);
    machine_.files.WriteRecord(RecordPath(), text);
}

void RenameRecord::RecordForLater(const std::string& text)
{
    if (!is_recorded_)
        former_last_ = BytesOfLast();
    is_recorded_ = true;
    try {
        WriteLast(text);
    } catch (const RunError& error) {
        if (!is_told_)
            TellNotKept(machine_.reporter, error.text);
        is_told_ = true;
        ReplaceLast(std::nullopt); // else an older run would be taken back
    }
}

std::optional<std::string> RenameRecord::BytesOfLast()
{
    try {
        const std::string path = RecordPath();
        if (machine_.files.FileExists(path))
            return machine_.files.ReadFile(path);
    } catch (const RunError&) {
        // What cannot be read now is of no use later.
    }
    return std::nullopt;
}

void RenameRecord::ReplaceLast(const std::optional<std::string>& bytes)
{
    try {
        if (bytes)
            machine_.files.WriteRecord(RecordPath(), *bytes);
        else
            machine_.files.DeleteFile(RecordPath());
    } catch (const RunError&) {
        // There is no other place for it.
    }
}

std::optional<Renames> RenameRecord::LastIfReadable()
{
    try {
        return Last();
    } catch (const RunError&) {
        return std::nullopt; // then nobody can take it back by this record either
    }
}

/// The last run was taken back, be it by a report that tells of more.
void RenameRecord::ForgetLast()
{
    const std::optional<Renames> last = LastIfReadable();
    if (last && AreAmong(*last, Reversed(unfinished_->renames)))
        machine_.files.DeleteFile(RecordPath());
}

/// False when what is left of an undoing can be kept nowhere but in the journal.
bool RenameRecord::KeepAsLast(const Renames& left)
{
    const std::optional<Renames> last = LastIfReadable();
    const bool was_cut_short = former_ && !former_->is_undoing;
    if (!was_cut_short && last && !AreAmong(*last, Reversed(unfinished_->renames)))
        return true; // another run is the last one: the report of this one is there
    try {
        if (records_folder_.empty())
            return !former_;
        WriteLast(RecordText(Folder(), {left}));
        return true;
    } catch (const RunError&) {
        return !former_; // else what was taken back is on record, or in a report, as it was
    }
}

void RenameRecord::Finish(const Renames& left)
{
    // The record first: without the journal it would be taken for that of a run that was not taken
    // back.
    if (!left.empty() && !KeepAsLast(left)) {
        GiveUp();
        return;
    }
    if (unfinished_->is_undoing && left.empty())
        ForgetLast();
    machine_.files.DeleteFile(journal_);
    unfinished_ = former_ = std::nullopt;
    is_recorded_ = false;
}

void RenameRecord::GiveUp()
{
    if (is_recorded_)
        ReplaceLast(former_last_);
    is_recorded_ = false;
    if (former_)
        machine_.files.WriteRecord(journal_, RecordText(Folder(), *former_));
    else
        machine_.files.DeleteFile(journal_);
    unfinished_ = former_;
}

namespace {

bool IsUndoJournal(Files& files, const std::string& journal)
{
    try {
        return files.ReadPart(journal, 0, kUndoHead.size()) == kUndoHead;
    } catch (const RunError&) {
        return false; // who may not read it is to hear of it all the same
    }
}

} // namespace

void TellNotKept(Reporter& reporter, std::string_view reason)
{
    reporter.reportmsg(Joined(
        {"The old names are not kept for \"undo-renames\", which will need the report of this run "
         "(--json > FILE): ",
         OnOneLine(reason)}));
}

void TellOfUnfinishedRenames(Machine& machine)
{
    Files& files = machine.files;
    const std::string journal = JournalPath(files);
    if (!files.FileExists(journal) || files.IsLink(journal)) // no run of ours has made a link
        return;
    const std::string folder = OnOneLine(files.CurrentDirectory());
    if (IsUndoJournal(files, journal))
        machine.reporter.reportmsg(
            Joined({"Undoing a renaming in ", folder,
                    " was cut short, so some files may still have their new names. Finish it with "
                    "\"kiv-cli undo-renames\"."}));
    else
        machine.reporter.reportmsg(
            Joined({"A renaming in ", folder,
                    " was cut short, so some files may still have their old names. Start it again "
                    "to finish it, or take it back with \"kiv-cli undo-renames\"."}));
}

} // namespace kiv
