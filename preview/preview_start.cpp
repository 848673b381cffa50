#include "preview/preview_start.h"

#include "inspect/page_names.h"
#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "platform/native_files.h"
#include "platform/run_error.h"
#include "platform/silent_reporter.h"
#include "platform/site_files.h"
#include "preview/site_root.h"
#include "shell/groups.h"
#include "shell/outside_programs.h"
#include "shell/workspace.h"
#include "text/text.h"

#include <functional>
#include <utility>

namespace kiv {

namespace {

/// The machine for those who only look: nobody is told.
class QuietWorkspace {
  public:
    QuietWorkspace(const Machine& machine, const PreviewWish& wish)
        : machine_{machine.files,     machine.native_paths, machine.clock,
                   machine.clipboard, machine.programs,     reporter_,
                   machine.pictures},
          workspace_(machine_)
    {
        workspace_.RecordsFolder = wish.records_folder;
        workspace_.LookAt(wish.directory);
    }

    Workspace& Get() { return workspace_; }

  private:
    SilentReporter reporter_;
    Machine machine_;
    Workspace workspace_;
};

/// The folder of the group's member that a page lies in; "": it lies in none.
std::string MemberOf(const Machine& machine, const PreviewWish& wish, const std::string& path)
{
    if (!machine.files.FileExists(kGroupFile))
        return {};
    for (const std::string& entry : GroupEntries(machine.files)) {
        std::string folder = AbsolutePath(entry, wish.directory);
        if (StartsWithNoCase(path, WithSeparator(folder)))
            return folder;
    }
    return {};
}

/// A page of the section, or else of a member of its group.
PageStories TellQuietly(const Machine& machine, const PreviewWish& wish, const std::string& path)
{
    try {
        QuietWorkspace workspace(machine, wish);
        PageStories told = TellPage(workspace.Get(), path);
        if (EqualsNoCase(told.page.path, path))
            return told;
        const std::string member = MemberOf(machine, wish, path);
        if (member.empty())
            return told;
        workspace.Get().LookAt(member);
        return TellPage(workspace.Get(), path);
    } catch (const RunError& error) { // the site's folder has gone
        PageStories told;
        told.trouble = error.text;
        return told;
    }
}

SourceTools ToolsFor(const Machine& machine, const PreviewWish& wish)
{
    return {.tell_page = [machine, wish](
                             const std::string& path) { return TellQuietly(machine, wish, path); },
            .drive_path =
                [machine](const std::string& native) {
                    return machine.native_paths.FromNative(native);
                },
            .edit =
                [machine, wish](const std::string& path, int line) {
                    QuietWorkspace workspace(machine, wish);
                    EditAt(workspace.Get(), path, line);
                }};
}

std::vector<std::string> PagesOf(std::span<const WrittenFile> written, NativePaths& paths)
{
    std::vector<std::string> pages;
    for (const WrittenFile& file : written)
        if (IsPageName(NameOf(file.path)))
            pages.push_back(paths.ToNative(file.path));
    return pages;
}

std::string RootOf(const PreviewWish& wish, const Machine& machine, const std::string& folder,
                   std::span<const std::string> pages)
{
    if (!wish.root)
        return RootOfSite(folder, pages);
    if (!machine.files.FolderExists(*wish.root))
        Refuse("show", *wish.root, kNoSuchFolder);
    std::string root = machine.native_paths.ToNative(*wish.root);
    if (!LiesIn(folder, root))
        throw RunError(ErrorKind::invalid_argument,
                       "the root \"" + *wish.root + "\" does not hold the site", {},
                       "Name the site's folder or one above it.");
    return root;
}

/// The site's folder, or that of the first page when all of them are written elsewhere.
std::string StartOf(const PreviewSite& site, std::span<const std::string> pages)
{
    for (const std::string& page : pages)
        if (NativeParentOf(page) == site.folder)
            return site.folder;
    const std::string start = pages.empty() ? site.folder : NativeParentOf(pages[0]);
    return LiesIn(start, site.root) ? start : site.folder;
}

/// What was written, or else what lies in the site's folder.
std::vector<std::string> PagesOf(std::span<const WrittenFile> written, NativePaths& paths,
                                 const std::string& folder)
{
    std::vector<std::string> pages = PagesOf(written, paths);
    if (!pages.empty())
        return pages;
    const std::optional<std::vector<NativeEntry>> names = NativeEntries(folder);
    for (const NativeEntry& entry : names.value_or(std::vector<NativeEntry>()))
        if (!entry.is_folder && IsPageName(entry.name))
            pages.push_back(NativeJoined(folder, entry.name));
    return pages;
}

PreviewSite SiteOf(const PreviewWish& wish, const Machine& machine,
                   std::span<const WrittenFile> written)
{
    PreviewSite site;
    site.folder = machine.native_paths.ToNative(wish.directory);
    const std::vector<std::string> pages = PagesOf(written, machine.native_paths, site.folder);
    site.root = RootOf(wish, machine, site.folder, pages);
    site.start = StartOf(site, pages);
    return site;
}

/// Serves at the site's port; at a free one when that cannot be had and `port_is_free` to choose.
StartedPreview Begun(PreviewSite site, bool port_is_free, const PreviewWish& wish,
                     const Machine& machine, const PostTask& post)
{
    const auto begin = [&] {
        return std::make_unique<PreviewSession>(site, machine.native_paths, ToolsFor(machine, wish),
                                                post);
    };
    StartedPreview started{nullptr, site.root, site.start, site.root != site.folder};
    try {
        started.session = begin();
    } catch (const RunError&) {
        if (!port_is_free)
            throw;
        site.port = 0;
        started.session = begin();
    }
    return started;
}

StartedPreview First(const PreviewWish& wish, const Machine& machine,
                     std::span<const WrittenFile> written, const PostTask& post)
{
    PreviewSite site = SiteOf(wish, machine, written);
    site.port = wish.port.value_or(kPreviewPort);
    return Begun(std::move(site), !wish.port, wish, machine, post);
}

/// Whether it had to begin again.
bool Settle(StartedPreview& preview, const PreviewWish& wish, const Machine& machine,
            std::span<const WrittenFile> written, const PostTask& post)
{
    PreviewSite site = SiteOf(wish, machine, written);
    if (site.root == preview.root && site.start == preview.start)
        return false;
    site.port = preview.session->Port();
    preview.session.reset(); // its port is wanted
    preview = Begun(std::move(site), wish.port.value_or(0) == 0, wish, machine, post);
    return true;
}

} // namespace

bool ShowBuilt(StartedPreview& preview, const PreviewWish& wish, const Machine& machine,
               const MadeSite& made, const PostTask& post)
{
    bool is_new = false;
    if (!preview.session) {
        preview = First(wish, machine, made.written, post);
        is_new = true;
    } else if (!preview.is_settled && made.is_whole) {
        is_new = Settle(preview, wish, machine, made.written, post);
    }
    preview.is_settled = preview.is_settled || made.is_whole;
    return is_new;
}

} // namespace kiv
