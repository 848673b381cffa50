#include "shell/uploads.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "shell/sent_files.h"
#include "shell/site_outputs.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/text_key.h"
#include "text/windows1252.h"

#include <algorithm>
#include <set>

namespace kiv {

namespace {

constexpr std::string_view kPlace = "@@";

/// "1 file", "12 files".
std::string FileCount(std::size_t count)
{
    return Joined({std::to_string(count), count == 1 ? " file" : " files"});
}

[[noreturn]] void RefuseUpload(const std::string& text, const std::string& hint)
{
    throw RunError(ErrorKind::file, text, {std::string_view(kUploadListFile)}, hint);
}

void NeedCommand(Workspace& workspace)
{
    workspace.FindUploadEntry(); // a dry run has not
    if (!workspace.UploadListWanted)
        RefuseUpload(
            "the upload list has no line for " + workspace.WorkDir,
            Joined({"Add the line \"", workspace.WorkDir, "|command\" to ", kUploadListFile, "."}));
    if (Trim(workspace.UploadCommand).empty())
        RefuseUpload("the upload list has no command for " + workspace.WorkDir,
                     Joined({"Write it behind the \"|\" in ", kUploadListFile, "."}));
}

/// A file as the upload calls it: from the folder on, "/" between its parts, or its whole path.
std::string UploadName(NativePaths& paths, const std::string& path, const std::string& folder)
{
    if (!UpperCase(path).starts_with(UpperCase(folder)))
        return paths.ToNative(path);
    std::string name = ToUtf8(path.substr(folder.size()));
    std::ranges::replace(name, '\\', '/');
    return name.starts_with('-') ? "./" + name : name; // else a program takes it for an option
}

void TellOfPages(Reporter& reporter, const std::vector<std::string>& pages, std::string_view what)
{
    if (!pages.empty())
        reporter.Withhold(
            Joined({what, ": ", std::to_string(pages.size()),
                    pages.size() == 1 ? " page" : " pages", ", the first is ", pages.front()}),
            {}, "Build the site first, then start upload again.");
}

bool HasControls(std::string_view name)
{
    return std::ranges::any_of(name, [](char c) { return static_cast<unsigned char>(c) < ' '; });
}

/// Counts the quotes before a place: within them a word needs no others.
bool IsInQuotes(std::string_view before)
{
    return std::ranges::count(before, '"') % 2 != 0;
}

/// What is left to send of the files, and what is on record besides.
UploadPlan PlanOf(Workspace& workspace, const SiteOutputs& outputs, const SentFiles& sent)
{
    Machine& machine = workspace.machine();
    const std::string folder = WithSeparator(AbsolutePath(".", machine.files.CurrentDirectory()));
    UploadPlan plan;
    plan.command = workspace.UploadCommand;
    std::set<std::string> names;
    for (const std::string& path : outputs.files) {
        const std::string name = UploadName(machine.native_paths, path, folder);
        if (name.empty() || HasControls(name)) {
            machine.reporter.Withhold("a file with such a name cannot be sent: " + path);
            continue;
        }
        names.insert(name);
        const std::string key = TextKey(machine.files.ReadFile(path));
        if (sent.Holds(name, key))
            continue;
        plan.names.push_back(name);
        plan.keys.push_back(key);
    }
    plan.all = names.size();
    for (const auto& [name, key] : sent.All())
        if (!names.contains(name))
            plan.gone.push_back(name);
    return plan;
}

SentFiles RecordOf(Workspace& workspace)
{
    return {workspace.machine().files, workspace.RecordsFolder, ".", workspace.UploadCommand};
}

UploadPlan Plan(Workspace& workspace, const SentFiles& sent)
{
    const SiteOutputs outputs = OutputsOf(workspace);
    Reporter& reporter = workspace.machine().reporter;
    TellOfPages(reporter, outputs.absent, "not built yet");
    TellOfPages(reporter, outputs.stale, "not what the sources would make now");
    return PlanOf(workspace, outputs, sent);
}

/// Runs the program when `done` of `all` files have been sent by it; 0 of 0: it sends all of them.
/// Meanwhile the face stays alive, and its user can end it.
int RunUpload(Machine& machine, const std::string& command, std::string_view input, int done,
              int all)
{
    return machine.programs.Run({.command = command}, input,
                                [&machine, done, all] { machine.reporter.Wait(done, all); });
}

/// How it went on before a program failed: for the next time.
[[noreturn]] void RefuseFailed(int code, std::size_t arrived, std::size_t left)
{
    throw RunError(
        ErrorKind::file,
        Joined({"the upload program ended with code ", Decimal(code), "; ", FileCount(arrived),
                " sent, ", std::to_string(left), " left"}),
        {},
        "Start upload again: it goes on with what is left. To read what the program says, "
        "start \"kiv-cli upload\" in a terminal.");
}

void SendAtOnce(Workspace& workspace, const UploadPlan& plan, SentFiles& sent)
{
    std::string names;
    for (const std::string& name : plan.names)
        Append(names, {name, "\n"});
    Machine& machine = workspace.machine();
    machine.reporter.Status(
        Joined({FileCount(plan.names.size()), " to send, waiting for: ", plan.command}));
    const int code = RunUpload(machine, plan.command, names, 0, 0);
    if (code != 0)
        RefuseFailed(code, 0, plan.names.size());
    for (std::size_t i = 0; i < plan.names.size(); ++i)
        sent.Note(plan.names[i], plan.keys[i]);
    sent.Keep();
}

void SendEach(Workspace& workspace, const UploadPlan& plan, SentFiles& sent)
{
    Machine& machine = workspace.machine();
    const std::size_t count = plan.names.size();
    const int all = static_cast<int>(count);
    for (std::size_t i = 0; i < count; ++i) {
        const int done = static_cast<int>(i);
        machine.reporter.Status(FromUtf8(plan.names[i]));
        const std::string line = UploadLine(plan.command, FromUtf8(plan.names[i]));
        if (const int code = RunUpload(machine, line, "", done, all); code != 0)
            RefuseFailed(code, i, count - i);
        sent.Note(plan.names[i], plan.keys[i]);
        sent.Keep();
        machine.reporter.Step(done + 1, all);
    }
}

void TellOfGone(Reporter& reporter, const UploadPlan& plan)
{
    if (!plan.gone.empty())
        reporter.Withhold(Joined({FileCount(plan.gone.size()),
                                  " that went to the server once and that the site has no more, "
                                  "the first is ",
                                  FromUtf8(plan.gone.front())}),
                          {}, "Nothing is ever deleted there: do it by hand.");
}

} // namespace

bool RunsForEachFile(std::string_view command)
{
    return Contains(command, kPlace);
}

std::string UploadLine(std::string_view command, std::string_view name)
{
    std::string escaped(name);
    ReplaceEach(escaped, "\"", "\\\"");
    const bool needs_quotes = name.find_first_of(" \t\"") != npos;
    std::string line;
    while (!command.empty()) {
        const std::size_t at = std::min(command.find(kPlace), command.size());
        line.append(command.substr(0, at));
        if (at == command.size())
            break;
        const std::string_view quote = needs_quotes && !IsInQuotes(line) ? "\"" : "";
        Append(line, {quote, escaped, quote});
        command.remove_prefix(at + kPlace.size());
    }
    return line;
}

UploadPlan PlanUpload(Workspace& workspace)
{
    NeedCommand(workspace);
    UploadPlan plan = Plan(workspace, RecordOf(workspace));
    TellOfGone(workspace.machine().reporter, plan);
    workspace.machine().reporter.Status(
        Joined({FileCount(plan.names.size()), " of ", std::to_string(plan.all), " to send"}));
    return plan;
}

void Upload(Workspace& workspace)
{
    NeedCommand(workspace);
    Machine& machine = workspace.machine();
    if (!machine.programs.Finds(workspace.UploadCommand))
        RefuseUpload("there is no such program: " + workspace.UploadCommand,
                     Joined({"Install it, or name another one in ", kUploadListFile, "."}));
    SentFiles sent = RecordOf(workspace);
    const UploadPlan plan = Plan(workspace, sent);
    TellOfGone(machine.reporter, plan);
    for (const std::string& name : plan.gone)
        sent.Forget(name);
    if (plan.names.empty()) {
        machine.reporter.Status(Joined({"Nothing to send: ", FileCount(plan.all), " on record"}));
        if (!plan.gone.empty())
            sent.Keep();
        return;
    }
    if (RunsForEachFile(plan.command))
        SendEach(workspace, plan, sent);
    else
        SendAtOnce(workspace, plan, sent);
    machine.reporter.Status(FileCount(plan.names.size()) + " sent");
}

std::vector<std::string> UploadLines(const UploadPlan& plan)
{
    if (plan.names.empty())
        return {};
    if (!RunsForEachFile(plan.command))
        return {plan.command};
    std::vector<std::string> lines;
    for (const std::string& name : plan.names)
        lines.push_back(UploadLine(plan.command, FromUtf8(name)));
    return lines;
}

std::string PlanText(const UploadPlan& plan)
{
    std::string text;
    for (const std::string& line : UploadLines(plan))
        Append(text, {ToUtf8(line), "\n"});
    if (!RunsForEachFile(plan.command))
        for (const std::string& name : plan.names)
            Append(text, {"  ", name, "\n"});
    return text;
}

} // namespace kiv
