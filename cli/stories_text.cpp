#include "cli/stories_text.h"

#include "cli/shown_text.h"
#include "text/changed_part.h"
#include "text/text.h"

#include <algorithm>
#include <iomanip>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::size_t kMostStoryLines = 12; // of a text that a step makes
constexpr std::size_t kMostTargets = 5;     // that a line of a source went to
constexpr std::size_t kMostGone = 40;       // characters that are shown when they have gone
constexpr std::size_t kMostSource = 30;     // characters of a place, beside a line

constexpr const char* kMark = "\x1b[1;32m";
constexpr const char* kName = "\x1b[1m";
constexpr const char* kAsBefore = "\x1b[0m";

/// "_html.txt:12", "_html.txt:12-18".
std::string PlaceText(const ToldPlace& place)
{
    std::string text = place.shown + ":" + Decimal(place.first);
    if (place.last > place.first)
        text += "-" + Decimal(place.last);
    return text;
}

std::string SourcesText(const ToldLine& line)
{
    if (line.sources.empty())
        return "(the program's own)";
    // A line of a file that stands in the place of the line that names it is best known by its own.
    const ToldPlace& last = line.sources.back();
    const bool is_from_last = !line.steps.empty() && line.steps.back().from &&
                              line.steps.back().from->file == last.file &&
                              line.steps.back().from->first == last.first;
    return PlaceText(is_from_last ? last : line.sources.front());
}

/// How many characters a text takes on a terminal, once it is shown.
std::string Blanks(std::string_view text, char instead)
{
    std::string blanks;
    for (const char c : ShownText(text))
        if (c == '\t')
            blanks += c;
        else if ((static_cast<unsigned char>(c) & 0xC0U) != 0x80U)
            blanks += instead;
    return blanks;
}

/// What became of source lines in one story, or in stories of lines that follow each other.
std::string TargetText(const ToldLine& line, int last, bool is_own)
{
    if (line.line == 0)
        return line.page.empty() ? line.reason : "not on " + line.page_shown + ": " + line.reason;
    return (is_own ? "" : "used for ") + line.page_shown + ":" + Decimal(line.line) +
           (last > line.line ? "-" + Decimal(last) : "");
}

class StoryPrinter {
  public:
    StoryPrinter(std::ostream& out, const Stories& stories, const StoryView& view)
        : out_(out), stories_(stories), view_(view)
    {
    }

    void PrintPage();
    void PrintSource();

  private:
    /// Lines of a page that come from one place of the source, or use it.
    struct Target {
        const ToldLine* line; // the first of them
        int last;             // its number on the page; 0: nothing was written
        bool is_own;          // the place is the lines' source
    };
    using Targets = std::map<std::pair<int, int>, std::vector<Target>>; // by first and last line

    void PrintNone();
    void PrintBeside(const ToldLine& line, std::size_t width);
    void PrintLong(const ToldLine& line);
    void PrintStep(const ToldStep& step);
    void PrintText(std::string_view text, const ChangedPart& changed);
    void PrintLine(std::string_view line, std::size_t from, std::size_t to);
    void PrintSourceLines(const ToldPlace& place, const std::vector<Target>& targets);
    void AddTarget(Targets& targets, const ToldPlace& place, const ToldLine& line,
                   bool is_own) const;
    std::string Name(const std::string& text) const
    {
        return view_.colour ? kName + ShownText(text) + kAsBefore : ShownText(text);
    }

    std::ostream& out_;
    const Stories& stories_;
    const StoryView& view_;
};

void StoryPrinter::PrintPage()
{
    if (stories_.lines.empty())
        return PrintNone();
    if (view_.is_long) {
        for (const ToldLine& line : stories_.lines)
            PrintLong(line);
        return;
    }
    std::size_t width = 0;
    for (const ToldLine& line : stories_.lines)
        width = std::max(width, SourcesText(line).size());
    for (const ToldLine& line : stories_.lines)
        PrintBeside(line, std::min(width, kMostSource));
}

void StoryPrinter::PrintNone()
{
    if (view_.is_long)
        out_ << "no line of " << ShownText(stories_.shown) << " holds that\n";
    else
        out_ << ShownText(stories_.shown) << " has no lines\n";
}

void StoryPrinter::PrintBeside(const ToldLine& line, std::size_t width)
{
    if (line.line == 0) {
        out_ << "       " << ShownText(SourcesText(line)) << "  " << ShownText(line.reason) << '\n';
        return;
    }
    const std::string source = SourcesText(line);
    out_ << std::setw(5) << line.line << "  " << ShownText(source)
         << std::string(source.size() < width ? width - source.size() : 0, ' ') << "  "
         << ShownText(line.text) << '\n';
}

void StoryPrinter::PrintLong(const ToldLine& line)
{
    out_ << Name(line.line == 0 ? "not written" : line.page_shown + ":" + Decimal(line.line))
         << '\n';
    for (const ToldPlace& source : line.sources)
        out_ << "  from " << ShownText(PlaceText(source)) << '\n';
    if (line.sources.empty())
        out_ << "  a text of the program's own\n";
    if (line.is_brief) {
        out_ << "  " << ShownText(line.text)
             << "\n  all the stories are too long to be told at once: ask for this line alone\n\n";
        return;
    }
    if (!line.sources.empty())
        PrintText(line.steps.empty() ? line.text : line.steps.front().before, {});
    for (const ToldStep& step : line.steps) {
        out_ << "  " << Name(step.name) << "  " << ShownText(step.text) << '\n';
        PrintStep(step);
    }
    if (!line.reason.empty())
        out_ << "  " << ShownText(line.reason) << '\n';
    else if (line.steps.empty())
        out_ << "  nothing was done to it\n";
    out_ << '\n';
}

