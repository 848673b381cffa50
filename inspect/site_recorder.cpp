#include "inspect/site_recorder.h"

#include "builder/page_list_reader.h"
#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "text/text.h"
#include "text/windows1252.h"

namespace kiv {

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
    const auto [entry, is_new] = pages_.try_emplace(UpperCase(page.path), view_.pages.size());
    if (is_new)
        view_.pages.emplace_back();
    page_ = entry->second;
    // A later page at the same path takes the place of the earlier one.
    view_.pages[page_] = {std::string(page.name), std::string(page.path), page.number, {}, {}};
    return true;
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

void SiteRecorder::TakeLine(const LineStory& story)
{
    TakeSteps(story);
    if (story.line == 0) {
        if (!story.sources.empty())
            view_.unused.push_back({Lines(story.sources.front()), story.reason});
        return;
    }
    std::vector<SourceLines>& origins = view_.pages[page_].origins;
    const SourceLines origin = story.sources.empty() ? SourceLines() : Lines(story.sources.front());
    const auto end =
        static_cast<std::size_t>(story.line) - 1 + static_cast<std::size_t>(story.count);
    if (origins.size() < end)
        origins.resize(end);
    for (std::size_t index = static_cast<std::size_t>(story.line) - 1; index < end; ++index)
        origins[index] = origin;
}

void SiteRecorder::TakeUnused(const LineStory& story)
{
    TakeSteps(story);
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
    for (const std::string_view list : {kPageListFile, kTemplateFile})
        AddIfThere(view_.folder + std::string(list));
    for (SourceText& source : view_.sources)
        ReadSource(source);
    for (PageText& page : view_.pages)
        if (view_.files.FileExists(page.path))
            page.bytes = view_.files.ReadFile(page.path);
    const std::vector<std::string>& written = view_.files.Written();
    for (std::size_t index = written_before_; index < written.size(); ++index)
        view_.written.push_back(AbsolutePath(written[index], view_.files.CurrentDirectory()));
}

} // namespace kiv
