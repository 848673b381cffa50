#include "shell/story_parts.h"

#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kCut = "...";
constexpr std::size_t kShownWhole = 800; // in a step
constexpr std::size_t kShownAround = 200;

std::string FirstOf(std::string_view text)
{
    if (text.size() <= kMostShownOfText)
        return std::string(text);
    return Joined({FirstChars(text, kMostShownOfText), kCut});
}

/// Keeps of a long text what is around its change.
void Cut(std::string& text, ChangedPart& change)
{
    if (text.size() <= kShownWhole)
        return;
    const std::size_t skipped = change.from - std::min(change.from, kShownAround);
    change.from -= skipped;
    const std::size_t shown = std::min(change.from + change.put + kShownAround, kMostShownOfText);
    const bool is_last = skipped + shown >= text.size();
    text = text.substr(skipped, shown) + std::string(is_last ? "" : kCut);
    change.put = std::min(change.put, shown - change.from);
    if (skipped > 0) {
        text.insert(0, kCut);
        change.from += kCut.size();
    }
}

StoryPart StepPart(const PageStep& step, std::string_view before)
{
    StoryPart part{StoryPart::Kind::step, step.name, step.text, step.after, {}, {}, step.from};
    part.change = ChangeBetween(before, step.after);
    if (part.change.put == 0)
        part.taken = FirstOf(before.substr(part.change.from, part.change.taken));
    Cut(part.text, part.change);
    return part;
}

void AddSources(const PageStory& story, std::string_view folder, std::vector<StoryPart>& parts)
{
    for (const ToldPlace& source : story.sources) {
        const bool is_first = parts.empty();
        parts.push_back({StoryPart::Kind::source,
                         PlaceWords(source, folder),
                         is_first ? "" : "went into it as well",
                         is_first ? FirstOf(story.before) : "",
                         {},
                         {},
                         source});
    }
    if (parts.empty())
        parts.push_back({StoryPart::Kind::source,
                         "",
                         "no source has it: kiv puts it there",
                         FirstOf(story.before),
                         {},
                         {},
                         {}});
}

StoryPart ResultPart(const PageStories& page, const PageLine& line, const PageStory& story)
{
    StoryPart part{StoryPart::Kind::result, page.page.name, story.reason, {}, {}, {}, {}};
    if (line.number == 0)
        return part;
    part.title += ":" + Decimal(line.number);
    if (story.count > 1)
        part.words = Joined({"line ", Decimal(line.of_story), " of the ", Decimal(story.count),
                             " that this makes"});
    part.text = FirstOf(line.text);
    return part;
}

} // namespace

std::vector<StoryPart> PartsOf(const PageStories& page, std::size_t line)
{
    const PageLine& told = page.lines[line];
    const PageStory& story = page.stories[told.story];
    std::vector<StoryPart> parts;
    AddSources(story, page.folder, parts);
    std::string_view before = story.before;
    for (const PageStep& step : story.steps) {
        parts.push_back(StepPart(step, before));
        before = step.after;
    }
    parts.push_back(ResultPart(page, told, story));
    return parts;
}

std::string PlaceWords(const ToldPlace& place, std::string_view folder)
{
    std::string_view file = place.file;
    if (StartsWithNoCase(file, folder))
        file.remove_prefix(folder.size());
    const std::string last = place.last > place.first ? "-" + Decimal(place.last) : "";
    return Joined({file, ":", Decimal(place.first), last});
}

} // namespace kiv
