#include "exchange/adopted_sources.h"

#include "exchange/adopted_bodies.h"
#include "exchange/protected_line.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace kiv {

namespace {

using Sources = std::vector<std::string>;

// The format's bound is 40000; who adopts a site wants to add to it.
constexpr std::size_t kMostSourceLines = 36000;
// What is longer has a file of its own.
constexpr std::size_t kLongestInList = 400;
// The part that each page has at its foot, whatever it looks like.
constexpr std::string_view kFootPart = "foot";

/// What is kept out of the list to make room in it.
struct Thrift {
    bool merges_plain_runs; // shared lines without variables are read line by line
    std::size_t longest;    // lines that a page may have there by itself
};

constexpr std::array<Thrift, 9> kThrifts = {{{true, 3000},
                                             {false, 3000},
                                             {false, 1000},
                                             {false, 500},
                                             {false, 200},
                                             {false, 100},
                                             {false, 50},
                                             {false, 20},
                                             {false, 0}}};

/// How a run is included.
struct RunSource {
    Sources lines;           // of a page
    std::size_t count = 0;   // of source lines that these stand for
    Sources template_lines;  // the same in a template
    std::size_t foot = npos; // which of them the foot stands before
};

class SourceWriter {
  public:
    SourceWriter(const SectionPlan& plan, const Thrift& thrift)
        : plan_(plan), thrift_(thrift), files_(plan.parts, plan.texts)
    {
    }

    SourceTexts Write();
    std::size_t LineCount() const { return count_; }

  private:
    void WriteRuns(std::size_t family);
    void WriteRun(std::size_t family, std::size_t number, const std::string& name);
    void AddParts(RunSource& source, std::span<const CodedLine> lines, const std::string& name);
    void AddPart(RunSource& source, std::span<const CodedLine> lines, const std::string& name,
                 bool is_merged);
    std::string Header() const;
    std::string MenuDefinitions() const;
    void WritePage(const PlannedPage& page);
    void WriteTemplated(const PlannedPage& page);
    void WriteShared(const PlannedPage& page);
    bool HasTemplated() const;
    void WriteSpan(const PlannedPage& page, const OwnSpan& span);
    void WriteOwn(const PlannedPage& page, const OwnSpan& span);
    void WriteFoot();
    void WriteSource(const RunSource& source, bool has_foot);
    void WritePiece(std::size_t piece);
    void WriteLines(std::span<const std::string_view> lines, const PlannedPage& page);
    void WriteLine(std::string_view line);
    std::string Template() const;
    Sources SharedTemplate() const;
    std::string FootPath() const { return Joined({plan_.parts, "\\", kFootPart, ".txt"}); }

