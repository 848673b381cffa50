#include "shell/built_sections.h"

#include "inspect/site_recorder.h"
#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "shell/builds.h"
#include "shell/groups.h"
#include "shell/way_back.h"
#include "shell/workspace.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <string_view>
#include <utility>

namespace kiv {

namespace {

/// The first line (1-based) that is `entry`; 0: none is.
int LineOf(std::string_view content, std::string_view entry)
{
    for (int line = 1; !content.empty(); ++line)
        if (TakeLine(content) == entry)
            return line;
    return 0;
}

} // namespace

BuiltSections::BuiltSections(Workspace& workspace)
    : workspace_(workspace), steps_(workspace.machine().reporter), files_(workspace.machine().files)
{
}

/// Builds the section in the current directory and keeps what is to be seen of it.
void BuiltSections::Build()
{
    SiteView& view = views_.emplace_back(files_, workspace_.machine().pictures);
    view.folder = WithSeparator(AbsolutePath(".", files_.CurrentDirectory()));
    steps_.ForgetWarnings();
    SiteRecorder recorder(view);
    OutputRoots& roots = roots_.emplace_back();
    try {
        BuildUnwritten(workspace_, files_, steps_, recorder, roots);
    } catch (const RunError& error) {
        view.error = error;
    }
    recorder.Finish();
    view.warnings = steps_.Warnings();
}

void BuiltSections::BuildAll()
{
    const WayBack way_back(workspace_.machine().files);
    if (!files_.FileExists(kGroupFile))
        return Build();
    const std::vector<std::string> entries = GroupEntries(files_);
    // A build of the group passes by a folder that lacks one of the two, without a word.
    if (files_.FileExists(kPageListFile) || files_.FileExists(kTemplateFile)) {
        built_.insert(UpperCase(files_.RealFolder(".")));
        Build();
    }
    for (const std::string& entry : entries)
        BuildMember(WithSeparator(way_back.Folder()), entry);
}

void BuiltSections::BuildAsPublished()
{
    const bool was_enabled =
        std::exchange(workspace_.EoyEnabled, workspace_.EoyEnabled || workspace_.IsGroup);
    try {
        BuildAll();
    } catch (...) {
        workspace_.EoyEnabled = was_enabled;
        throw;
    }
    workspace_.EoyEnabled = was_enabled;
}

/// A build of the group would end at a member that is not there; here the others are looked at all
/// the same.
void BuiltSections::BuildMember(const std::string& folder, const std::string& entry)
{
    try {
        files_.ChangeDirectory(folder + entry);
        if (!built_.insert(UpperCase(files_.RealFolder("."))).second)
            return; // the list names it twice
    } catch (RunError& error) {
        if (!built_.insert(UpperCase(AbsolutePath(entry, folder))).second)
            return;
        SiteView& view = views_.emplace_back(files_, workspace_.machine().pictures);
        view.folder = WithSeparator(AbsolutePath(entry, folder));
        view.is_there = false;
        roots_.emplace_back();
        const std::string list = folder + std::string(kGroupFile);
        error.where = Place{list, LineOf(files_.ReadFile(list), entry)};
        view.error = error;
        return;
    }
    Build();
}

void BuiltSections::RefuseFailed() const
{
    for (const SiteView& view : views_)
        if (view.error)
            throw RunError(*view.error);
}

void BuiltSections::Link()
{
    for (const SiteView& view : views_)
        group_.push_back(&view);
    if (group_.empty())
        return;
    linked_.emplace(group_, [this] { Pause(); });
    for (SiteView& view : views_) {
        view.group = group_;
        view.linked = &*linked_;
    }
}

} // namespace kiv
