#include "shell/encodings.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "shell/encoding_records.h"
#include "shell/site_sources.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/text_key.h"

#include <memory>
#include <optional>
#include <utility>

namespace kiv {

namespace {

/// A source with its bytes before and after.
struct Change {
    std::string path;
    std::string old_bytes;
    std::string new_bytes;
};

std::string SourceCount(std::size_t count)
{
    return Joined({std::to_string(count), count == 1 ? " source" : " sources"});
}

/// "line 3", "lines 3, 8 and 2 more".
std::string LineList(const std::vector<int>& lines)
{
    constexpr std::size_t kMostNamed = 5;
    std::string text = lines.size() == 1 ? "line " : "lines ";
    for (std::size_t i = 0; i < lines.size() && i < kMostNamed; ++i)
        Append(text, {i == 0 ? "" : ", ", Decimal(lines[i])});
    if (lines.size() > kMostNamed)
        Append(text, {" and ", std::to_string(lines.size() - kMostNamed), " more"});
    return text;
}

/// Finds out what becomes of each source, and tells what does not.
class Planner {
  public:
    Planner(Machine& machine, Encoding to, const std::optional<EncodingRun>& last)
        : machine_(machine), to_(to), last_(last)
    {
    }

    void Look(const SiteSource& source)
    {
        std::string bytes = machine_.files.ReadFile(source.path);
        ++result.all;
        EncodedText text = Encoded(bytes, to_, source.kind);
        declares_ = declares_ || text.declares;
        if (std::optional<std::string> former = FormerBytes(source.path, bytes)) {
            result.changes.push_back({.path = source.path, .is_taken_back = true});
            changes.push_back({source.path, std::move(bytes), *std::move(former)});
            return;
        }
        if (!text.fault.empty())
            return TellFault(source.path, text);
        if (!text.kept_lines.empty())
            TellKeptLines(source.path, text);
        if (text.bytes == bytes)
            return;
        result.changes.push_back(
            {source.path, text.references, text.lost_mark, text.declarations, false});
        changes.push_back({source.path, std::move(bytes), std::move(text.bytes)});
    }

    /// A file that is not this site's alone.
    void LookOutside(const std::string& path)
    {
        const std::string bytes = machine_.files.ReadFile(path);
        const EncodedText text = Encoded(bytes, to_, {});
        if (text.fault.empty() && text.bytes == bytes)
            return;
        ++result.left;
        machine_.reporter.Withhold(
            "this file is put in, but lies elsewhere or is a link, and stays as it is", {path},
            "Change it by itself when all sites that use it are in one encoding.");
    }

    void TellUndeclared() const
    {
        if (declares_ || to_ != Encoding::utf8 || changes.empty())
            return;
        machine_.reporter.Withhold(
            "no source declares a character set, so browsers take the pages for Windows-1252", {},
            "Write <meta charset=\"utf-8\"> into the head of _template.txt.");
    }

    EncodingResult result;
    std::vector<Change> changes;

  private:
    std::optional<std::string> FormerBytes(const std::string& path, const std::string& bytes) const
    {
        if (!last_ || last_->to == to_)
            return std::nullopt;
        const EncodedFile* const file = last_->Find(path);
        if (file == nullptr || file->key != TextKey(bytes))
            return std::nullopt;
        return file->old_bytes;
    }

    void TellFault(const std::string& path, const EncodedText& text)
    {
        ++result.left;
        machine_.reporter.Withhold(Joined({text.fault, ", so it stays as it is"}),
                                   {path, text.fault_line, {}},
                                   Joined({"Save it as ", NameOf(to_), " in an editor."}));
    }

    void TellKeptLines(const std::string& path, const EncodedText& text)
    {
        machine_.reporter.Withhold(
            Joined({LineList(text.kept_lines),
                    text.kept_lines.size() == 1 ? " names a file" : " name files",
                    " beyond plain letters and stays in Windows-1252, as names are read"}),
            {path, text.kept_lines.front(), {}},
            "Give such files plain names (kiv-cli fix-names), and change the lines by hand.");
    }

