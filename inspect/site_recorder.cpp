#include "inspect/site_recorder.h"

#include "builder/page_list_reader.h"
#include "inspect/open_blocks.h"
#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

/// Whether lines of the page list are not read because of these. A "@@stop" in the last line ends
/// nothing.
bool EndsReading(const LineStory& story)
{
    if (story.reason == kOpenStop)
        return !story.sources.empty() && story.sources[0].last > story.sources[0].first;
    return story.reason == kReadEnded || story.reason.ends_with(kReadEndsHere);
}

} // namespace

std::size_t SiteRecorder::IndexOf(std::string_view path)
{
    if (path == last_path_)
        return last_index_;
    const auto [entry, is_new] = sources_.try_emplace(UpperCase(path), view_.sources.size());
    if (is_new)
        view_.sources.push_back({.path = std::string(path)});
    last_path_ = path;
    last_index_ = entry->second;
    return last_index_;
}

SourceLines SiteRecorder::Lines(const SourceSpan& span)
{
    if (span.file.empty())
        return {};
    return {IndexOf(span.file), span.first, span.last};
}

bool SiteRecorder::BeginPage(const TracedPage& page)
{
    EndPage();
    const auto [entry, is_new] = pages_.try_emplace(UpperCase(page.path), view_.pages.size());
    if (is_new)
        view_.pages.emplace_back();
    page_ = entry->second;
    // A later page at the same path takes the place of the earlier one.
    PageText& kept = view_.pages[page_];
    const SourceLines from = Lines(page.from);
    if (!is_new && page.number > 0 && !(kept.from == from))
        view_.twice.push_back({kept.from, from});
    kept = {std::string(page.name), std::string(page.path),  page.number, {}, {},
            std::string(page.id),   std::string(page.group), from,        {}};
    kept.title = page.title;
    kept.description = page.description;
    kept.noindex = page.noindex;
    kept.redirects = page.redirects;
    return true;
}

/// A wrapper ends on the page that opens it: nobody writes one that the next page ends.
void SiteRecorder::EndPage()
{
    if (open_wrapper_ && IsNew(view_.unclosed, open_wrapper_->lines, open_wrapper_->name))
        view_.unclosed.push_back(*std::move(open_wrapper_));
    open_wrapper_.reset();
}

void SiteRecorder::TakePart(const LineStory& story)
{
    // A stretch that is switched off becomes a line, too; a block's tag begins it.
    const bool is_stretch = !story.sources.empty() &&
                            story.sources.front().last > story.sources.front().first &&
                            !story.steps.empty() && !story.steps.front().name.starts_with('<');
    if (story.sources.empty() || story.part == LinePart::none || is_stretch)
        return;
    const SourceLines lines = Lines(story.sources.front());
    if (lines.source == SourceLines::kNone)
        return;
    std::vector<LineParts>& parts = view_.sources[lines.source].parts;
    if (parts.size() < static_cast<std::size_t>(lines.last))
        parts.resize(static_cast<std::size_t>(lines.last));
    for (auto line = static_cast<std::size_t>(lines.first);
         line <= static_cast<std::size_t>(lines.last); ++line) {
        parts[line - 1].Add(story.part);
        if (!story.role.empty())
            parts[line - 1].AddRole();
    }
}

/// What was made of lines while they were read is a step of the line that came of it.
void SiteRecorder::TakeSteps(const LineStory& story)
{
    for (const TracedStep& step : story.steps) {
        if (!step.from.file.empty())
            view_.used.push_back(Lines(step.from));
        if (story.sources.empty())
            continue;
        const SourceSpan& source = story.sources.front();
        if (step.name == kYearEndMark && source.last > source.first)
            view_.skipped.push_back({Lines(source), SkippedLines::Mark::year_end});
        else if (step.name.starts_with("<zu"))
            view_.blocks.push_back({Lines(source), step.name});
    }
}

/// Whether the line is one of a file that stands in the place of the line that names it.
bool SiteRecorder::IsOfFile(const LineStory& story)
{
    return !story.sources.empty() && !story.steps.empty() &&
           story.steps.back().from == story.sources.back();
}

/// The first of its sources; of a line of a file that stands in the place of the line that names
/// it, its own. There are sources.
const SourceSpan& SiteRecorder::OriginOf(const LineStory& story)
{
    return IsOfFile(story) ? story.sources.back() : story.sources.front();
}

void SiteRecorder::TakeLine(const LineStory& story)
{
    TakePart(story);
    TakeSteps(story);
    if (story.line == 0) {
        if (!story.sources.empty())
            view_.unused.push_back({Lines(story.sources.front()), story.reason});
        return;
    }
    std::vector<SourceLines>& origins = view_.pages[page_].origins;
    const SourceLines origin = story.sources.empty() ? SourceLines() : Lines(OriginOf(story));
    const auto end =
        static_cast<std::size_t>(story.line) - 1 + static_cast<std::size_t>(story.count);
    if (origins.size() < end)
        origins.resize(end);
    for (std::size_t index = static_cast<std::size_t>(story.line) - 1; index < end; ++index)
        origins[index] = origin;
    if (!story.steps.empty() && story.steps.back().name == kFileTextMark && IsOfFile(story))
        for (std::size_t line = static_cast<std::size_t>(story.line); line <= end; ++line)
            view_.pages[page_].as_is.insert(static_cast<int>(line));
}

