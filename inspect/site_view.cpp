#include "inspect/site_view.h"

#include <algorithm>

namespace kiv {

namespace {

/// The first of the lines that holds `words`, else the very first; 1-based.
int LineWith(const SourceText& source, const SourceLines& lines, std::string_view words)
{
    for (int line = lines.first; !words.empty() && line <= lines.last; ++line) {
        const auto index = static_cast<std::size_t>(line) - 1;
        if (index < source.lines.size() &&
            source.lines[index].find(words) != std::string_view::npos)
            return line;
    }
    return lines.first;
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

} // namespace kiv
