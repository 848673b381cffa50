#include "shell/new_site_plan.h"

#include "platform/drive_path.h"
#include "platform/files.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "shell/new_site_texts.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"
#include "utilities/news_composer.h"
#include "utilities/news_settings.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

constexpr std::string_view kLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

/// Of a file or a folder, on all usual systems.
constexpr std::size_t kLongestName = 255;

/// Whether Windows takes a name, which has no extension, for a device.
bool IsDevice(std::string_view name)
{
    constexpr std::string_view kDevices[] = {"con", "prn", "aux", "nul"};
    const auto is_it = [&](std::string_view device) { return EqualsNoCase(name, device); };
    const bool is_port = StartsWithNoCase(name, "com") || StartsWithNoCase(name, "lpt");
    return std::ranges::any_of(kDevices, is_it) ||
           (is_port && name.size() == 4 && name[3] >= '0' && name[3] <= '9');
}

bool IsMadeOf(std::string_view text, std::string_view characters)
{
    return text.find_first_not_of(characters) == npos;
}

/// What a site is called before its owner has said so: its folder, where that is plain enough.
std::string LabelOfSite(std::string_view folder)
{
    const std::string name = ThisDirNameOf(folder);
    const bool is_plain = !name.empty() && IsMadeOf(name, Joined({kLetters, "-_ "}));
    return is_plain ? TitleOfFolder(name) : "My site";
}

std::string ContentOf(Files& files, const std::string& path)
{
    return files.FileExists(path) ? files.ReadFile(path) : "";
}

/// What the pages call the site: what its own list says, where the template shows that as a title.
std::string NameOfSite(Files& files, const NewSitePlan& plan)
{
    const std::string frame = plan.folder + std::string(kTemplateFile);
    const std::optional<std::string> name =
        Defined(ContentOf(files, plan.folder + std::string(kPageListFile)), kNameDefinition);
    const bool is_shown =
        !files.FileExists(frame) || Contains(files.ReadFile(frame), "@@1</title>");
    return name && is_shown && !Contains(*name, "@@") ? *name : plan.label;
}

/// A template for a further section, in the character set of the site's own.
std::string InSitesCharset(Files& files, const NewSitePlan& plan, std::string_view text)
{
    constexpr std::string_view kCharset = "charset=";
    const std::string frame = ContentOf(files, plan.folder + std::string(kTemplateFile));
    std::string made(text);
    if (const std::size_t at = FindNoCase(frame, kCharset); at != npos) {
        std::string_view charset = std::string_view(frame).substr(at + kCharset.size());
        charset.remove_prefix(std::min(charset.find_first_not_of("\"'"), charset.size()));
        charset = charset.substr(0, charset.find_first_not_of(Joined({kLetters, "-_"})));
        if (!charset.empty())
            ReplaceEach(made, kNewCharset, charset);
    }
    return made;
}

std::string MenuOf(const NewSite& wanted)
{
    std::string menu;
    if (!wanted.section.empty())
        Append(menu, {MenuLine(wanted.section, TitleOfFolder(wanted.section)), "\n"});
    if (wanted.has_news)
        Append(menu, {MenuLine(kNewsFolder, TitleOfFolder(kNewsFolder)), "\n"});
    return menu;
}

/// The composer's list; the scratch site is there without it, and so it stays.
std::string PresetsText(const NewSitePlan& plan)
{
    return Joined({";label|folder|tag|reminder|home folder|highlight\n", PresetLine(plan), "\n",
                   "Scratch|C:\\temp\\||||\n"});
}

/// What a build will make of a list that is made now. A list of somebody's own gets none.
void PlanSiteMap(Files& files, NewSitePlan& plan, std::string_view below, std::string text)
{
    if (!files.FileExists(Joined({plan.folder, below, kPageListFile})))
        plan.Add(Joined({below, kSiteMapFile}), std::move(text));
}

void PlanSection(Files& files, NewSitePlan& plan)
{
    const std::string& section = plan.wanted.section;
    const std::string title = TitleOfFolder(section);
    const std::string below = section + "\\";
    plan.folders.push_back(plan.folder + section);
    plan.Add(Joined({below, kTemplateFile}), InSitesCharset(files, plan, kSectionTemplate));
    PlanSiteMap(files, plan, below, SectionSiteMapText(title));
    plan.Add(Joined({below, kPageListFile}), SectionPageListText(plan.name, title));
}

