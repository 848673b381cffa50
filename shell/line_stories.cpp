#include "shell/line_stories.h"

#include "platform/drive_path.h"
#include "platform/silent_reporter.h"
#include "platform/site_files.h"
#include "platform/unwritten_files.h"
#include "shell/builds.h"
#include "shell/story_collector.h"
#include "shell/workspace.h"
#include "text/text.h"

#include <map>
#include <utility>

namespace kiv {

namespace {

/// Says where the sources lie outside, and what they are called in the site's folder.
class PlaceNames {
  public:
    explicit PlaceNames(Machine& machine)
        : paths_(machine.native_paths), folder_(WithSeparator(machine.files.CurrentDirectory()))
    {
    }

    std::string Shown(std::string_view path) const
    {
        return std::string(StartsWithNoCase(path, folder_) ? path.substr(folder_.size()) : path);
    }

    void AddTo(ToldPlace& place)
    {
        const auto [name, is_new] = natives_.try_emplace(place.file);
        if (is_new)
            name->second = paths_.ToNative(place.file);
        place.native = name->second;
        place.shown = Shown(place.file);
    }

  private:
    NativePaths& paths_;
    std::string folder_;
    std::map<std::string, std::string> natives_; // by drive path
};

void AddNames(Machine& machine, Stories& stories)
{
    PlaceNames names(machine);
    stories.shown = names.Shown(stories.path);
    for (ToldLine& line : stories.lines) {
        line.page_shown = names.Shown(line.page_path);
        for (ToldPlace& source : line.sources)
            names.AddTo(source);
        for (ToldStep& step : line.steps)
            if (step.from)
                names.AddTo(*step.from);
    }
}

/// Runs the build for a question.
Stories Collect(Workspace& workspace, const StoryQuestion& question, Reporter& reporter,
                StoryCollector::Takes takes)
{
    UnwrittenFiles files(workspace.machine().files);
    StoryCollector collector(question, files.CurrentDirectory(), takes);
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

std::string SectionOf(Files& files, std::string_view path)
{
    for (std::string_view folder = FolderOf(path); folder != path; folder = FolderOf(path)) {
        if (files.FileExists(WithSeparator(folder).append(kPageListFile)))
            return std::string(folder);
        path = folder;
    }
    return {};
}

Stories TellStories(Workspace& workspace, const StoryQuestion& question, Reporter& reporter)
{
    Stories stories = Collect(workspace, question, reporter, StoryCollector::Takes::pages);
    if (stories.kind == Stories::Kind::none) {
        SilentReporter silent; // what the build says was said already
        stories = Collect(workspace, question, silent, StoryCollector::Takes::sources);
    }
    if (stories.error && stories.lines.empty())
        throw RunError(*stories.error);
    AddNames(workspace.machine(), stories);
    return stories;
}

} // namespace kiv
