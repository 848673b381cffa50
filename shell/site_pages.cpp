#include "shell/site_pages.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/silent_reporter.h"
#include "platform/site_files.h"
#include "platform/unwritten_files.h"
#include "shell/groups.h"
#include "shell/list_files.h"
#include "shell/way_back.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <map>
#include <utility>

namespace kiv {

namespace {

std::string TroubleText(const RunError& error)
{
    const std::string where = error.where.IsKnown() ? " (" + error.where.Text() + ")" : "";
    return Joined({"The page list cannot be read: ", error.text, where, ".",
                   error.hint.empty() ? "" : " ", error.hint});
}

/// A page at whose path a later one is written is gone when the build ends.
void MarkCovered(std::vector<SitePage>& pages)
{
    std::map<std::string, int> last;
    for (std::size_t i = pages.size(); i-- > 0;) {
        SitePage& page = pages[i];
        const auto [place, is_last] =
            last.try_emplace(UpperCase(page.listed.path), page.listed.number);
        if (!is_last)
            page.covered_by = place->second;
    }
}

class ListReader {
  public:
    explicit ListReader(Workspace& workspace)
        : workspace_(workspace), files_(workspace.machine().files)
    {
    }

    /// The pages of the current directory.
    void Read(SiteSection& section)
    {
        try {
            if (!files_.FileExists(kPageListFile)) {
                section.trouble = Joined({"There is no page list, ", kPageListFile, ", here."});
                return;
            }
            ReadList(section);
        } catch (const RunError& error) {
            section.trouble = TroubleText(error);
        }
        MarkCovered(section.pages);
    }

    /// The working directory, `folder`, and the members of its group.
    SitePages ReadGroup(const std::string& folder)
    {
        SitePages site;
        std::vector<std::string> entries;
        SiteSection own{ThisDirNameOf(folder), WithSeparator(folder), {}, {}};
        try {
            site.is_group = files_.FileExists(kGroupFile);
            if (site.is_group)
                entries = GroupEntries(files_);
        } catch (const RunError& error) {
            own.trouble = error.text;
        }
        // A group's own folder need not have pages.
        if (!site.is_group || !own.trouble.empty() || files_.FileExists(kPageListFile)) {
            if (own.trouble.empty())
                Read(own);
            site.sections.push_back(std::move(own));
        }
        for (const std::string& entry : entries)
            site.sections.push_back(ReadMember(folder, entry));
        return site;
    }

  private:
    void ReadList(SiteSection& section)
    {
        SilentReporter reporter;
        Machine& real = workspace_.machine();
        Machine machine{files_,        real.native_paths, real.clock,   real.clipboard,
                        real.programs, reporter,          real.pictures};
        const BuildOptions options{.EoyEnabled = workspace_.EoyEnabled,
                                   .UploadCommand = {},
                                   .addresses = LoadAddresses(files_),
                                   .program_start = workspace_.ProgramStart()};
        BlockMemory blocks = workspace_.memory.blocks;
        for (ListedPage& page : ListPages(machine, options, blocks))
            section.pages.push_back({std::move(page)});
        if (section.pages.empty())
            section.trouble = reporter.Warnings().empty()
                                  ? "The page list names no page: each begins with \"@FILE =\"."
                                  : reporter.Warnings().front().text;
    }

    SiteSection ReadMember(const std::string& above, const std::string& entry)
    {
        const std::string path = WithSeparator(above) + entry; // as a build puts it together
        SiteSection section{entry, WithSeparator(AbsolutePath(path, above)), {}, {}};
        try {
            files_.ChangeDirectory(path);
        } catch (const RunError& error) {
            section.trouble = error.text;
            return section;
        }
        Read(section);
        return section;
    }

    Workspace& workspace_;
    UnwrittenFiles files_;
};

} // namespace

std::size_t SitePages::Count() const
{
    std::size_t count = 0;
    for (const SiteSection& section : sections)
        count += section.pages.size();
    return count;
}

SitePages ReadSitePages(Workspace& workspace)
{
    Files& files = workspace.machine().files;
    files.Refresh(); // the lists may be others than those that the last command saw
    try {
        const WayBack way_back(files);
        return ListReader(workspace).ReadGroup(way_back.Folder());
    } catch (const RunError& error) {
        return {false, {{"", workspace.WorkDir, {}, TroubleText(error)}}};
    }
}

std::string FateText(const SitePage& page)
{
    switch (page.fate) {
    case PageFate::made:
        return "new";
    case PageFate::changed:
        return "changed";
    case PageFate::same:
        return "as it was";
    case PageFate::unwritten:
        return "not written: " + page.reason;
    case PageFate::unknown:
        break;
    }
    return {};
}

} // namespace kiv
