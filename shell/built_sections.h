// A site built in memory, section by section, for those who look at all of it.
#pragma once

#include "builder/output_roots.h"
#include "inspect/linked_site.h"
#include "inspect/site_view.h"
#include "platform/unwritten_files.h"
#include "shell/step_reporter.h"

#include <deque>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kiv {

class Workspace;

/// The section in the working directory and, where it has a group list, its members. Nothing on the
/// disk is touched. An error that ends a build is kept in its view. The machine's reporter is told
/// how far it is, and may end the command with Stopped between two pages.
class BuiltSections {
  public:
    explicit BuiltSections(Workspace& workspace);

    /// Builds the sections with the New Year switch as it is. Throws RunError when there is nothing
    /// to look at.
    void BuildAll();
    /// The same as a build of the group makes it, with the switch on, where there is a group list.
    void BuildAsPublished();
    /// Throws the first error that ended one of the builds.
    void RefuseFailed() const;
    /// Lets the sections see each other and where their pages lead. After BuildAll.
    void Link();
    /// A place between two pages, or two looks at all of them. Throws Stopped when that was asked
    /// for.
    void Pause() { steps_.Pause(); }

    const std::deque<SiteView>& Views() const { return views_; }
    /// The output roots that each of the sections declares.
    const std::vector<OutputRoots>& Roots() const { return roots_; }
    /// With the pages as the builds made them.
    UnwrittenFiles& Made() { return files_; }
    /// After Link; null where there are no sections.
    const LinkedSite* Linked() const { return linked_ ? &*linked_ : nullptr; }

  private:
    void Build();
    void BuildMember(const std::string& folder, const std::string& entry);

    Workspace& workspace_;
    StepReporter steps_;
    UnwrittenFiles files_;           // of all sections, so that their pages see each other
    std::vector<OutputRoots> roots_; // of views_
    std::deque<SiteView> views_;
    std::set<std::string> built_; // folders, upper-cased
    std::vector<const SiteView*> group_;
    std::optional<LinkedSite> linked_;
};

} // namespace kiv