void PlanNews(Files& files, NewSitePlan& plan)
{
    (void)ReadNewsSettings(files); // throws what is wrong with it before anything is made
    const std::string below = Joined({kNewsFolder, "\\"});
    plan.folders.push_back(plan.NewsFolder());
    plan.folders.push_back(plan.NewsFolder() + std::string(kNewsArticleFolder));
    plan.folders.emplace_back(FolderOf(kNewsSettingsFile));
    plan.Add(Joined({below, kTemplateFile}), InSitesCharset(files, plan, kNewsTemplate));
    plan.Add(Joined({below, kPageListFile}), NewsPageListText(plan.name));
    plan.files.push_back({std::string(kNewsSettingsFile), PresetsText(plan)});
}

std::string GroupText(const NewSite& wanted)
{
    std::string group;
    if (!wanted.section.empty())
        Append(group, {wanted.section, "\n"});
    if (wanted.has_news)
        Append(group, {kNewsFolder, "\n"});
    return group;
}

void PlanSections(Files& files, NewSitePlan& plan)
{
    if (!plan.wanted.section.empty())
        PlanSection(files, plan);
    if (plan.wanted.has_news)
        PlanNews(files, plan);
    plan.Add(kGroupFile, GroupText(plan.wanted));
}

void PlanPages(Files& files, NewSitePlan& plan)
{
    const bool has_site_map = !plan.wanted.section.empty();
    plan.Add(kNewPictureFile, std::string(kNewPicture));
    plan.Add(kTemplateFile, NewTemplateText(MenuOf(plan.wanted)));
    if (has_site_map)
        PlanSiteMap(files, plan, "", NewSiteMapText());
    plan.Add(kPageListFile, NewPageListText(plan.name, has_site_map));
}

} // namespace

void NewSitePlan::Add(std::string_view file, std::string text)
{
    files.push_back({Joined({folder, file}), std::move(text)});
}

std::string NewSitePlan::NewsFolder() const
{
    return Joined({folder, kNewsFolder, "\\"});
}

std::optional<std::string> Defined(std::string_view page_list, std::string_view definition)
{
    std::optional<std::string> value;
    while (!page_list.empty())
        if (const std::string_view line = TakeLine(page_list); line.starts_with(definition))
            value = line.substr(definition.size());
    return value;
}

std::string TitleOfFolder(std::string_view folder)
{
    std::string title(folder);
    std::ranges::replace(title, '-', ' ');
    std::ranges::replace(title, '_', ' ');
    return UpperCase(FirstChars(title, 1)).append(FromChar(title, 2));
}

std::string PresetLine(const NewSitePlan& plan)
{
    if (plan.folder.find_first_of("|\r\n") != npos)
        throw RunError(
            ErrorKind::invalid_argument,
            Joined({"the list of news sites cannot hold the folder ", OnOneLine(plan.folder)}), {},
            "In that list \"|\" separates the fields and a line end the sites: give the "
            "folder a name without them.");
    return Joined({plan.label, "|", plan.NewsFolder(),
                   "||Names: pr, then month, day and year, such as pr030504||"});
}

std::string SectionNameFault(std::string_view name)
{
    if (name.empty() || !IsMadeOf(name, Joined({kLetters, "-_"})))
        return "The name is a part of addresses: take letters from A to Z, digits, \"-\" and "
               "\"_\".";
    if (name.front() == '-' || name.front() == '_')
        return "A name that begins with \"-\" or \"_\" is taken for an option, or for a file of "
               "kiv's own: begin it with a letter or a digit.";
    if (name.size() > kLongestName)
        return "The name is too long: take at most 255 characters.";
    if (IsDevice(name))
        return "Windows keeps this name for a device: take another one.";
    if (EqualsNoCase(name, "news") || EqualsNoCase(name, "press"))
        return "A site map takes this name for the news: take another one, or --news.";
    return "";
}

NewSitePlan PlanSite(Files& files, const std::string& folder, const NewSite& wanted)
{
    NewSitePlan plan{WithSeparator(folder), wanted, LabelOfSite(folder), {}, false, {folder}, {}};
    plan.name = NameOfSite(files, plan);
    plan.is_site = files.FileExists(plan.folder + std::string(kPageListFile)) &&
                   files.FileExists(plan.folder + std::string(kTemplateFile));
    if (!plan.is_site || plan.HasSections())
        plan.Add(kNewStyleSheetFile, std::string(kNewStyleSheet));
    if (plan.HasSections())
        PlanSections(files, plan);
    if (!plan.is_site)
        PlanPages(files, plan);
    return plan;
}

} // namespace kiv
