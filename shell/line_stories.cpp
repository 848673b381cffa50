#include "shell/line_stories.h"

#include "builder/trace.h"
#include "platform/drive_path.h"
#include "platform/silent_reporter.h"
#include "platform/unwritten_files.h"
#include "shell/builds.h"
#include "shell/workspace.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <set>
#include <utility>

namespace kiv {

namespace {

/// How well a file fits what was asked for; 0: not at all.
enum Fit { kNone, kStem, kName, kPath };

std::string Backslashed(std::string_view path)
{
    std::string text(path);
    std::ranges::replace(text, '/', '\\');
    return text;
}

/// What a person means by the name of a page or a source.
class Asked {
  public:
    Asked(const StoryQuestion& question, const std::string& directory)
        : name_(Backslashed(question.place)), paths_(question.paths)
    {
        paths_.push_back(AbsolutePath(question.place, directory));
    }

    Fit FitOf(std::string_view name, std::string_view path) const
    {
        const auto is_path = [&](const std::string& one) { return EqualsNoCase(one, path); };
        if (std::ranges::any_of(paths_, is_path))
            return kPath;
        const std::string own = Backslashed(name);
        if (EqualsNoCase(own, name_))
            return kName;
        return EqualsNoCase(Before(own, '.'), name_) ? kStem : kNone;
    }

  private:
    std::string name_;
    std::vector<std::string> paths_;
};

ToldPlace Place(const SourceSpan& span)
{
    return {std::string(span.file), span.first, span.last};
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
            told.from = Place(step.from);
        steps.push_back(std::move(told));
        before = &step.after;
    }
    return steps;
}

/// Adds the lines that a story makes, those for which `is_asked` says so.
template <typename IsAsked>
void AddLines(const LineStory& story, std::string_view page, std::vector<ToldLine>& lines,
              IsAsked is_asked)
{
    std::string_view rest = story.Text();
    for (int k = 0; k < std::max(story.count, 1); ++k) {
        const int number = story.line == 0 ? 0 : story.line + k;
        const std::string_view text = story.line == 0 ? story.before : TakeLine(rest);
        if (!is_asked(number, text))
            continue;
        ToldLine line{std::string(page), number,        std::string(text), {},
                      story.reason,      StepsOf(story)};
        for (const SourceSpan& source : story.sources)
            line.sources.push_back(Place(source));
        if (story.count > 1)
            line.steps.push_back(
                {"line",
                 "line " + Decimal(k + 1) + " of the " + Decimal(story.count) + " that this makes",
                 story.Text(),
                 std::string(text),
                 {}});
        lines.push_back(std::move(line));
    }
}

/// Takes what is asked for out of a build. What fits the name best is meant; of two pages that fit
/// it equally well, the first.
class Collector : public Trace {
  public:
    Collector(const StoryQuestion& question, Asked asked, bool as_source)
        : question_(question), asked_(std::move(asked)), as_source_(as_source)
    {
    }

    Stories& Found() { return found_; }

    bool BeginPage(const TracedPage& page) override
    {
        page_ = page.name;
        AddName(page.name);
        if (as_source_)
            return true;
        const Fit fit = asked_.FitOf(page.name, page.path);
        const bool is_again = fit == fit_ && EqualsNoCase(page.path, found_.path);
        if (fit == kNone || (fit <= fit_ && !is_again))
            return false;
        fit_ = fit;
        Choose(Stories::Kind::page, page.name, page.path);
        return true;
    }

    void TakeLine(const LineStory& story) override
    {
        if (as_source_)
            return TakeOfSource(story, page_);
        if (story.line == 0 && !story.is_failed)
            return;
        found_.line_count += story.count;
        AddLines(story, page_, found_.lines,
                 [&](int line, std::string_view text) { return line == 0 || IsAsked(line, text); });
    }

    void TakeUnused(const LineStory& story) override
    {
        if (as_source_)
            TakeOfSource(story, {});
    }

    std::vector<std::string> Names() const { return {names_.begin(), names_.end()}; }

  private:
    bool IsAsked(int line, std::string_view text) const
    {
        return (question_.line == 0 || question_.line == line) &&
               (!question_.find || ContainsNoCase(text, *question_.find));
    }

    void Choose(Stories::Kind kind, std::string_view name, std::string_view path)
    {
        found_ = Stories();
        found_.kind = kind;
        found_.name = name;
        found_.path = path;
    }

    void AddName(std::string_view name) { names_.emplace(name); }

    /// Chooses the source that fits best of those that the story has.
    void ChooseSource(const LineStory& story)
    {
        for (const SourceSpan& source : story.sources) {
            if (source.file == last_source_)
                continue;
            last_source_ = source.file;
            AddName(NameOf(source.file));
            const Fit fit = asked_.FitOf(NameOf(source.file), source.file);
            if (fit <= fit_)
                continue;
            fit_ = fit;
            Choose(Stories::Kind::source, source.file, source.file);
        }
    }

    void TakeOfSource(const LineStory& story, std::string_view page)
    {
        ChooseSource(story);
        if (found_.kind == Stories::Kind::none)
            return;
        bool is_asked = false;
        for (const SourceSpan& source : story.sources) {
            is_asked = is_asked || Covers(source, found_.path, question_.line);
            if (source.file == found_.path)
                found_.line_count = std::max(found_.line_count, source.last);
        }
        for (const TracedStep& step : story.steps)
            is_asked = is_asked || Covers(step.from, found_.path, question_.line);
        // Each pass of a build reads the sources again, and tells the same of what it does not use.
        if (!is_asked ||
            (page.empty() && !unused_.emplace(story.sources.front().first, story.reason).second))
            return;
        AddLines(story, page, found_.lines, [&](int, std::string_view text) {
            return !question_.find || ContainsNoCase(text, *question_.find);
        });
    }

    const StoryQuestion& question_;
    const Asked asked_;
    const bool as_source_;
    Stories found_;
    Fit fit_ = kNone;
    std::string page_;
    std::string last_source_;
    std::set<std::string> names_;
    std::set<std::pair<int, std::string>> unused_;
};

/// Runs the build for a question; `as_source` says what its place is taken for.
Stories Collect(Workspace& workspace, const StoryQuestion& question, Reporter& reporter,
                bool as_source)
{
    UnwrittenFiles files(workspace.machine().files);
    Collector collector(question, Asked(question, files.CurrentDirectory()), as_source);
    std::optional<RunError> error;
    try {
        BuildUnwritten(workspace, files, reporter, collector);
    } catch (const RunError& fault) {
        error = fault;
    }
    Stories stories = std::move(collector.Found());
    stories.names = collector.Names();
    stories.error = std::move(error);
    return stories;
}

} // namespace

Stories TellStories(Workspace& workspace, const StoryQuestion& question, Reporter& reporter)
{
    Stories stories = Collect(workspace, question, reporter, false);
    if (stories.kind == Stories::Kind::none) {
        SilentReporter silent; // what the build says was said already
        stories = Collect(workspace, question, silent, true);
    }
    if (stories.error && stories.lines.empty())
        throw RunError(*stories.error);
    return stories;
}

} // namespace kiv
