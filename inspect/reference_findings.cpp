// References to pages and groups that are not there, and constructs without their end.
#include "builder/cross_references.h"
#include "builder/page_list_parser.h"
#include "builder/text_helpers.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/page_links.h"
#include "inspect/stale_pages.h"
#include "platform/drive_path.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kIdDirective = "@ID =";
constexpr std::string_view kGroupDirective = "@GROUP =";
constexpr std::string_view kExtensions[] = {"", ".htm", ".html", ".asp"};

using Names = std::set<std::string, std::less<>>;

/// What references are compared with.
struct PageNames {
    Names stems;
    Names files; // without their folders
    Names ids;
    Names groups;            // a page without one is a group of its own, called as its stem
    Names stale;             // files on the disk that a former page list has left
    bool has_unread = false; // includes that nobody has read
};

/// Returns the file's stem.
std::string AddFile(PageNames& names, std::string file)
{
    std::string stem = FileStem(file);
    names.stems.insert(stem);
    names.files.insert(std::move(file));
    return stem;
}

/// What the directive says, which stands from the second character behind it on.
std::string ValueOf(std::string_view line, std::string_view directive)
{
    return std::string(FromChar(line, directive.size() + 2));
}

/// The file that a line "@FILE =" names.
std::string NameIn(std::string_view line)
{
    return std::string(Trim(ValueOf(line, kPageStart)));
}

/// Adds the pages of stretches that are not read, such as New Year text that is off.
void AddWaiting(PageNames& names, const SourceText& source)
{
    for (std::size_t index = 0; index < source.lines.size(); ++index) {
        const std::string_view line = source.lines[index];
        if (source.PartsOf(index).IsRead())
            continue;
        if (StartsWithNoCase(line, kPageStart))
            names.groups.insert(AddFile(names, NameIn(line)));
        else if (StartsWithNoCase(line, kIdDirective))
            names.ids.insert(ValueOf(line, kIdDirective));
        else if (StartsWithNoCase(line, kGroupDirective))
            names.groups.insert(ValueOf(line, kGroupDirective));
    }
}

