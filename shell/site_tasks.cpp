#include "shell/site_tasks.h"

#include "exchange/web_address.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "shell/encoding_records.h"
#include "shell/encoding_words.h"
#include "shell/encodings.h"
#include "shell/feeds.h"
#include "shell/messages.h"
#include "shell/site_addresses.h"
#include "shell/site_adoption.h"
#include "shell/typed_folder.h"
#include "shell/uploads.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kiv {

namespace {

std::string CountedSources(std::size_t count)
{
    return Joined({std::to_string(count), count == 1 ? " source" : " sources"});
}

// Pages that become a site.

struct AdoptionFolders {
    std::string from;
    std::string to;
};

/// Throws RunError where no site can be made so.
AdoptionFolders FoldersOf(Workspace& workspace, const TaskAnswers& answers)
{
    Machine& machine = workspace.machine();
    AdoptionFolders folders{FolderOfTyped(machine, answers[0]), {}};
    folders.to = answers[1].empty() ? AdoptionTarget(folders.from, FolderOf(folders.from))
                                    : PathOfTyped(machine, answers[1]);
    RefuseTarget(machine.files, folders.from, folders.to);
    return folders;
}

std::string AdoptionFault(Workspace& workspace, const TaskAnswers& answers)
{
    if (answers[0].empty())
        return "Give the folder that the pages lie in.";
    try {
        FoldersOf(workspace, answers);
    } catch (const RunError& error) {
        return error.text;
    }
    return {};
}

void AdoptPages(Workspace& workspace, const TaskAnswers& answers)
{
    const AdoptionFolders folders = FoldersOf(workspace, answers);
    AdoptFolder(workspace.machine(), folders.from, folders.to);
    workspace.changethedirectory(folders.to);
}

// Another encoding.

constexpr auto kEncodings =
    std::to_array<std::string_view>({"UTF-8", "Windows-1252", "As before the last change"});

/// Nothing: the last change is to be taken back.
std::optional<Encoding> EncodingOf(const TaskAnswers& answers)
{
    if (answers[0] == kEncodings[2])
        return std::nullopt;
    return answers[0] == kEncodings[1] ? Encoding::windows1252 : Encoding::utf8;
}

TaskAnswers FirstEncoding(Workspace& /*workspace*/)
{
    return {std::string(kEncodings[0])};
}

TaskLook LookAtEncodingUndo(Workspace& workspace)
{
    EncodingRecord record(workspace.machine().files, workspace.RecordsFolder, ".");
    const std::optional<EncodingRun> last = record.Last();
    TaskLook look;
    look.is_possible = last.has_value();
    look.summary = "No change of the encoding is on record here, or it was taken back already.";
    if (!last)
        return look;
    for (const EncodedFile& file : last->files)
        look.lines.push_back(ShownPlace(Place{file.path}, workspace.WorkDir));
    look.summary = Joined({CountedSources(last->files.size()),
                           last->files.size() == 1 ? " gets back what it held before "
                                                   : " get back what they held before ",
                           NameOf(last->to), "."});
    return look;
}

TaskLook LookAtEncoding(Workspace& workspace, const TaskAnswers& answers)
{
    const std::optional<Encoding> to = EncodingOf(answers);
    if (!to)
        return LookAtEncodingUndo(workspace);
    const EncodingResult result = EncodeSite(workspace, *to, EncodingWork::dry_run);
    TaskLook look;
    for (const EncodingChange& change : result.changes)
        look.lines.push_back(ShownPlace(Place{change.path}, workspace.WorkDir) +
                             EncodingChangeWords(change));
    look.is_possible = !look.lines.empty();
    look.summary = Joined({std::to_string(look.lines.size()), " of ", CountedSources(result.all),
                           look.lines.size() == 1 ? " changes" : " change"});
    if (result.left > 0)
        Append(look.summary, {", ", std::to_string(result.left), " cannot: see the messages"});
    look.summary += '.';
    return look;
}

void ChangeEncoding(Workspace& workspace, const TaskAnswers& answers)
{
    if (const std::optional<Encoding> to = EncodingOf(answers))
        EncodeSite(workspace, *to, EncodingWork::change);
    else
        UndoEncoding(workspace);
}

// What needs the address of the site.

TaskAnswers KnownAddress(Workspace& workspace)
{
    return {SiteAddress(workspace)};
}

std::string AddressAnswerFault(Workspace& /*workspace*/, const TaskAnswers& answers)
{
    return answers[0].empty() ? "Give the address of the site." : BaseFault(answers[0]);
}

void WriteFeedFiles(Workspace& workspace, const TaskAnswers& answers)
{
    KeepSiteAddress(workspace, answers[0]);
    WriteFeeds(workspace, answers[0]);
}

void WriteSearchSiteMap(Workspace& workspace, const TaskAnswers& answers)
{
    KeepSiteAddress(workspace, answers[0]);
    WriteSiteMapXml(workspace, answers[0]);
}

// What goes to the server.

TaskLook LookAtUpload(Workspace& workspace, const TaskAnswers& /*answers*/)
{
    const UploadPlan plan = PlanUpload(workspace);
    TaskLook look;
    for (const std::string& name : plan.names)
        look.lines.push_back(FromUtf8(name));
    look.is_possible = !look.lines.empty();
    look.summary = look.is_possible
                       ? Joined({std::to_string(look.lines.size()), " of ",
                                 std::to_string(plan.all), " files to send by: ", plan.command})
                       : "Nothing to send: what the site has was sent as it is.";
    return look;
}

constexpr TaskQuestion::Kind kFolder = TaskQuestion::Kind::folder;

constexpr auto kAdoptionQuestions = std::to_array<TaskQuestion>({
    {"from", "Folder of the pages", "Its pages are read; nothing in it is changed", kFolder},
    {"to", "Folder of the new site",
     "One that is empty or not there yet; left empty, it is made beside the other one", kFolder},
});
constexpr auto kEncodingQuestions = std::to_array<TaskQuestion>({
    {"encoding", "Encoding", "The encoding that the sources of the site are to have",
     TaskQuestion::Kind::choice, kEncodings},
});
constexpr auto kAddressQuestions = std::to_array<TaskQuestion>({
    {"address", "Address of the site",
     "Where the folder is to be found, such as https://host.example/museum/"},
});

constexpr auto kTasks = std::to_array<SiteTask>({
    {.command = "adopt",
     .button = "Adopt",
     .explanation = "Makes a site of pages that are there already: a template, a page list and "
                    "what they need, so that a build gives back the pages. Without a folder of "
                    "its own, the new site goes into one beside the pages. That folder becomes "
                    "the current one.",
     .questions = kAdoptionQuestions,
     .fault = AdoptionFault,
     .run = AdoptPages},
    {.command = "encode",
     .button = "Change",
     .explanation = "Brings page lists, templates and what they include into another encoding. "
                    "The change can be taken back here.",
     .questions = kEncodingQuestions,
     .first_answers = FirstEncoding,
     .look = LookAtEncoding,
     .run = ChangeEncoding},
    {.command = "feed",
     .button = "Write",
     .explanation = "Writes rss.xml and atom.xml for feed readers: the news of the site, or its "
                    "newest pages.",
     .questions = kAddressQuestions,
     .first_answers = KnownAddress,
     .fault = AddressAnswerFault,
     .run = WriteFeedFiles},
    {.command = "sitemap-xml",
     .button = "Write",
     .explanation = "Writes sitemap.xml, which tells search engines of every page.",
     .questions = kAddressQuestions,
     .first_answers = KnownAddress,
     .fault = AddressAnswerFault,
     .run = WriteSearchSiteMap},
    {.command = "upload-changes",
     .button = "Upload",
     .explanation = "Sends the files of the site that have changed since they were sent last, by "
                    "the program that the upload list names for this directory.",
     .look = LookAtUpload,
     .run = [](Workspace& workspace, const TaskAnswers& /*answers*/) { Upload(workspace); }},
});

} // namespace

const SiteTask* FindSiteTask(std::string_view command)
{
    const auto* const found = std::ranges::find(kTasks, command, &SiteTask::command);
    return found == kTasks.end() ? nullptr : found;
}

} // namespace kiv
