#include "shell/story_collector.h"

#include "platform/drive_path.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

std::string Backslashed(std::string_view path)
{
    std::string text(path);
    std::ranges::replace(text, '/', '\\');
    return text;
}

bool Covers(const SourceSpan& span, std::string_view file, int line)
{
    return span.file == file && (line == 0 || (span.first <= line && line <= span.last));
}

/// The steps of a story, each with what was there before it.
std::vector<ToldStep> StepsOf(const LineStory& story)
{
    std::vector<ToldStep> steps;
    const std::string* before = &story.before;
    for (const TracedStep& step : story.steps) {
        ToldStep told{step.name, step.text, *before, step.after, {}};
        if (!step.from.file.empty())
            told.from = Told(step.from);
        steps.push_back(std::move(told));
        before = &step.after;
    }
    return steps;
}

/// Which definitions were used, each once; the last step stays the last one.
std::vector<ToldStep> BriefStepsOf(const LineStory& story)
{
    std::vector<ToldStep> steps;
    for (std::size_t i = story.steps.size(); i-- > 0;) {
        const TracedStep& step = story.steps[i];
        const bool is_told = std::ranges::any_of(steps, [&](const ToldStep& told) {
            return told.from && told.from->file == step.from.file &&
                   told.from->first == step.from.first;
        });
        if (!step.from.file.empty() && !is_told)
            steps.push_back({step.name, step.text, {}, {}, Told(step.from)});
    }
    std::ranges::reverse(steps);
    return steps;
}

std::size_t SizeOf(const std::vector<ToldStep>& steps)
{
    std::size_t size = 0;
    for (const ToldStep& step : steps)
        size += step.before.size() + step.after.size();
    return size;
}

/// The step from all that a story makes to one line of it, counted from 1.
ToldStep OneLine(const LineStory& story, int number, std::string_view text)
{
    return {std::string(kLineStep),
            "line " + Decimal(number) + " of the " + Decimal(story.count) + " that this makes",
            story.Text(),
            std::string(text),
            {}};
}

} // namespace

ToldPlace Told(const SourceSpan& span)
{
    return {std::string(span.file), span.first, span.last};
}

StoryCollector::StoryCollector(const StoryQuestion& question, std::string_view directory,
                               Takes takes, const StoryBounds& bounds)
    : question_(question), bounds_(bounds), takes_(takes), name_(Backslashed(question.place)),
      paths_(question.paths)
{
    paths_.push_back(AbsolutePath(question.place, directory));
}

StoryCollector::Fit StoryCollector::FitOf(std::string_view name, std::string_view path) const
{
    const auto is_path = [&](const std::string& one) { return EqualsNoCase(one, path); };
    if (std::ranges::any_of(paths_, is_path))
        return Fit::path;
    const std::string own = Backslashed(name);
    if (EqualsNoCase(own, name_))
        return Fit::name;
    return EqualsNoCase(Before(own, '.'), name_) ? Fit::stem : Fit::none;
}

void StoryCollector::Choose(Fit fit, Stories::Kind kind, std::string_view name,
                            std::string_view path)
{
    fit_ = fit;
    found_ = Stories();
    found_.kind = kind;
    found_.name = name;
    found_.path = path;
    unused_.clear();
    for (auto& [page, first] : pages_)
        first = 0;
    kept_ = 0;
}

/// The lines of a source that came to a page are not on it when it is written once more.
void StoryCollector::CoverOlderPage()
{
    const auto [older, is_first] = pages_.try_emplace(UpperCase(page_path_), found_.lines.size());
    if (is_first)
        return;
    const std::size_t from = std::exchange(older->second, found_.lines.size());
    for (std::size_t i = from; i < found_.lines.size(); ++i) {
        ToldLine& line = found_.lines[i];
        if (line.line == 0 || !EqualsNoCase(line.page_path, page_path_))
            continue;
        line.line = 0;
        line.reason = "a later page of the same name is written over it";
    }
}

