#include "shell/new_site_lines.h"

#include "platform/drive_path.h"
#include "platform/files.h"
#include "platform/site_files.h"
#include "shell/list_files.h"
#include "shell/new_site_plan.h"
#include "shell/new_site_texts.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "utilities/news_settings.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kSiteMapPlace = "<!--SITEMAPHERE-->";

/// A line that a template relies on.
struct Definition {
    std::string_view begin;
    std::string value;
    std::string_view what_to_do;
};

bool Holds(const std::vector<std::string>& paths, const std::string& path)
{
    return std::ranges::find(paths, path) != paths.end();
}

/// Whether a file was there before and does not hold a text.
bool LacksText(Files& files, const BegunSite& site, const std::string& path, std::string_view text)
{
    return Holds(site.kept, path) && !Contains(files.ReadFile(path), text);
}

void FindMissingMenuLine(Files& files, const NewSitePlan& plan, std::string_view folder,
                         BegunSite& site)
{
    const std::string path = Joined({plan.folder, kTemplateFile});
    if (!folder.empty() && LacksText(files, site, path, Joined({"\"", folder, "/"})))
        site.missing_lines.push_back({path, MenuLine(folder, TitleOfFolder(folder)),
                                      "Put it into the menu, so that visitors find the way."});
}

void FindMissingGroupLine(Files& files, const NewSitePlan& plan, std::string_view folder,
                          BegunSite& site)
{
    const std::string path = Joined({plan.folder, kGroupFile});
    const auto is_it = [&](const std::string& entry) {
        return EqualsNoCase(WithSeparator(entry), WithSeparator(folder));
    };
    if (!folder.empty() && std::ranges::none_of(ReadLines(files, path), is_it))
        site.missing_lines.push_back(
            {path, std::string(folder),
             "Put it at the end, so that a build of the group builds the folder, too."});
}

void FindMissingSiteMap(Files& files, const NewSitePlan& plan, BegunSite& site)
{
    const std::string path = Joined({plan.folder, kPageListFile});
    if (!plan.wanted.section.empty() && LacksText(files, site, path, kSiteMapPlace))
        site.missing_lines.push_back(
            {path, std::string(kSiteMapPlace),
             "Build once, then put it where a map of all sections is to stand."});
}

/// Finds the news among the composer's sites.
void FindNewsSite(Files& files, const NewSitePlan& plan, BegunSite& site)
{
    const auto is_it = [&](const SitePreset& preset) {
        return EqualsNoCase(preset.folder, plan.NewsFolder());
    };
    const std::vector<SitePreset> presets = ReadNewsSettings(files).presets;
    const auto found = std::ranges::find_if(presets, is_it);
    site.news_site = static_cast<std::size_t>(found - presets.begin()) + 1;
    site.lacks_news_site = found == presets.end();
    if (site.lacks_news_site)
        site.missing_lines.push_back(
            {std::string(kNewsSettingsFile), PresetLine(plan),
             "Put it at the end, so that the news composer knows the site."});
}

/// Finds a definition that a template made now needs, and a list of somebody's own lacks.
void FindMissingDefinition(Files& files, const NewSitePlan& plan, std::string_view folder,
                           const Definition& needed, BegunSite& site)
{
    const std::string below = folder.empty() ? plan.folder : Joined({plan.folder, folder, "\\"});
    const std::string list = Joined({below, kPageListFile});
    const std::string frame = Joined({below, kTemplateFile});
    if (Holds(site.kept, list) && Holds(site.made, frame) &&
        !Defined(files.ReadFile(list), needed.begin))
        site.missing_lines.push_back(
            {list, Joined({needed.begin, needed.value}), needed.what_to_do});
}

void FindMissingDefinitions(Files& files, const NewSitePlan& plan, BegunSite& site)
{
    const Definition name{kNameDefinition, plan.name,
                          "Put it above the first page: the new template shows it as the name of "
                          "the site."};
    FindMissingDefinition(files, plan, "", name, site);
    if (plan.wanted.has_news)
        FindMissingDefinition(files, plan, kNewsFolder, name, site);
    if (plan.wanted.section.empty())
        return;
    FindMissingDefinition(files, plan, plan.wanted.section, name, site);
    FindMissingDefinition(files, plan, plan.wanted.section,
                          {kSectionDefinition, TitleOfFolder(plan.wanted.section),
                           "Put it above the first page: the new template shows it as the name of "
                           "the section."},
                          site);
}

} // namespace

void FindMissingLines(Files& files, const NewSitePlan& plan, BegunSite& site)
{
    FindMissingDefinitions(files, plan, site);
    const std::string_view news = plan.wanted.has_news ? kNewsFolder : "";
    for (const std::string_view folder : {std::string_view(plan.wanted.section), news}) {
        FindMissingMenuLine(files, plan, folder, site);
        FindMissingGroupLine(files, plan, folder, site);
    }
    FindMissingSiteMap(files, plan, site);
    if (plan.wanted.has_news)
        FindNewsSite(files, plan, site);
}

void FindUnmappedSections(Files& files, const NewSitePlan& plan, BegunSite& site)
{
    const std::string list = Joined({plan.folder, kPageListFile});
    if (!site.has_group || !Contains(files.ReadFile(list), kSiteMapPlace))
        return;
    for (const std::string& entry : ReadLines(files, Joined({plan.folder, kGroupFile}))) {
        const std::string folder = AbsolutePath(entry, FolderOf(list));
        const std::string below = WithSeparator(folder);
        const bool is_news = entry == "news" || entry == "press"; // a map only links to these
        if (!entry.empty() && !is_news && files.FileExists(Joined({below, kPageListFile})) &&
            !files.FileExists(Joined({below, kSiteMapFile})))
            site.build_first.push_back(folder);
    }
}

} // namespace kiv
