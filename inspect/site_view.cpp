#include "inspect/site_view.h"

#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

/// The first of the lines that holds `words`; 0: none does.
int FindLine(const SourceText& source, const SourceLines& lines, std::string_view words)
{
    for (int line = lines.first; !words.empty() && line <= lines.last; ++line) {
        const auto index = static_cast<std::size_t>(line) - 1;
        if (index < source.lines.size() && ContainsNoCase(source.lines[index], words))
            return line;
    }
    return 0;
}

/// The first of the lines that holds `words`, else the very first; 1-based.
int LineWith(const SourceText& source, const SourceLines& lines, std::string_view words)
{
    const int line = FindLine(source, lines, words);
    return line == 0 ? lines.first : line;
}

const SourceText* FirstWith(const std::vector<SourceText>& sources, bool SourceText::*what)
{
    const auto found = std::ranges::find(sources, true, what);
    return found == sources.end() ? nullptr : &*found;
}

} // namespace

const SourceText* SiteView::PageList() const
{
    return FirstWith(sources, &SourceText::is_page_list);
}

const SourceText* SiteView::Template() const
{
    return FirstWith(sources, &SourceText::is_template);
}

bool SiteView::Lacks(std::string_view list) const
{
    try {
        return !files.FileExists(folder + std::string(list));
    } catch (const RunError&) {
        return false; // the build has met the same error, and tells of it
    }
}

bool SourceText::IsOfPageList() const
{
    const auto is_of_frame = [](const LineParts& line) { return line.Has(LinePart::frame); };
    return !parts.empty() && std::ranges::none_of(parts, is_of_frame);
}

Place SiteView::PlaceOf(const PageText& page, int line, std::string_view words) const
{
    const auto index = static_cast<std::size_t>(line) - 1;
    if (line < 1 || index >= page.origins.size() ||
        page.origins[index].source == SourceLines::kNone)
        return {page.path, line, page.name}; // a line of the program's own
    const SourceLines& origin = page.origins[index];
    const SourceText& source = sources[origin.source];
    return {source.path, LineWith(source, origin, words), page.name};
}

Place SiteView::PlaceOf(const SourceLines& lines, std::string_view words) const
{
    const SourceText& source = sources[lines.source];
    return {source.path, LineWith(source, lines, words), {}};
}

Place SiteView::PlaceOf(const ConstructUse& use) const
{
    const auto stands_in = [&](const SourceLines& lines) {
        return FindLine(sources[lines.source], lines, use.name) != 0;
    };
    if (!stands_in(use.lines))
        for (const SourceLines& lines : use.brought_by)
            if (stands_in(lines))
                return PlaceOf(lines, use.name);
    return PlaceOf(use.lines, use.name);
}

std::string SiteView::PlaceText(const Place& place) const
{
    std::string_view file = place.file;
    if (StartsWithNoCase(file, folder))
        file.remove_prefix(folder.size());
    return Joined({file, ":", Decimal(place.line)});
}

} // namespace kiv
