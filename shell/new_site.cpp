#include "shell/new_site.h"

#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/folder_work.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "shell/new_site_lines.h"
#include "shell/new_site_plan.h"
#include "shell/new_site_texts.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <memory>
#include <utility>

namespace kiv {

namespace {

void RefuseFault(const NewSite& wanted)
{
    const std::string fault = wanted.section.empty() ? "" : SectionNameFault(wanted.section);
    if (!fault.empty())
        throw RunError(ErrorKind::invalid_argument,
                       Joined({"the section cannot be called \"", wanted.section, "\""}), {},
                       fault);
}

/// A file that holds just what was to be made is one of a run that was cut short, which may have
/// left it to the disk's good will.
void Keep(Files& files, const std::string& path, const std::string& text)
{
    if (files.Stamp(path).size == text.size() && files.ReadFile(path) == text)
        files.KeepSource(path, text);
}

/// A page that is there has no source in a list that is only made now: the next build would write
/// over it. `text` is the list's.
void RefusePagesThatAreThere(Files& files, const std::string& list, std::string_view text)
{
    constexpr std::string_view kPage = "@FILE = ";
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (!line.starts_with(kPage))
            continue;
        const std::string page =
            Joined({WithSeparator(FolderOf(list)), line.substr(kPage.size()), ".htm"});
        if (files.FileExists(page))
            throw RunError(ErrorKind::file,
                           Joined({"cannot begin a site here: ", page, " is there already"}),
                           {page, 0, {}},
                           "A build would write over it. Begin the site in a folder of its own, "
                           "or move the page out of the way first.");
    }
}

/// Parts the planned files into those that are there and those that can be made.
std::vector<std::pair<OutputFile, std::string>> Places(Files& files, const NewSitePlan& plan,
                                                       BegunSite& site)
{
    std::vector<std::pair<OutputFile, std::string>> places;
    for (const PlannedFile& file : plan.files) {
        std::string text = file.text;
        ReplaceEach(text, "\n", kCrLf);
        if (files.FileExists(file.path)) {
            Keep(files, file.path, text);
            site.kept.push_back(AbsolutePath(file.path, plan.folder));
        } else if (files.IsLink(file.path) && !files.FolderExists(file.path)) {
            Refuse("write", file.path, kLinkToNothing); // its end may lie in anybody's folder
        } else {
            if (file.path.ends_with(kPageListFile))
                RefusePagesThatAreThere(files, file.path, file.text);
            places.emplace_back(files.Open(file.path), std::move(text));
        }
    }
    return places;
}

std::string Counted(std::size_t count)
{
    return Joined({std::to_string(count), count == 1 ? " file" : " files"});
}

void MakeFiles(Machine& machine, const NewSitePlan& plan, BegunSite& site)
{
    // All places are found fit before anything is written.
    const auto places = Places(machine.files, plan, site);
    for (const auto& [place, text] : places) {
        machine.reporter.Status(Joined({"Begun but not finished: ", Counted(site.made.size()),
                                        " of ", std::to_string(places.size()), " made"}));
        machine.files.CommitSource(place, text, {Expectation::Kind::nothing});
        site.made.push_back(place.path);
    }
}

/// "_html.txt, news\_html.txt": paths as seen from the site.
std::string Listed(const std::vector<std::string>& paths, const std::string& folder)
{
    std::string list;
    for (const std::string_view path : paths)
        Append(list, {list.empty() ? "" : ", ",
                      path.starts_with(folder) ? path.substr(folder.size()) : path});
    return list;
}

void Tell(Reporter& reporter, const NewSitePlan& plan, const BegunSite& site)
{
    reporter.Status(site.made.empty() ? "Nothing made: all of it is there already"
                                      : Joined({Counted(site.made.size()), " made"}));
    if (!site.kept.empty())
        reporter.reportmsg(
            Joined({"There already, and left as it is: ", Listed(site.kept, plan.folder)}));
    for (const MissingLine& missing : site.missing_lines)
        reporter.reportmsg(Joined({"Please add this line: ", missing.line}), {missing.file, 0, {}},
                           missing.what_to_do);
}

} // namespace

BegunSite BeginSite(Machine& machine, std::string_view folder, const NewSite& wanted)
{
    RefuseFault(wanted);
    Files& files = machine.files;
    const std::string absolute = AbsolutePath(folder, files.CurrentDirectory());
    const NewSitePlan plan = PlanSite(files, absolute, wanted);
    for (const std::string& each : plan.folders)
        NeedFolder(files, AbsolutePath(each, absolute));
    const std::unique_ptr<FolderLock> lock = files.LockFolder(absolute);
    BegunSite site;
    if (plan.is_site)
        site.kept = {Joined({plan.folder, kPageListFile}), Joined({plan.folder, kTemplateFile})};
    MakeFiles(machine, plan, site);
    site.has_group = files.FileExists(plan.folder + std::string(kGroupFile));
    FindMissingLines(files, plan, site);
    FindUnmappedSections(files, plan, site);
    Tell(machine.reporter, plan, site);
    return site;
}

} // namespace kiv
