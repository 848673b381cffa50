#include "shell/site_check.h"

#include "inspect/linked_site.h"
#include "inspect/site_recorder.h"
#include "inspect/site_view.h"
#include "platform/drive_path.h"
#include "platform/silent_reporter.h"
#include "platform/site_files.h"
#include "platform/unwritten_files.h"
#include "shell/builds.h"
#include "shell/groups.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>
#include <set>

namespace kiv {

namespace {

/// Goes back to the folder that a check began in, however it ends.
class WayBack {
  public:
    explicit WayBack(Files& files) : files_(files), folder_(files.CurrentDirectory()) {}
    WayBack(const WayBack&) = delete;
    WayBack& operator=(const WayBack&) = delete;
    ~WayBack()
    {
        try {
            files_.ChangeDirectory(folder_);
        } catch (const RunError&) {
            // It is gone; whatever comes next will say so.
        }
    }
    const std::string& Folder() const { return folder_; }

  private:
    Files& files_;
    std::string folder_;
};

class SiteCheck {
  public:
    explicit SiteCheck(Workspace& workspace)
        : workspace_(workspace), files_(workspace.machine().files)
    {
    }

    /// Builds the section in the current directory and keeps what is to be seen of it.
    void Build()
    {
        SiteView& view = views_.emplace_back(files_, workspace_.machine().pictures);
        view.folder = WithSeparator(AbsolutePath(".", files_.CurrentDirectory()));
        SilentReporter reporter;
        SiteRecorder recorder(view);
        try {
            BuildUnwritten(workspace_, files_, reporter, recorder);
        } catch (const RunError& error) {
            view.error = error;
        }
        recorder.Finish();
        view.warnings = reporter.Warnings();
    }

    void BuildGroup(const std::string& folder)
    {
        if (!files_.FileExists(kGroupFile))
            return Build();
        const std::vector<std::string> entries = GroupEntries(files_);
        // A build of the group passes by a folder that lacks one of the two, without a word.
        if (files_.FileExists(kPageListFile) || files_.FileExists(kTemplateFile)) {
            built_.insert(UpperCase(files_.RealFolder(".")));
            Build();
        }
        for (const std::string& entry : entries)
            BuildMember(WithSeparator(folder), entry);
    }

    /// Lets the sections see each other. After the last of them was built.
    void Link()
    {
        for (const SiteView& view : views_)
            group_.push_back(&view);
        if (group_.empty())
            return;
        linked_.emplace(group_);
        for (SiteView& view : views_) {
            view.group = group_;
            view.linked = &*linked_;
        }
    }

    Inspection Findings(const FindingChoice& choice) const
    {
        Inspection all;
        for (const SiteView& view : views_) {
            Inspection one = Inspect(view, choice);
            std::ranges::move(one.findings, std::back_inserter(all.findings));
            std::ranges::move(one.external, std::back_inserter(all.external));
            all.switched_off += one.switched_off;
        }
        std::ranges::stable_sort(all.findings, StandsBefore);
        return all;
    }

  private:
    /// A build of the group would end at a member that is not there; here the others are looked at
    /// all the same.
    void BuildMember(const std::string& folder, const std::string& entry)
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
            error.where = Place{folder + std::string(kGroupFile)};
            view.error = error;
            return;
        }
        Build();
    }

    Workspace& workspace_;
    UnwrittenFiles files_; // of all sections, so that their pages see each other
    std::deque<SiteView> views_;
    std::set<std::string> built_; // folders, upper-cased
    std::vector<const SiteView*> group_;
    std::optional<LinkedSite> linked_;
};

/// "; 2 are switched off by _check.txt", or nothing.
std::string SwitchedOffText(std::size_t count)
{
    if (count == 0)
        return "";
    return Joined({"; ", Decimal(static_cast<int>(count)), count == 1 ? " is" : " are",
                   " switched off by ", kCheckFile});
}

} // namespace

Inspection CheckSite(Workspace& workspace, const FindingChoice& choice)
{
    workspace.machine().files.Refresh(); // the sources may be others than the last command saw
    const WayBack way_back(workspace.machine().files);
    SiteCheck check(workspace);
    check.BuildGroup(way_back.Folder());
    check.Link();
    return check.Findings(choice);
}

void CheckWorkDir(Workspace& workspace, const FindingChoice& choice)
{
    workspace.Checked = CheckSite(workspace, choice);
    workspace.machine().reporter.Status(Joined({"Check: ", CountText(workspace.Checked->findings),
                                                SwitchedOffText(workspace.Checked->switched_off)}));
}

} // namespace kiv