    const SectionPlan& plan_;
    Thrift thrift_;
    IncludedFiles files_;
    std::vector<std::vector<RunSource>> runs_; // by family
    std::map<std::size_t, RunSource> pieces_;  // those that are used, by their numbers
    std::string list_;
    std::size_t count_ = 0;
    bool has_foot_ = false; // of some page
};

bool IsFoot(std::string_view line)
{
    return StartsWithNoCase(Trim(line), "</body");
}

/// The line of a run that a foot stands before, or npos.
std::size_t FootOfRun(const SharedRun& run)
{
    for (std::size_t i = run.lines.size(); i-- > 0;)
        if (IsFoot(run.lines[i].Plain()))
            return i;
    return npos;
}

bool IsSaid(const CodedLine& line)
{
    return line.Source().has_value();
}

void SourceWriter::AddPart(RunSource& source, std::span<const CodedLine> lines,
                           const std::string& name, bool is_merged)
{
    std::string content;
    for (const CodedLine& line : lines)
        content.append(is_merged ? *line.Source() : std::string(line.Plain())).append(kCrLf);
    if (!is_merged)
        content.resize(content.size() - kCrLf.size());
    const std::string path = files_.AddPart(name, std::move(content));
    source.lines.push_back((is_merged ? "++" : "!++") + path);
    source.template_lines.push_back("+" + path);
    source.count += is_merged ? lines.size() : 1;
}

/// Lines are one part where they can; else what cannot be said is parted from what has variables.
void SourceWriter::AddParts(RunSource& source, std::span<const CodedLine> lines,
                            const std::string& name)
{
    const auto next_name = [&] {
        const std::size_t count = source.lines.size();
        return count == 0 ? name : name + static_cast<char>('a' + count);
    };
    const bool has_codes = std::ranges::any_of(lines, &CodedLine::HasCodes);
    const bool is_said = std::ranges::all_of(lines, IsSaid);
    if (!has_codes || (is_said && thrift_.merges_plain_runs))
        return AddPart(source, lines, next_name(), is_said && thrift_.merges_plain_runs);
    for (std::size_t first = 0; first < lines.size();) {
        std::size_t end = first + 1;
        while (end < lines.size() && lines[end].HasCodes() == lines[first].HasCodes())
            ++end;
        AddPart(source, lines.subspan(first, end - first), next_name(), lines[first].HasCodes());
        first = end;
    }
}

/// What stands before the foot and what stands behind it are parts of their own.
void SourceWriter::WriteRun(std::size_t family, std::size_t number, const std::string& name)
{
    const SharedRun& run = plan_.families[family].runs[number];
    RunSource& source = runs_[family].emplace_back();
    const std::span<const CodedLine> lines(run.lines);
    const std::size_t foot = FootOfRun(run);
    if (foot == npos)
        return AddParts(source, lines, name);
    if (foot > 0)
        AddParts(source, lines.first(foot), name);
    source.foot = source.lines.size();
    AddParts(source, lines.subspan(foot), name);
}

void SourceWriter::WriteLine(std::string_view line)
{
    list_.append(line).append(kCrLf);
    if (!line.starts_with(';'))
        ++count_;
}

/// The page references of the menus that the parts have.
std::string SourceWriter::MenuDefinitions() const
{
    std::vector<const MenuForm*> forms;
    for (const PageFamily& family : plan_.families)
        for (const SharedRun& run : family.runs)
            for (const CodedLine& line : run.lines)
                line.AddForms(forms);
    if (HasTemplated())
        for (const CodedLine& line : plan_.fit.coded)
            line.AddForms(forms);
    std::map<int, std::string> definitions;
    for (const MenuForm* const form : forms)
        definitions[form->number] =
            Joined({"??", std::to_string(form->number), " = ", form->yes, "|", form->no, "\r\n"});
    std::string text;
    for (const auto& [number, definition] : definitions)
        text += definition;
    if (!text.empty())
        text.insert(0, "; An entry of a menu, on its own page and on the others: !1 is the page, "
                       "!2 what it says.\r\n");
    return text;
}

/// What stands above the pages. The variable is defined where some line needs it.
std::string SourceWriter::Header() const
{
    std::string header = Joined({"; The pages of ", plan_.name,
                                 ", as they were adopted.\r\n; What pages share is in ",
                                 plan_.parts, ", what stands by itself in ", plan_.texts, ".\r\n"});
    if (has_foot_)
        Append(header,
               {"; What you write into ", FootPath(), " stands at the foot of every page.\r\n"});
    const auto has_it = [](const auto& file) { return Contains(file.second, kNothing); };
    if (Contains(list_, kNothing) || Contains(Template(), kNothing) ||
        std::ranges::any_of(files_.Files(), has_it))
        Append(header,
               {"; ", kNothing,
                " is nothing: it keeps a line's text from being taken for a word of the list.\r\n"
                "@@08= \r\n"});
    header += MenuDefinitions();
    if (plan_.writes_above)
        header += "@DIR1 = ..\\\r\n";
    return header;
}

void SourceWriter::WriteLines(std::span<const std::string_view> lines, const PlannedPage& page)
{
    if (lines.empty())
        return;
    if (lines.size() > thrift_.longest) {
        std::string text = WithEnds(lines);
        text.resize(text.size() - kCrLf.size());
        return WriteLine(SayAsItIs(text, page.name, files_));
    }
    const Sources sources = SayLines(lines, page.name, files_);
    if (sources.size() <= kLongestInList) {
        for (const std::string& source : sources)
            WriteLine(source);
        return;
    }
    WriteLine("++" + files_.AddText(page.name, WithEnds(sources)));
    count_ += sources.size() - 1;
}

/// The line behind the title is empty or becomes so, which a build drops.
void SourceWriter::WriteTemplated(const PlannedPage& page)
{
    const FittedPage& fitted =
        plan_.fit.pages[static_cast<std::size_t>(&page - plan_.pages.data())];
    for (const std::string& directive : fitted.directives)
        WriteLine(directive);
    if (fitted.directives.empty())
        WriteLine("");
    WriteSpan(page, {fitted.first, fitted.end});
}

bool SourceWriter::HasTemplated() const
{
    return std::ranges::find(plan_.pages, Way::templated, &PlannedPage::way) != plan_.pages.end();
}

void SourceWriter::WriteShared(const PlannedPage& page)
{
    const std::size_t number = static_cast<std::size_t>(&page - plan_.pages.data());
    const std::vector<SharedRun>& runs = plan_.families[page.family].runs;
    const std::size_t foot = FootOf(page.page->lines);
    std::size_t next = 0;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const std::size_t start = runs[i].starts[number];
        if (start == npos)
            continue;
        WriteSpan(page, {next, start});
        const std::size_t foot_of_run = FootOfRun(runs[i]);
        WriteSource(runs_[page.family][i], foot_of_run != npos && start + foot_of_run == foot);
        next = start + runs[i].lines.size();
    }
    WriteSpan(page, {next, page.page->lines.size()});
}