void SiteRecorder::TakeUnused(const LineStory& story)
{
    TakePart(story);
    TakeSteps(story);
    view_.list_ended_early |= EndsReading(story);
    for (const SourceSpan& span : story.sources) {
        view_.unused.push_back({Lines(span), story.reason});
        if (story.reason == kNewYearOff)
            view_.skipped.push_back({Lines(span), SkippedLines::Mark::year_end});
        else if (story.reason == kOpenStop)
            view_.skipped.push_back({Lines(span), SkippedLines::Mark::stop});
    }
}

void SiteRecorder::TakeBound(const TracedBound& bound)
{
    view_.bounds.push_back({std::string(bound.what), bound.count, bound.most,
                            Place{bound.where.file, bound.where.first, bound.page}});
}

void SiteRecorder::TakeDefinition(std::string_view mark, const SourceSpan& from)
{
    const SourceLines lines = Lines(from);
    for (const NumberDefinition& known : view_.definitions)
        if (known.lines == lines)
            return; // every pass tells of them
    view_.definitions.push_back({std::string(mark), lines});
}

ConstructUse SiteRecorder::Kept(const LineStory& story, const TracedUse& use)
{
    ConstructUse kept{
        std::string(use.name), std::string(use.text), Lines(story.sources.front()), {}};
    for (const TracedStep& step : story.steps)
        if (!step.from.file.empty())
            kept.brought_by.push_back(Lines(step.from));
    return kept;
}

bool SiteRecorder::IsNew(const std::vector<ConstructUse>& uses, const SourceLines& lines,
                         std::string_view key)
{
    return known_uses_.emplace(&uses, lines.source, lines.first, std::string(key)).second;
}

void SiteRecorder::Add(std::vector<ConstructUse>& uses, const LineStory& story,
                       const TracedUse& use, std::string_view key)
{
    // A line of the program's own has no source.
    if (!story.sources.empty() && IsNew(uses, Lines(story.sources.front()), key))
        uses.push_back(Kept(story, use));
}

void SiteRecorder::TakeWrapper(const LineStory& story, const TracedUse& use)
{
    if (use.name == "]]") {
        if (!open_wrapper_)
            Add(view_.unopened, story, use, use.name);
        open_wrapper_.reset();
        return;
    }
    EndPage(); // its second half is lost to this one's
    if (!story.sources.empty())
        open_wrapper_ = Kept(story, use);
}

void SiteRecorder::TakeUse(const LineStory& story, const TracedUse& use)
{
    const bool is_wrapper = use.name.starts_with("[[");
    if (is_wrapper || use.name == "]]")
        TakeWrapper(story, use);
    if (!use.is_closed)
        Add(view_.unclosed, story, use, use.name);
    if (use.name.size() != 3 || use.name.back() < '0' || use.name.back() > '9')
        return;
    const bool is_defined =
        std::ranges::any_of(view_.definitions, [&](const NumberDefinition& definition) {
            return definition.mark == use.name;
        });
    if (!view_.numbers_used.contains(use.name))
        view_.numbers_used.emplace(use.name);
    if (!is_defined)
        Add(view_.undefined, story, use, use.name);
    else if (use.name.starts_with('?') && use.is_closed)
        Add(view_.references, story, use, use.text);
}

void SiteRecorder::ReadSource(SourceText& source) const
{
    const std::string& folder = view_.folder;
    source.is_page_list = EqualsNoCase(source.path, folder + std::string(kPageListFile));
    source.is_template = EqualsNoCase(source.path, folder + std::string(kTemplateFile));
    try {
        source.bytes = view_.files.ReadFile(source.path);
    } catch (const RunError&) {
        return; // the build has read it; whoever took it away since is no matter of the site's
    }
    for (std::string_view rest = source.bytes; !rest.empty();)
        source.lines.push_back(kiv::TakeLine(rest));
}

void SiteRecorder::AddIfThere(const std::string& path)
{
    try {
        if (view_.files.FileExists(path))
            IndexOf(path);
    } catch (const RunError&) {
        return; // the build has met the same error, and tells of it
    }
}

void SiteRecorder::Finish()
{
    if (!view_.error)
        EndPage();
    else if (const std::string& file = view_.error->where.file; !file.empty())
        IndexOf(file); // nothing may be told of it: its reading ended in the error
    for (const std::string_view list : {kPageListFile, kTemplateFile})
        AddIfThere(view_.folder + std::string(list));
    for (SourceText& source : view_.sources)
        ReadSource(source);
    for (const OpenBlock& block : OpenBlocks(view_))
        view_.list_ended_early |= block.takes_pages || block.takes_switch;
    for (PageText& page : view_.pages)
        if (view_.files.FileExists(page.path))
            page.bytes = view_.files.ReadFile(page.path);
    const std::vector<std::string>& written = view_.files.Written();
    for (std::size_t index = written_before_; index < written.size(); ++index)
        view_.written.push_back(AbsolutePath(written[index], view_.files.CurrentDirectory()));
}

} // namespace kiv
