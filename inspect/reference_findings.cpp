// References to pages and groups that are not there, and constructs without their end.
#include "builder/page_list_parser.h"
#include "builder/text_helpers.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kIdMark = "ID:";
constexpr std::string_view kExtensions[] = {"", ".htm", ".html", ".asp"};

using Names = std::set<std::string, std::less<>>;

/// What references are compared with.
struct PageNames {
    Names stems;
    Names files; // without their folders
    Names ids;
    Names groups;             // a page without one is a group of its own, called as its stem
    bool has_waiting = false; // pages that this build leaves out, with ids and groups of their own
};

/// Returns the file's stem.
std::string AddFile(PageNames& names, std::string file)
{
    std::string stem = FileStem(file);
    names.stems.insert(stem);
    names.files.insert(std::move(file));
    return stem;
}

/// Adds the pages of stretches that are not read, such as New Year text that is off.
void AddWaiting(PageNames& names, const SourceText& source)
{
    for (std::size_t index = 0; index < source.lines.size(); ++index) {
        const std::string_view line = source.lines[index];
        if (source.PartsOf(index).IsRead() || !StartsWithNoCase(line, kPageStart))
            continue;
        names.has_waiting = true;
        AddFile(names, std::string(Trim(FromChar(line, kPageStart.size() + 2))));
    }
}

PageNames NamesOf(const SiteView& site)
{
    PageNames names;
    for (const PageText& page : site.pages) {
        const std::string stem = AddFile(names, page.name);
        names.groups.insert(page.group.empty() ? stem : page.group);
        if (!page.id.empty())
            names.ids.insert(page.id);
    }
    for (const SourceText& source : site.sources)
        if (source.IsOfPageList())
            AddWaiting(names, source);
    return names;
}

/// The name that was most likely meant; "": none is near.
std::string NearestOf(std::string_view name, const Names& names)
{
    const std::vector<std::string_view> words(names.begin(), names.end());
    return std::string(Nearest(name, words));
}

std::string_view WithoutFolders(std::string_view name)
{
    const std::size_t folders = name.find_last_of("/\\");
    return folders == npos ? name : name.substr(folders + 1);
}

/// One reference, looked at.
class ReferenceCheck {
  public:
    ReferenceCheck(const SiteView& site, const PageNames& pages, const ConstructUse& use,
                   FindingSink& sink)
        : site_(site), pages_(pages), use_(use), sink_(sink)
    {
    }

    void Run()
    {
        std::string_view arguments = FromChar(use_.text, use_.name.size() + 2);
        arguments.remove_suffix(1); // the "]"
        const std::vector<std::string_view> fields = Split(arguments, '|');
        if (use_.name.starts_with("??")) {
            if (!fields.empty())
                CheckPage(fields[0], true);
        } else if (fields.size() > 1) {
            CheckGroup(fields[0]);
            CheckPage(fields[1], fields[0].ends_with('*'));
        }
    }

  private:
    void Add(std::string text, std::string suggestion)
    {
        sink_.Add(site_.PlaceOf(use_), std::move(text), std::move(suggestion));
    }

    void CheckGroup(std::string_view group)
    {
        if (group.empty() || pages_.has_waiting)
            return;
        if (!group.ends_with('*')) {
            if (!pages_.groups.contains(group))
                Add(Joined({"no page is in a group \"", group, "\""}),
                    DidYouMean(NearestOf(group, pages_.groups)));
            return;
        }
        group.remove_suffix(1);
        const bool is_there = std::ranges::any_of(
            pages_.groups, [&](const std::string& known) { return known.starts_with(group); });
        if (!is_there)
            Add(Joined({"no page is in a group that begins with \"", group, "\""}), {});
    }

    void CheckId(std::string_view id)
    {
        if (pages_.ids.contains(id) || pages_.has_waiting)
            return;
        const std::string near = NearestOf(id, pages_.ids);
        Add(Joined({"no page has the id \"", id, "\""}),
            DidYouMean(near.empty() ? "" : Joined({kIdMark, near})));
    }