/// The lines of a run or a piece.
void SourceWriter::WriteSource(const RunSource& source, bool has_foot)
{
    for (std::size_t i = 0; i < source.lines.size(); ++i) {
        if (has_foot && i == source.foot)
            WriteFoot();
        WriteLine(source.lines[i]);
    }
    count_ += source.count - source.lines.size();
}

/// The part is empty: it is there for what all pages are to have.
void SourceWriter::WriteFoot()
{
    if (!has_foot_)
        files_.AddPart(kFootPart, "");
    has_foot_ = true;
    WriteLine("++" + FootPath());
}

void SourceWriter::WritePiece(std::size_t piece)
{
    const auto [known, is_new] = pieces_.try_emplace(piece);
    if (is_new) {
        std::vector<CodedLine> lines;
        for (const std::string_view line : plan_.pieces.pieces[piece])
            lines.emplace_back(std::string(line));
        AddPart(known->second, lines, "piece" + std::to_string(pieces_.size()),
                thrift_.merges_plain_runs && std::ranges::all_of(lines, IsSaid));
    }
    WriteSource(known->second, false);
}

void SourceWriter::WriteSpan(const PlannedPage& page, const OwnSpan& span)
{
    const std::size_t foot = FootOf(page.page->lines);
    if (page.way == Way::templated || foot < span.first || foot >= span.end)
        return WriteOwn(page, span);
    WriteOwn(page, {span.first, foot});
    WriteFoot();
    WriteOwn(page, {foot, span.end});
}

/// A page's own lines, and the pieces among them that others have, too.
void SourceWriter::WriteOwn(const PlannedPage& page, const OwnSpan& span)
{
    const std::span<const std::string_view> lines(page.page->lines);
    std::size_t next = span.first;
    for (const PiecePlace& place :
         plan_.pieces.places[static_cast<std::size_t>(&page - plan_.pages.data())]) {
        if (place.first < next || place.first >= span.end ||
            span.end - span.first > thrift_.longest)
            continue;
        WriteLines(lines.subspan(next, place.first - next), page);
        WritePiece(place.piece);
        next = place.first + plan_.pieces.pieces[place.piece].size();
    }
    WriteLines(lines.subspan(next, span.end - next), page);
}

/// Text without the end of its last line.
std::string_view WithoutLastEnd(std::string_view text)
{
    if (text.ends_with('\n'))
        text.remove_suffix(1);
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    return text;
}

void SourceWriter::WritePage(const PlannedPage& page)
{
    WriteLine(";");
    WriteLine("@FILE = " + page.name);
    WriteLine("@TITLE = " + page.title);
    if (page.way == Way::templated)
        return WriteTemplated(page);
    WriteLine("@NAKED");
    if (page.way == Way::as_is) {
        if (!page.page->bytes.empty())
            WriteLine(SayAsItIs(WithoutLastEnd(page.page->bytes), page.name, files_));
        return;
    }
    const std::size_t lines = page.page->lines.size();
    if (page.way == Way::shared)
        WriteShared(page);
    else
        WriteSpan(page, {0, lines});
    if (FootOf(page.page->lines) == lines)
        WriteFoot();
}

/// The runs of a family that most of its pages have.
std::vector<std::size_t> CommonRuns(const PageFamily& family)
{
    std::vector<std::size_t> common;
    for (std::size_t i = 0; i < family.runs.size(); ++i) {
        const auto having = std::ranges::count_if(
            family.pages, [&](std::size_t page) { return family.runs[i].starts[page] != npos; });
        if (static_cast<std::size_t>(having) * 2 > family.pages.size())
            common.push_back(i);
    }
    return common;
}

/// How many lines pages have of their own between two runs, or before the first one and behind the
/// last one when there is none (npos); of all pages that have both, together.
std::size_t OwnLines(const SectionPlan& plan, const PageFamily& family, std::size_t before,
                     std::size_t behind)
{
    std::size_t lines = 0;
    for (const std::size_t page : family.pages) {
        const std::size_t start = before == npos ? 0 : family.runs[before].starts[page];
        const std::size_t end =
            behind == npos ? plan.pages[page].page->lines.size() : family.runs[behind].starts[page];
        if (start == npos || end == npos)
            continue;
        lines += end - start - (before == npos ? 0 : family.runs[before].lines.size());
    }
    return lines;
}

/// How many of the common runs are a head: behind them pages have most of their own.
std::size_t HeadSize(const SectionPlan& plan, const PageFamily& family)
{
    const std::vector<std::size_t> common = CommonRuns(family);
    std::size_t size = 0;
    std::size_t most = 0;
    for (std::size_t i = 0; i <= common.size(); ++i) {
        const std::size_t own = OwnLines(plan, family, i == 0 ? npos : common[i - 1],
                                         i == common.size() ? npos : common[i]);
        if (own > most) {
            size = i;
            most = own;
        }
    }
    return size;
}