/// Whether a stretch that is not read names a file, whose pages nobody knows.
bool HasUnreadInclude(const SiteView& site)
{
    return std::ranges::any_of(site.skipped, [&](const SkippedLines& stretch) {
        const SourceText& source = site.sources[stretch.lines.source];
        for (int line = stretch.lines.first; line <= stretch.lines.last; ++line)
            if (source.Line(line).starts_with("++"))
                return true;
        return false;
    });
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
    // Of two pages that are one file the second alone is known as a page.
    for (const PageTwice& twice : site.twice)
        AddFile(names, NameIn(site.sources[twice.first.source].Line(twice.first.first)));
    for (const SourceText& source : site.sources)
        if (source.IsOfPageList())
            AddWaiting(names, source);
    for (const std::string& path : StalePages(site))
        names.stale.insert(std::string(NameOf(path)));
    names.has_unread = HasUnreadInclude(site);
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
        if (group.empty() || pages_.has_unread)
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
        // An empty one is that of a page that has none.
        if (id.empty() || pages_.ids.contains(id) || pages_.has_unread)
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
        if (const std::string stale = StaleFile(field); !stale.empty())
            Add(Joined({"no page is called \"", field, "\": \"", stale,
                        "\" is still there, but the page list no longer writes it"}),
                DidYouMean(NearestPage(field)));
        else if (!LeadsElsewhere(field))
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

    /// The page of a former list that is called so; "": there is none.
    std::string StaleFile(std::string_view field) const
    {
        for (const std::string_view extension : kExtensions)
            if (std::string file = Joined({field, extension}); pages_.stale.contains(file))
                return file;
        return {};
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

/// The text of the number's last definition, which counts on every page.
std::string_view DefinitionOf(const SiteView& site, std::string_view mark)
{
    std::string_view line;
    for (const NumberDefinition& known : site.definitions)
        if (known.mark == mark)
            line = site.sources[known.lines.source].Line(known.lines.first);
    return line.substr(std::min<std::size_t>(6, line.size()));
}

/// The first "!2" to "!9" of a definition past the fields of a use; 0: there is none.
std::size_t FieldMissing(std::string_view definition, std::size_t fields)
{
    for (std::size_t number = std::max<std::size_t>(fields, 1) + 1; number <= 9; ++number)
        if (Contains(definition, Joined({"!", Decimal(static_cast<int>(number))})))
            return number;
    return 0;
}

std::size_t FieldCount(const ConstructUse& use)
{
    return static_cast<std::size_t>(std::ranges::count(use.text, '|')) + 1;
}

/// Whether a line that came of the use holds the words.
bool IsOnPages(const SiteView& site, const ConstructUse& use, std::string_view words)
{
    return std::ranges::any_of(site.pages, [&](const PageText& page) {
        std::string_view rest = page.bytes;
        for (const SourceLines& origin : page.origins)
            if (const std::string_view line = TakeLine(rest);
                origin == use.lines && Contains(line, words))
                return true;
        return false;
    });
}

/// The line of the page that gives it its id.
Place PlaceOfId(const SiteView& site, const PageText& page)
{
    const SourceText& source = site.sources[page.from.source];
    const int end = static_cast<int>(source.lines.size());
    for (int line = page.from.first + 1; line <= end; ++line) {
        if (StartsWithNoCase(source.Line(line), kPageStart))
            break;
        if (StartsWithNoCase(source.Line(line), kIdDirective))
            return site.PlaceOf(source, line);
    }
    return site.PlaceOf(page.from, {});
}

/// Whether the construct is a definition inside a page: such a line is text of the page as well.
bool IsDefinitionOnPage(const SiteView& site, const ConstructUse& use)
{
    return use.brought_by.empty() &&
           std::ranges::any_of(site.definitions, [&](const NumberDefinition& definition) {
               return definition.mark == use.name && definition.lines == use.lines;
           });
}

} // namespace

/// Nothing left over of a reference is deleted.
void FindMissingFields(const SiteView& site, FindingSink& sink)
{
    for (const ConstructUse& use : site.references) {
        const std::size_t number = FieldMissing(DefinitionOf(site, use.name), FieldCount(use));
        const std::string mark = Joined({"!", Decimal(static_cast<int>(number))});
        if (number > 0 && IsOnPages(site, use, mark))
            sink.Add(site.PlaceOf(use),
                     Joined({InQuotes(use.text), " has no field for the \"", mark,
                             "\" of its definition, which visitors read"}),
                     "add the field, or an empty one");
    }
}

void FindIdsOfTwoPages(const SiteView& site, FindingSink& sink)
{
    std::map<std::string_view, const PageText*> owners;
    for (const PageText& page : site.pages) {
        if (page.id.empty() || page.from.source == SourceLines::kNone)
            continue;
        const auto [owner, is_first] = owners.emplace(page.id, &page);
        if (!is_first && !(owner->second->from == page.from)) // passes write a page again
            sink.Add(PlaceOfId(site, page),
                     Joined({"the page ", InQuotes(owner->second->name), " has the id \"", page.id,
                             "\", too"}),
                     "give one of the two another id");
    }
}

void FindUnclosedBrackets(const SiteView& site, FindingSink& sink)
{
    for (const ConstructUse& use : site.unclosed)
        if (IsDefinitionOnPage(site, use))
            continue; // "misplaced-directive" says so
        else if (use.name.starts_with("[["))
            sink.Add(site.PlaceOf(use),
                     Joined({"the wrapper ", use.name, " has no end on its page"}),
                     "end it by a line that holds nothing but ]]");
        else
            sink.Add(site.PlaceOf(use), Joined({use.name, "[ has no \"]\" in its line"}),
                     "put a \"]\" behind its last field");
    for (const ConstructUse& use : site.unopened)
        sink.Add(site.PlaceOf(use), "\"]]\" ends no wrapper: none is open on this page");
}

} // namespace kiv
