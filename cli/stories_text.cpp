#include "cli/stories_text.h"

#include "cli/shown_text.h"
#include "platform/drive_path.h"
#include "text/changed_part.h"
#include "text/text.h"

#include <algorithm>
#include <iomanip>
#include <map>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

namespace {

constexpr std::size_t kMostLines = 12;  // of a text that a step makes
constexpr std::size_t kMostTargets = 5; // that a line of a source went to
constexpr std::size_t kMostGone = 40;   // characters that are shown when they have gone
constexpr std::size_t kMostSource = 30; // characters of a place, beside a line

constexpr const char* kMark = "\x1b[1;32m";
constexpr const char* kName = "\x1b[1m";
constexpr const char* kPlain = "\x1b[0m";

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

class StoryPrinter {
  public:
    StoryPrinter(std::ostream& out, const Stories& stories, const StoryView& view)
        : out_(out), stories_(stories), view_(view)
    {
    }

    void PrintPage();
    void PrintSource();

  private:
    void PrintBeside(const ToldLine& line, std::size_t width);
    void PrintLong(const ToldLine& line);
    void PrintStep(const ToldStep& step);
    void PrintText(std::string_view text, const ChangedPart& changed);
    void PrintLine(std::string_view line, std::size_t from, std::size_t to);
    void PrintSourceLine(int number, const std::vector<const ToldLine*>& lines);
    std::string TargetText(const ToldLine& line, int number) const;
    std::string Name(const std::string& text) const
    {
        return view_.colour ? kName + ShownText(text) + kPlain : ShownText(text);
    }

    std::ostream& out_;
    const Stories& stories_;
    const StoryView& view_;
};

void StoryPrinter::PrintPage()
{
    if (view_.is_long) {
        for (const ToldLine& line : stories_.lines)
            PrintLong(line);
        if (stories_.lines.empty())
            out_ << "no line of " << ShownText(stories_.name) << " holds that\n";
        return;
    }
    std::size_t width = 0;
    for (const ToldLine& line : stories_.lines)
        width = std::max(width, SourcesText(line).size());
    for (const ToldLine& line : stories_.lines)
        PrintBeside(line, std::min(width, kMostSource));
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
    else
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
    const std::size_t begin = all <= kMostLines ? 0 : std::min(first, all - kMostLines);
    if (begin > 0)
        out_ << "    ... " << begin << " lines\n";
    std::size_t at = 0;
    for (std::size_t number = 0; number < std::min(all, begin + kMostLines); ++number) {
        const std::size_t stop = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, stop - at);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (number >= begin)
            PrintLine(line, std::clamp(changed.from, at, at + line.size()) - at,
                      std::clamp(end, at, at + line.size()) - at);
        at = stop + 1;
    }
    if (all > begin + kMostLines)
        out_ << "    ... " << all - begin - kMostLines << " more lines\n";
}

/// Where something has gone, there is nothing to mark.
void StoryPrinter::PrintStep(const ToldStep& step)
{
    const ChangedPart changed = ChangeBetween(step.before, step.after);
    if (step.after.empty()) {
        out_ << "    (nothing is left)\n";
        return;
    }
    PrintText(step.after, changed);
    if (changed.put > 0)
        return;
    const std::string_view gone =
        std::string_view(step.before).substr(changed.from, changed.taken);
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
        out_ << kMark << ShownText(part) << kPlain;
    else
        out_ << ShownText(part);
    out_ << ShownText(line.substr(to)) << '\n';
    if (!view_.colour && !part.empty())
        out_ << "    " << Blanks(head, ' ') << Blanks(part, '^') << '\n';
}

/// What became of a source line in one story.
std::string StoryPrinter::TargetText(const ToldLine& line, int number) const
{
    if (line.line == 0)
        return line.page.empty() ? line.reason : "not on " + line.page_shown + ": " + line.reason;
    const bool is_its_own = std::ranges::any_of(line.sources, [&](const ToldPlace& place) {
        return place.file == stories_.path && place.first <= number && number <= place.last;
    });
    return (is_its_own ? "" : "used for ") + line.page_shown + ":" + Decimal(line.line);
}

void StoryPrinter::PrintSourceLine(int number, const std::vector<const ToldLine*>& lines)
{
    out_ << Name(stories_.shown + ":" + Decimal(number));
    if (view_.is_long) {
        out_ << '\n';
        for (const ToldLine* const line : lines)
            out_ << "  " << ShownText(TargetText(*line, number))
                 << (line->line == 0 ? "" : "  " + ShownText(line->text)) << '\n';
        return;
    }
    const char* before = "  ";
    for (std::size_t i = 0; i < std::min(kMostTargets, lines.size()); ++i) {
        out_ << before << ShownText(TargetText(*lines[i], number));
        before = "; ";
    }
    if (lines.size() > kMostTargets)
        out_ << before << lines.size() - kMostTargets << " more";
    out_ << '\n';
}

void StoryPrinter::PrintSource()
{
    std::map<int, std::vector<const ToldLine*>> by_line;
    const auto add = [&](const ToldPlace& place, const ToldLine& line) {
        if (place.file != stories_.path)
            return;
        for (int number = place.first; number <= place.last; ++number) {
            std::vector<const ToldLine*>& lines = by_line[number];
            if ((view_.line == 0 || view_.line == number) &&
                (lines.empty() || lines.back() != &line))
                lines.push_back(&line);
        }
    };
    for (const ToldLine& line : stories_.lines) {
        for (const ToldPlace& source : line.sources)
            add(source, line);
        for (const ToldStep& step : line.steps)
            if (step.from)
                add(*step.from, line);
    }
    for (const auto& [number, lines] : by_line)
        if (!lines.empty())
            PrintSourceLine(number, lines);
}

} // namespace

void PrintStories(std::ostream& out, const Stories& stories, const StoryView& view)
{
    StoryPrinter printer(out, stories, view);
    if (stories.kind == Stories::Kind::page)
        printer.PrintPage();
    else
        printer.PrintSource();
}

} // namespace kiv