/// The parts that most pages have, with the mark where these have most of their own.
Sources SourceWriter::SharedTemplate() const
{
    Sources lines = {"; What most pages share. Adopted pages include the same parts."};
    const std::string foot_line = "+" + FootPath();
    const std::vector<std::size_t> common = CommonRuns(plan_.families.front());
    const std::size_t head = HeadSize(plan_, plan_.families.front());
    for (std::size_t i = 0; i <= common.size(); ++i) {
        if (i == head)
            lines.emplace_back("<!--BODY HERE-->");
        if (i == common.size())
            break;
        const RunSource& run = runs_[0][common[i]];
        for (std::size_t part = 0; part < run.template_lines.size(); ++part) {
            if (has_foot_ && part == run.foot)
                lines.push_back(foot_line);
            lines.push_back(run.template_lines[part]);
        }
    }
    if (has_foot_ && std::ranges::find(lines, foot_line) == lines.end())
        lines.push_back(foot_line);
    return lines;
}

std::string SourceWriter::Template() const
{
    Sources lines;
    if (HasTemplated()) {
        lines = plan_.fit.head;
        lines.push_back(plan_.fit.mark);
        lines.insert(lines.end(), plan_.fit.tail.begin(), plan_.fit.tail.end());
    } else if (!plan_.families.empty()) {
        return WithEnds(SharedTemplate());
    } else {
        lines = {"<html>",  "<head>", "<title>@TITLE</title>",
                 "</head>", "<body>", "<!--BODY HERE-->",
                 "</body>", "</html>"};
    }
    if (has_foot_)
        lines.insert(std::ranges::find_if(lines, IsFoot), "+" + FootPath());
    return WithEnds(lines);
}

/// Parts are called by where they stand, "head1" and "tail2".
void SourceWriter::WriteRuns(std::size_t family)
{
    runs_.emplace_back();
    const PageFamily& look = plan_.families[family];
    const std::vector<std::size_t> common = CommonRuns(look);
    const std::size_t head = HeadSize(plan_, look);
    const std::size_t first_of_tail = head < common.size() ? common[head] : look.runs.size();
    const std::string prefix = family == 0 ? "" : "look" + std::to_string(family + 1) + "-";
    for (std::size_t i = 0; i < look.runs.size(); ++i) {
        const bool is_head = i < first_of_tail;
        const std::size_t number = is_head ? i + 1 : i - first_of_tail + 1;
        WriteRun(family, i, Joined({prefix, is_head ? "head" : "tail", std::to_string(number)}));
    }
}

SourceTexts SourceWriter::Write()
{
    for (std::size_t family = 0; family < plan_.families.size(); ++family)
        WriteRuns(family);
    for (const PlannedPage& page : plan_.pages)
        WritePage(page);
    SourceTexts texts = files_.Files();
    texts.emplace(kTemplateFile, Template());
    texts.emplace(kPageListFile, Header() + list_);
    return texts;
}

} // namespace

std::size_t FootOf(const std::vector<std::string_view>& lines)
{
    const auto last = std::find_if(lines.rbegin(), lines.rend(), IsFoot);
    return last == lines.rend() ? lines.size()
                                : static_cast<std::size_t>(std::distance(last, lines.rend())) - 1;
}

std::vector<OwnSpan> OwnSpansOf(const SectionPlan& plan, std::size_t page)
{
    const PlannedPage& planned = plan.pages[page];
    if (planned.way == Way::templated)
        return {{plan.fit.pages[page].first, plan.fit.pages[page].end}};
    const std::size_t foot = FootOf(planned.page->lines);
    std::vector<OwnSpan> spans;
    const auto add = [&](std::size_t first, std::size_t end) {
        if (first < foot && foot < end) {
            spans.push_back({first, foot});
            first = foot;
        }
        spans.push_back({first, end});
    };
    std::size_t next = 0;
    if (planned.way == Way::shared)
        for (const SharedRun& run : plan.families[planned.family].runs)
            if (const std::size_t start = run.starts[page]; start != npos) {
                add(next, start);
                next = start + run.lines.size();
            }
    add(next, planned.page->lines.size());
    return spans;
}

SourceTexts MakeSources(const SectionPlan& plan)
{
    for (const Thrift& thrift : kThrifts) {
        SourceWriter writer(plan, thrift);
        SourceTexts texts = writer.Write();
        if (writer.LineCount() <= kMostSourceLines || thrift.longest == 0)
            return texts;
    }
    return {};
}

} // namespace kiv