    Machine& machine_;
    Encoding to_;
    const std::optional<EncodingRun>& last_;
    bool declares_ = false;
};

/// What is to be on record: the run, and what an earlier one of the same kind, perhaps cut short,
/// has changed and nobody since.
EncodingRun RunOf(Files& files, Encoding to, const std::vector<Change>& changes,
                  const std::optional<EncodingRun>& last)
{
    EncodingRun run{to, {}};
    for (const Change& change : changes)
        run.files.push_back({change.path, TextKey(change.new_bytes), change.old_bytes});
    if (!last || last->to != to)
        return run;
    for (const EncodedFile& file : last->files)
        if (run.Find(file.path) == nullptr && files.FileExists(file.path) &&
            TextKey(files.ReadFile(file.path)) == file.key)
            run.files.push_back(file);
    return run;
}

void Write(Workspace& workspace, EncodingRecord& record, const EncodingRun& run,
           const std::vector<Change>& changes)
{
    Machine& machine = workspace.machine();
    if (!record.IsKept())
        machine.reporter.reportmsg("The environment names no folder for records, so this cannot be "
                                   "taken back with \"undo-encode\".");
    record.Keep(run);
    int done = 0;
    for (const Change& change : changes) {
        machine.files.ReplaceSource(change.path, change.old_bytes, change.new_bytes);
        machine.reporter.Step(++done, static_cast<int>(changes.size()));
    }
}

std::string StatusText(const EncodingResult& result, Encoding to, EncodingWork work)
{
    std::size_t references = 0;
    for (const EncodingChange& change : result.changes)
        references += change.references;
    std::string text =
        Joined({SourceCount(result.changes.size()), " of ", std::to_string(result.all),
                work == EncodingWork::change ? " changed to " : " to change to ", NameOf(to)});
    if (references > 0)
        Append(text, {"; ", std::to_string(references),
                      references == 1 ? " character became a reference"
                                      : " characters became references"});
    if (result.left > 0)
        Append(text, {"; ", std::to_string(result.left), " left as they are"});
    return text;
}

} // namespace

EncodingResult EncodeSite(Workspace& workspace, Encoding to, EncodingWork work)
{
    Machine& machine = workspace.machine();
    const std::unique_ptr<FolderLock> lock =
        work == EncodingWork::change ? machine.files.LockFolder(".") : nullptr;
    const SiteSources sources = SourcesOf(workspace);
    if (sources.files.empty())
        throw RunError(ErrorKind::file, "there are no sources in " + workspace.WorkDir,
                       {workspace.WorkDir}, "Name the folder that has _html.txt.");
    EncodingRecord record(machine.files, workspace.RecordsFolder, ".");
    const std::optional<EncodingRun> last = record.Last();
    Planner planner(machine, to, last);
    for (const SiteSource& source : sources.files)
        planner.Look(source);
    for (const std::string& path : sources.outside)
        planner.LookOutside(path);
    planner.TellUndeclared();
    if (work == EncodingWork::change && !planner.changes.empty())
        Write(workspace, record, RunOf(machine.files, to, planner.changes, last), planner.changes);
    machine.reporter.Status(StatusText(planner.result, to, work));
    return std::move(planner.result);
}

void UndoEncoding(Workspace& workspace)
{
    Machine& machine = workspace.machine();
    const std::unique_ptr<FolderLock> lock = machine.files.LockFolder(".");
    EncodingRecord record(machine.files, workspace.RecordsFolder, ".");
    const std::optional<EncodingRun> last = record.Last();
    if (!last)
        throw RunError(ErrorKind::file, "there is nothing to take back in " + workspace.WorkDir,
                       {workspace.WorkDir});
    EncodingRun left{last->to, {}};
    std::size_t done = 0;
    for (const EncodedFile& file : last->files) {
        const std::string bytes =
            machine.files.FileExists(file.path) ? machine.files.ReadFile(file.path) : "";
        if (bytes == file.old_bytes)
            continue; // a run that was cut short did not come to it
        if (TextKey(bytes) != file.key) {
            machine.reporter.Withhold("this source was changed since, and stays as it is",
                                      {file.path});
            left.files.push_back(file);
            continue;
        }
        machine.files.ReplaceSource(file.path, bytes, file.old_bytes);
        ++done;
    }
    if (left.files.empty())
        record.Forget();
    else
        record.Keep(left);
    machine.reporter.Status(SourceCount(done) + " as before");
}

} // namespace kiv