/// A text of many lines is shown where it has changed.
void StoryPrinter::PrintText(std::string_view text, const ChangedPart& changed)
{
    const std::size_t end = changed.from + changed.put;
    const auto all = static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1;
    const std::string_view before = text.substr(0, changed.from);
    const auto first = static_cast<std::size_t>(std::ranges::count(before, '\n'));
    const std::size_t begin = all <= kMostStoryLines ? 0 : std::min(first, all - kMostStoryLines);
    if (begin > 0)
        out_ << "    ... " << begin << " lines\n";
    std::size_t at = 0;
    for (std::size_t number = 0; number < std::min(all, begin + kMostStoryLines); ++number) {
        const std::size_t stop = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, stop - at);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (number >= begin)
            PrintLine(line, std::clamp(changed.from, at, at + line.size()) - at,
                      std::clamp(end, at, at + line.size()) - at);
        at = stop + 1;
    }
    if (all > begin + kMostStoryLines)
        out_ << "    ... " << all - begin - kMostStoryLines << " more lines\n";
}

/// Where something has gone, there is nothing to mark.
void StoryPrinter::PrintStep(const ToldStep& step)
{
    const bool is_line = step.name == kLineStep;
    if (step.after.empty()) {
        out_ << (is_line ? "    (an empty line)\n" : "    (nothing is left)\n");
        return;
    }
    if (is_line)
        return PrintText(step.after, {});
    const ChangedPart changed = ChangeBetween(step.before, step.after);
    PrintText(step.after, changed);
    if (changed.put > 0)
        return;
    const std::string_view gone = std::string_view(step.before).substr(changed.from, changed.taken);
    if (gone.size() <= kMostGone && gone.find('\n') == std::string_view::npos)
        out_ << "    (without \"" << ShownText(gone) << "\")\n";
    else
        out_ << "    (without " << gone.size() << " characters)\n";
}

/// Marks the characters from `from` up to `to`.
void StoryPrinter::PrintLine(std::string_view line, std::size_t from, std::size_t to)
{
    const std::string_view head = line.substr(0, from);
    const std::string_view part = line.substr(from, to - from);
    out_ << "    " << ShownText(head);
    if (view_.colour && !part.empty())
        out_ << kMark << ShownText(part) << kAsBefore;
    else
        out_ << ShownText(part);
    out_ << ShownText(line.substr(to)) << '\n';
    if (!view_.colour && !part.empty())
        out_ << "    " << Blanks(head, ' ') << Blanks(part, '^') << '\n';
}

/// Lines that follow each other on a page are one target, except where each is shown. A line that
/// was not written is told of at its own place only.
void StoryPrinter::AddTarget(Targets& targets, const ToldPlace& place, const ToldLine& line,
                             bool is_own) const
{
    const bool is_asked =
        view_.line == 0 || (place.first <= view_.line && view_.line <= place.last);
    if (place.file != stories_.path || !is_asked || (line.line == 0 && !is_own))
        return;
    std::vector<Target>& known = targets[view_.line == 0 ? std::pair(place.first, place.last)
                                                         : std::pair(view_.line, view_.line)];
    Target* const last = known.empty() ? nullptr : &known.back();
    const bool is_same_page = last != nullptr && last->line->page_path == line.page_path;
    if (last != nullptr &&
        (last->line == &line || (is_same_page && last->last > 0 && last->last == line.line)))
        return;
    if (!view_.is_long && is_same_page && last->is_own == is_own && last->last > 0 &&
        last->last + 1 == line.line)
        last->last = line.line;
    else
        known.push_back({&line, line.line, is_own});
}

void StoryPrinter::PrintSourceLines(const ToldPlace& place, const std::vector<Target>& targets)
{
    out_ << Name(PlaceText(place));
    if (view_.is_long) {
        out_ << '\n';
        for (const Target& target : targets)
            out_ << "  " << ShownText(TargetText(*target.line, target.last, target.is_own))
                 << (target.last == 0 ? "" : "  " + ShownText(target.line->text)) << '\n';
        return;
    }
    const char* before = "  ";
    for (std::size_t i = 0; i < std::min(kMostTargets, targets.size()); ++i) {
        out_ << before
             << ShownText(TargetText(*targets[i].line, targets[i].last, targets[i].is_own));
        before = "; ";
    }
    if (targets.size() > kMostTargets)
        out_ << before << targets.size() - kMostTargets << " more";
    out_ << '\n';
}

void StoryPrinter::PrintSource()
{
    Targets targets;
    for (const ToldLine& line : stories_.lines) {
        for (const ToldPlace& source : line.sources)
            AddTarget(targets, source, line, true);
        for (const ToldStep& step : line.steps)
            if (step.from)
                AddTarget(targets, *step.from, line, false);
    }
    if (targets.empty())
        return PrintNone();
    for (const auto& [lines, known] : targets)
        PrintSourceLines({{}, lines.first, lines.second, {}, stories_.shown}, known);
}

} // namespace

void PrintStories(std::ostream& out, const Stories& stories, const StoryView& view)
{
    StoryPrinter printer(out, stories, view);
    if (stories.kind == Stories::Kind::page)
        printer.PrintPage();
    else
        printer.PrintSource();
    if (stories.left_out > 0)
        out << stories.left_out << " more lines are left out: ask for a single line\n";
}

} // namespace kiv
