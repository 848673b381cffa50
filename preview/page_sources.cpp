#include "preview/page_sources.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "preview/element_source.h"
#include "preview/json_text.h"
#include "shell/story_parts.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

std::string Trouble(std::string_view words)
{
    return Joined({"{\"trouble\":", JsonText(words), "}"});
}

std::string JsonOf(const StoryPart& part)
{
    // Positions are those of characters, which are bytes here and none in UTF-8.
    const std::size_t from = std::min(part.change.from, part.text.size());
    return Joined(
        {"{\"title\":", JsonText(ToUtf8(part.title)), ",\"words\":", JsonText(ToUtf8(part.words)),
         ",\"text\":", JsonText(ToUtf8(part.text)), ",\"begin\":", std::to_string(from),
         ",\"size\":", std::to_string(std::min(part.change.put, part.text.size() - from)), "}"});
}

} // namespace

const PageStories& PageSources::PageAt(const std::string& path)
{
    constexpr std::size_t kMostKept = 8; // each may take a lot of memory
    const auto found = pages_.find(path);
    if (found != pages_.end())
        return found->second;
    if (pages_.size() >= kMostKept)
        pages_.clear();
    return pages_.emplace(path, tools_.tell_page(path)).first->second;
}

std::optional<std::size_t> PageSources::Find(const PageStories& page, const PageSpot& spot,
                                             std::string_view path) const
{
    if (!EqualsNoCase(page.page.path, path))
        return std::nullopt;
    const auto line = std::ranges::find(page.lines, spot.line, &PageLine::number);
    if (line == page.lines.end())
        return std::nullopt;
    return static_cast<std::size_t>(line - page.lines.begin());
}

ToldPlace PageSources::PlaceOf(const PageSpot& spot, std::string& folder)
{
    const std::string path = tools_.drive_path(spot.native);
    const PageStories& page = PageAt(path);
    folder = page.folder;
    const std::optional<std::size_t> line = Find(page, spot, path);
    const std::optional<ToldPlace> source =
        line ? SourceOfElement(page, *line, spot.column) : std::nullopt;
    return source.value_or(ToldPlace{path, spot.line, spot.line});
}

std::string PageSources::Place(const PageSpot& spot)
{
    std::string folder;
    const ToldPlace place = PlaceOf(spot, folder);
    return Joined(
        {"{\"trouble\":\"\",\"place\":", JsonText(ToUtf8(PlaceWords(place, folder))), "}"});
}

std::string PageSources::Story(const PageSpot& spot)
{
    const std::string path = tools_.drive_path(spot.native);
    const PageStories& page = PageAt(path);
    const std::optional<std::size_t> line = Find(page, spot, path);
    if (!line)
        return Trouble(
            "No page list of this site makes this line: it is as it stands in the file.");
    std::string parts;
    for (const StoryPart& part : PartsOf(page, *line))
        Append(parts, {parts.empty() ? "" : ",", JsonOf(part)});
    const std::string title = page.page.name + ":" + Decimal(spot.line);
    return Joined(
        {"{\"trouble\":\"\",\"title\":", JsonText(ToUtf8(title)), ",\"parts\":[", parts, "]}"});
}

std::string PageSources::Open(const PageSpot& spot)
{
    std::string folder;
    const ToldPlace place = PlaceOf(spot, folder);
    return Open(place.file, place.first);
}

std::string PageSources::Open(const std::string& path, int line)
{
    if (path.empty())
        return Trouble("The last build told of no place: there is none to open.");
    try {
        tools_.edit(path, line);
        return Trouble("");
    } catch (const RunError& error) {
        const std::string hint = error.hint.empty() ? "" : " " + error.hint;
        return Trouble(ToUtf8(Joined({"The editor did not start: ", error.text, ".", hint})));
    }
}

} // namespace kiv