/// A page that is written again takes its own place.
bool StoryCollector::BeginPage(const TracedPage& page)
{
    page_ = page.name;
    page_path_ = page.path;
    names_.insert(page_);
    if (takes_ == Takes::sources) {
        CoverOlderPage();
        return true;
    }
    const Fit fit = FitOf(page.name, page.path);
    const bool is_again = fit == fit_ && EqualsNoCase(page.path, found_.path);
    if (fit == Fit::none || (fit <= fit_ && !is_again))
        return false;
    Choose(fit, Stories::Kind::page, page.name, page.path);
    return true;
}

void StoryCollector::TakeLine(const LineStory& story)
{
    if (takes_ == Takes::sources)
        return TakeOfSource(story, true);
    if (story.line == 0 && !story.is_failed)
        return;
    found_.line_count += story.count;
    Add(story, true);
}

void StoryCollector::TakeUnused(const LineStory& story)
{
    if (takes_ == Takes::sources)
        TakeOfSource(story, false);
}

void StoryCollector::TakeSource(std::string_view file)
{
    if (takes_ == Takes::sources)
        LookAt(file);
}

void StoryCollector::LookAtSources(const LineStory& story)
{
    for (const SourceSpan& source : story.sources)
        LookAt(source.file);
    for (const TracedStep& step : story.steps)
        LookAt(step.from.file);
}

/// Chooses a source that fits better than those before.
void StoryCollector::LookAt(std::string_view source)
{
    if (source.empty() || source == last_source_)
        return;
    last_source_ = source;
    const std::string_view name = NameOf(source);
    names_.emplace(name);
    const Fit fit = FitOf(name, source);
    if (fit > fit_)
        Choose(fit, Stories::Kind::source, source, source);
}

/// Whether a line that is asked for went into the story, itself or as a definition.
bool StoryCollector::IsOfSource(const LineStory& story)
{
    bool is_asked = false;
    for (const SourceSpan& source : story.sources) {
        is_asked = is_asked || Covers(source, found_.path, question_.line);
        if (source.file == found_.path)
            found_.line_count = std::max(found_.line_count, source.last);
    }
    return is_asked || std::ranges::any_of(story.steps, [&](const TracedStep& step) {
               return Covers(step.from, found_.path, question_.line);
           });
}

/// Each pass of a build reads the sources again, and tells the same of what it does not use.
void StoryCollector::TakeOfSource(const LineStory& story, bool is_on_page)
{
    LookAtSources(story);
    if (found_.kind == Stories::Kind::none || !IsOfSource(story))
        return;
    if (is_on_page || unused_.emplace(story.sources.front().first, story.reason).second)
        Add(story, is_on_page);
}

/// A text in a source may be meant as it stands there, or as it is on a page.
bool StoryCollector::IsAsked(int line, std::string_view text, std::string_view before) const
{
    if (takes_ == Takes::pages && question_.line != 0 && line != 0 && question_.line != line)
        return false;
    return !question_.find || ContainsNoCase(text, *question_.find) ||
           (takes_ == Takes::sources && ContainsNoCase(before, *question_.find));
}

/// `number` is that of the line among those that the story makes, counted from 1.
void StoryCollector::AddSteps(ToldLine& line, const LineStory& story, int number)
{
    line.is_brief = kept_ > bounds_.characters && !story.steps.empty();
    line.steps = line.is_brief ? BriefStepsOf(story) : StepsOf(story);
    if (story.count > 1 && !line.is_brief)
        line.steps.push_back(OneLine(story, number, line.text));
    kept_ += SizeOf(line.steps);
}

void StoryCollector::Add(const LineStory& story, bool is_on_page)
{
    std::string_view rest = story.Text();
    for (int k = 0; k < std::max(story.count, 1); ++k) {
        const int number = story.line == 0 ? 0 : story.line + k;
        const std::string_view text = story.line == 0 ? story.before : kiv::TakeLine(rest);
        if (!IsAsked(number, text, story.before))
            continue;
        if (found_.lines.size() >= bounds_.lines) {
            ++found_.left_out;
            continue;
        }
        ToldLine line;
        if (is_on_page) {
            line.page = page_;
            line.page_path = page_path_;
        }
        line.line = number;
        line.text = text;
        for (const SourceSpan& source : story.sources)
            line.sources.push_back(Told(source));
        line.reason = story.reason;
        AddSteps(line, story, k + 1);
        found_.lines.push_back(std::move(line));
    }
}

} // namespace kiv
