#include "shell/site_sources.h"

#include "platform/drive_path.h"
#include "platform/native_files.h"
#include "platform/site_files.h"
#include "shell/built_sections.h"
#include "shell/workspace.h"
#include "text/text.h"
#include "text/windows1252.h"
#include "utilities/news_composer.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace kiv {

namespace {

class SourceCollector {
  public:
    explicit SourceCollector(Files& files) : files_(files) {}

    void AddFolder(const SiteView& view)
    {
        if (!view.is_there)
            return;
        folders_.insert(files_.RealFolder(view.folder));
        AddIfThere(view.folder + std::string(kPageListFile), {.names_files = true});
        AddIfThere(view.folder + std::string(kTemplateFile), {.is_template = true});
        AddIfThere(view.folder + std::string(kAltFile), {});
        for (const std::string& name : files_.ListFolders(view.folder))
            AddIfThere(WithSeparator(view.folder + name) + std::string(kAltFile), {});
        const std::string news = view.folder + std::string(kNewsArticleFolder);
        if (files_.FolderExists(news))
            for (const std::string& name : files_.ListFiles(news, "*.txt"))
                AddIfThere(news + name, {.names_files = true});
    }

    /// What the build has read, and what lines that it passed by would put in.
    void AddSources(const SiteView& view)
    {
        for (const SourceText& source : view.sources) {
            const bool of_list = source.IsOfPageList() || source.is_page_list;
            AddIfThere(source.path,
                       {.names_files = of_list, .is_template = !of_list || source.is_template});
        }
        for (const SourceText& source : view.sources)
            AddIncludes(source.bytes, std::string(FolderOf(view.folder)));
    }

    SiteSources Finish()
    {
        SiteSources sources;
        for (auto& [key, source] : sources_)
            if (IsInside(source.path))
                sources.files.push_back(std::move(source));
            else
                sources.outside.push_back(source.path);
        return sources;
    }

  private:
    bool AddIfThere(const std::string& path, SourceKind kind)
    {
        if (!files_.FileExists(path))
            return false;
        const auto [entry, is_new] = sources_.try_emplace(UpperCase(path), SiteSource{path, kind});
        entry->second.kind.names_files = entry->second.kind.names_files || kind.names_files;
        return is_new;
    }

    /// "++name" and "!++name" of lines that are switched off, at every depth.
    void AddIncludes(const std::string& bytes, const std::string& folder)
    {
        for (std::string_view rest = bytes; !rest.empty();) {
            std::string_view line = TakeLine(rest);
            if (line.starts_with('!'))
                line.remove_prefix(1);
            const std::string_view name = Trim(line.substr(std::min<std::size_t>(2, line.size())));
            if (!line.starts_with("++") || name.empty() || Contains(name, "<"))
                continue;
            const std::string path = AbsolutePath(name, folder);
            if (path.find_first_of("*?\"|") == npos && AddIfThere(path, {.names_files = true}))
                AddIncludes(files_.ReadFile(path), folder);
        }
    }

    bool IsInside(const std::string& path)
    {
        if (files_.IsLink(path) || path.find_first_of("\r\n") != npos) // no record has such a name
            return false;
        const std::string folder = files_.RealFolder(FolderOf(path));
        return std::ranges::any_of(
            folders_, [&](const std::string& section) { return LiesIn(folder, section); });
    }

    Files& files_;
    std::set<std::string> folders_;             // real ones, native
    std::map<std::string, SiteSource> sources_; // by upper-cased path
};

} // namespace

SiteSources SourcesOf(Workspace& workspace)
{
    BuiltSections sections(workspace);
    sections.BuildAll();
    SourceCollector collector(workspace.machine().files);
    for (const SiteView& view : sections.Views())
        collector.AddFolder(view);
    for (const SiteView& view : sections.Views())
        collector.AddSources(view);
    return collector.Finish();
}

} // namespace kiv
