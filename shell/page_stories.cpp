#include "shell/page_stories.h"

#include "builder/trace.h"
#include "platform/drive_path.h"
#include "platform/silent_reporter.h"
#include "platform/unwritten_files.h"
#include "shell/builds.h"
#include "shell/story_collector.h"
#include "shell/way_back.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <set>

namespace kiv {

namespace {

PageStory Kept(const LineStory& story)
{
    PageStory kept{{}, story.before, {}, story.count, story.reason};
    for (const SourceSpan& source : story.sources)
        kept.sources.push_back(Told(source));
    for (const TracedStep& step : story.steps) {
        kept.steps.push_back({step.name, step.text, step.after, {}});
        if (!step.from.file.empty())
            kept.steps.back().from = Told(step.from);
    }
    return kept;
}

/// Takes the pages of a build and the lines of one of them.
class PageTrace : public Trace {
  public:
    PageTrace(std::string_view asked, PageStories& told) : asked_(asked), told_(told) {}

    bool BeginPage(const TracedPage& page) override
    {
        const BuiltPage built{std::string(page.name), std::string(page.path)};
        if (paths_.insert(built.path).second)
            told_.pages.push_back(built);
        const bool is_wanted = told_.page.path.empty() || EqualsNoCase(built.path, asked_) ||
                               EqualsNoCase(built.path, told_.page.path);
        if (!is_wanted)
            return false;
        told_.page = built;
        told_.lines.clear();
        told_.stories.clear();
        return true;
    }

    void TakeLine(const LineStory& story) override
    {
        if (story.line == 0 && !story.is_failed)
            return;
        const std::size_t index = told_.stories.size();
        told_.stories.push_back(Kept(story));
        if (story.is_failed)
            told_.lines.push_back({0, story.before, index, 1});
        std::string_view rest = story.Text();
        for (int k = 0; k < story.count; ++k) {
            const std::string_view line = rest.empty() ? rest : kiv::TakeLine(rest);
            told_.lines.push_back({story.line + k, std::string(line), index, k + 1});
        }
    }

    void TakeUnused(const LineStory&) override {}

  private:
    std::string_view asked_;
    PageStories& told_;
    std::set<std::string> paths_;
};

std::string ErrorWords(const RunError& error, bool has_pages)
{
    const std::string where = error.where.IsKnown() ? " (" + error.where.Text() + ")" : "";
    const std::string hint = error.hint.empty() ? "" : " " + error.hint;
    return Joined({"The build ended in an error: ", error.text, where, ".", hint,
                   has_pages ? " What it had made by then is shown." : ""});
}

std::string NoPageWords(const Reporter& reporter)
{
    if (reporter.Warnings().empty())
        return "No page is made here.";
    return "No page is made here: " + reporter.Warnings().front().text;
}

} // namespace

PageStories TellPage(Workspace& workspace, std::string_view path, std::string_view folder)
{
    Files& real = workspace.machine().files;
    real.Refresh(); // the sources may be others than those that the last command saw
    PageStories told;
    SilentReporter reporter;
    PageTrace trace(path, told);
    try {
        const WayBack way_back(real);
        if (!folder.empty())
            real.ChangeDirectory(folder);
        told.folder = WithSeparator(AbsolutePath(".", real.CurrentDirectory()));
        UnwrittenFiles files(real);
        BuildUnwritten(workspace, files, reporter, trace);
        if (told.pages.empty())
            told.trouble = NoPageWords(reporter);
    } catch (const RunError& error) {
        told.trouble = ErrorWords(error, !told.pages.empty());
    }
    return told;
}

} // namespace kiv
