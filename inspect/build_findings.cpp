// What the build itself has to say.
#include "blocks/dispatcher.h"
#include "builder/arguments.h"
#include "builder/cross_references.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/known_warnings.h"
#include "inspect/near_names.h"
#include "inspect/page_starts.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <optional>

namespace kiv {

namespace {

constexpr std::string_view kMissingStart = "Missing @@start";
constexpr std::string_view kNoFolder = "Illegal path: ";
constexpr std::string_view kOverSource = "\" is written over a source of this build: ";
constexpr std::string_view kOverSettings = "\" is written over a settings file of kiv: ";

/// An include that is not there, as a warning names it.
struct MissingInclude {
    std::string_view marks; // "++" or "+", before its name
    std::string_view name;
    std::string_view loss; // what comes of it
};

/// What stands between the two in `text`; none where it is another text.
std::optional<std::string_view> Between(std::string_view text, std::string_view begin,
                                        std::string_view end)
{
    if (text.size() < begin.size() + end.size() || !text.starts_with(begin) || !text.ends_with(end))
        return std::nullopt;
    return text.substr(begin.size(), text.size() - begin.size() - end.size());
}

std::optional<MissingInclude> IncludeOf(std::string_view warning)
{
    constexpr std::string_view kAborting = " not found... aborting";
    if (const auto name = Between(warning, "File: ", kAborting))
        return MissingInclude{"++", *name, "so pages have no frame"};
    if (const auto name = Between(warning, "File ", kAborting))
        return MissingInclude{"++", *name, "so the page list is not read on"};
    const auto line = Between(warning, "++ template", " Not found");
    if (!line)
        return std::nullopt;
    const std::string_view marks = line->starts_with("++") ? "++" : "+";
    return MissingInclude{marks, line->substr(std::min(marks.size(), line->size())),
                          "so its lines are left out"};
}

/// The name with its last part exchanged.
std::string WithLast(std::string_view name, std::string_view last)
{
    const std::size_t folders = name.find_last_of("/\\");
    return Joined({name.substr(0, folders == npos ? 0 : folders + 1), last});
}

/// What to write for the name of an include; "" when nothing is near.
std::string MeantInclude(const SiteView& site, const MissingInclude& include)
{
    const std::string_view name = Trim(include.name);
    const std::string path = AbsolutePath(name, site.folder);
    if (!name.empty() && site.files.FileExists(path))
        return Joined({"write \"", include.marks, name, "\", without blanks around the name"});
    if (!name.empty() && site.files.FolderExists(path))
        return Joined({"\"", name, "\" is a folder: name a file in it"});
    const std::vector<std::string> files = site.files.ListFiles(FolderOf(path), "*.*");
    const std::string_view near = NearestFileName(NameOf(path), files, NameKind::same_extension);
    return near.empty() ? std::string()
                        : Joined({"did you mean \"", include.marks, WithLast(name, near), "\"?"});
}

std::string WhatToDo(const SiteView& site, const MissingInclude& include)
{
    try {
        return MeantInclude(site, include);
    } catch (const RunError&) {
        return {}; // a folder that is not there, or that nobody may look into
    }
}

bool IsOverOthers(std::string_view text)
{
    return text.starts_with("The page \"") &&
           (Contains(text, kOverSource) || Contains(text, kOverSettings));
}

/// The text with the path at its end as one says it in the section's folder.
std::string InFolder(const SiteView& site, std::string text)
{
    const std::size_t folder = text.rfind(site.folder);
    return folder == npos ? text : text.erase(folder, site.folder.size());
}

/// Whether another finding tells the same, with what to do: "unclosed-bracket", "undefined-number",
/// "misspelled-tag", "stop-open", "missing-include" and the like.
bool HasFindingOfItsOwn(std::string_view text)
{
    return text == kMissingStart || text.starts_with(kNoBracketWarning) ||
           text.starts_with(kNoPageRefWarning) || text == kNoGroupRefWarning ||
           (text.starts_with('<') && text.ends_with(kUnknownTagWarning)) || IncludeOf(text) ||
           text.starts_with(kNoFolder) || IsOverOthers(text);
}

} // namespace

void FindBuildError(const SiteView& site, FindingSink& sink)
{
    if (site.error && !PageWithoutLines(site)) // "missing-title" says so
        sink.Add(site.error->where.View(), site.error->text, site.error->hint);
}

void FindBuildWarnings(const SiteView& site, FindingSink& sink)
{
    if (site.Lacks(kPageListFile) || site.Lacks(kTemplateFile))
        return; // "missing-list" says so
    for (const Warning& warning : site.warnings)
        if (!HasFindingOfItsOwn(warning.text))
            sink.Add(warning.where.View(), OneLine(warning.text),
                     warning.hint.empty() ? std::string(WhatToDoAbout(warning.text))
                                          : warning.hint);
}

void FindMissingIncludes(const SiteView& site, FindingSink& sink)
{
    for (const Warning& warning : site.warnings)
        if (const std::optional<MissingInclude> include = IncludeOf(warning.text))
            sink.Add(warning.where.View(),
                     Joined({"there is no file \"", include->name, "\", ", include->loss}),
                     WhatToDo(site, *include));
}

void FindNoOutputFolder(const SiteView& site, FindingSink& sink)
{
    for (const Warning& warning : site.warnings)
        if (const std::string_view text = warning.text; text.starts_with(kNoFolder))
            sink.Add(warning.where.View(),
                     Joined({"there is no folder \"", text.substr(kNoFolder.size()),
                             "\", so no page is written"}),
                     "make the folder, or name another one");
}

void FindPagesOverSources(const SiteView& site, FindingSink& sink)
{
    for (const Warning& warning : site.warnings)
        if (IsOverOthers(warning.text))
            sink.Add(warning.where.View(), InFolder(site, OneLine(warning.text)),
                     "give the page another name");
}

} // namespace kiv