    void CheckPage(std::string_view field, bool may_have_extension)
    {
        if (StartsWithNoCase(field, kIdMark))
            return CheckId(FromChar(field, kIdMark.size() + 1));
        const bool is_file = pages_.files.contains(field);
        if (field.empty() || pages_.stems.contains(field) || (is_file && may_have_extension))
            return;
        const std::string_view file = WithoutFolders(field);
        const std::string_view stem = Before(file, '.');
        if (is_file)
            return Add(Joined({"\"", field,
                               "\" is never taken for this page: behind a group without \"*\" a "
                               "page is named without its extension"}),
                       Joined({"write \"", stem, "\""}));
        if (file != field) {
            if (pages_.stems.contains(file) || pages_.files.contains(file))
                Add(Joined({"\"", field,
                            "\" is never taken for this page: its folder does not count"}),
                    Joined({"write \"", file, "\""}));
            return; // it points out of the section
        }
        if (!LeadsElsewhere(field))
            Add(Joined({"no page is called \"", field, "\""}), DidYouMean(NearestPage(field)));
    }

    std::string NearestPage(std::string_view field) const
    {
        const std::string_view stem = Before(field, '.');
        if (pages_.stems.contains(stem))
            return std::string(stem);
        const std::string near = NearestOf(stem, pages_.stems);
        return near.empty() ? NearestOf(field, pages_.files) : near;
    }

    /// A field is the target of a link as well, which may be an address or a file that no build
    /// makes.
    bool LeadsElsewhere(std::string_view field) const
    {
        if (field.find_first_of(":#?@<&") != npos)
            return true;
        const bool differs_in_case = std::ranges::any_of(
            pages_.stems, [&](const std::string& stem) { return EqualsNoCase(stem, field); });
        return !differs_in_case &&
               std::ranges::any_of(kExtensions, [&](std::string_view extension) {
                   return site_.files.FileExists(Joined({site_.folder, field, extension}));
               });
    }

    const SiteView& site_;
    const PageNames& pages_;
    const ConstructUse& use_;
    FindingSink& sink_;
};

} // namespace

/// A build that ended early does not know every page.
void FindUnknownReferences(const SiteView& site, FindingSink& sink)
{
    if (site.IsCutShort())
        return;
    const PageNames pages = NamesOf(site);
    for (const ConstructUse& use : site.references)
        ReferenceCheck(site, pages, use, sink).Run();
}

namespace {

/// Whether the construct is a definition inside a page: such a line is text of the page as well.
bool IsDefinitionOnPage(const SiteView& site, const ConstructUse& use)
{
    return use.brought_by.empty() &&
           std::ranges::any_of(site.definitions, [&](const NumberDefinition& definition) {
               return definition.mark == use.name && definition.lines == use.lines;
           });
}

void AddUnclosed(const SiteView& site, const ConstructUse& use, FindingSink& sink)
{
    const Place where = site.PlaceOf(use);
    if (IsDefinitionOnPage(site, use))
        return sink.Add(where,
                        Joined({"the definition of ", use.name,
                                " stands on a page, where it is text and a use without its end"}),
                        "move it above the first page");
    if (use.name.starts_with("[["))
        return sink.Add(where, Joined({"the wrapper ", use.name, " has no end on its page"}),
                        "end it by a line that holds nothing but ]]");
    sink.Add(where, Joined({use.name, "[ has no \"]\" in its line"}),
             "put a \"]\" behind its last field");
}

} // namespace

void FindUnclosedBrackets(const SiteView& site, FindingSink& sink)
{
    for (const ConstructUse& use : site.unclosed)
        AddUnclosed(site, use, sink);
    for (const ConstructUse& use : site.unopened)
        sink.Add(site.PlaceOf(use), "\"]]\" ends no wrapper: none is open on this page");
}

} // namespace kiv
