#include "shell/site_outputs.h"

#include "shell/built_sections.h"
#include "shell/workspace.h"
#include "text/windows1252.h"

#include <set>

namespace kiv {

namespace {

/// A source, a list or another file that is nobody's business on a server.
bool IsSource(const std::deque<SiteView>& views, const std::string& upper)
{
    for (const SiteView& view : views)
        for (const SourceText& source : view.sources)
            if (UpperCase(source.path) == upper)
                return true;
    return false;
}

void AddPages(Files& disk, BuiltSections& sections, SiteOutputs& outputs,
              std::set<std::string>& known)
{
    for (const SiteView& view : sections.Views())
        for (const PageText& page : view.pages) {
            if (page.number == 0 || !known.insert(UpperCase(page.path)).second)
                continue;
            if (!disk.FileExists(page.path)) {
                outputs.absent.push_back(page.path);
                continue;
            }
            outputs.files.push_back(page.path);
            const std::string* const made = sections.Made().Content(page.path);
            if (made != nullptr && *made != disk.ReadFile(page.path))
                outputs.stale.push_back(page.path);
        }
}

} // namespace

SiteOutputs OutputsOf(Workspace& workspace)
{
    BuiltSections sections(workspace);
    sections.BuildAsPublished();
    sections.RefuseFailed();
    sections.Link();
    Files& disk = workspace.machine().files;
    SiteOutputs outputs;
    std::set<std::string> known;
    AddPages(disk, sections, outputs, known);
    if (sections.Linked() == nullptr)
        return outputs;
    for (const std::string& path : sections.Linked()->UsedFiles()) {
        const std::string upper = UpperCase(path);
        if (sections.Linked()->IsInside(path) && !known.contains(upper) &&
            !IsSource(sections.Views(), upper) && disk.FileExists(path)) {
            known.insert(upper);
            outputs.files.push_back(path);
        }
    }
    return outputs;
}

} // namespace kiv
