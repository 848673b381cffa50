#include "exchange/old_site.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace kiv {

namespace {

constexpr std::array<std::string_view, 5> kPageExtensions = {".htm", ".html", ".shtml", ".asp",
                                                             ".php"};

// Deeper folders than people make; what goes deeper goes round.
constexpr int kDeepest = 40;

bool IsPageName(std::string_view name)
{
    const std::string lower = LowerCase(name);
    return std::ranges::any_of(
        kPageExtensions, [&](std::string_view extension) { return lower.ends_with(extension); });
}

/// Whether a list or a build goes by a file of this name.
bool IsSourceName(std::string_view name)
{
    return std::ranges::any_of(kSiteFiles, [&](std::string_view source) {
        return !Contains(source, "\\") && EqualsNoCase(name, source);
    });
}

/// Whether a name in exact form holds characters that a path cannot give to a new file.
bool HasReference(std::string_view exact)
{
    for (std::size_t at = exact.find('&'); at != npos; at = exact.find('&', at + 1))
        if (ReferenceAt(exact, at))
            return true;
    return false;
}

class Reading {
  public:
    Reading(Machine& machine, OldSite& site)
        : files_(machine.files), paths_(machine.native_paths), site_(site),
          root_(NativeName(machine.files.RealFolder(site.folder)))
    {
    }

    /// `below`: "" or "sub/".
    void ReadFolder(const std::string& below, int depth)
    {
        const std::string folder = PathOf(below);
        FolderListing listing = files_.List(folder, "*.*");
        for (const std::string& name : listing.left_out)
            LeaveOut(below + name, "has a name that no path can hold");
        for (const FileName& name : listing.files)
            TakeFile(below, name);
        for (const std::string& name : files_.ListFolders(folder))
            TakeFolder(below + name, name, depth);
    }

  private:
    std::string PathOf(const std::string& name) const { return AbsolutePath(name, site_.folder); }

    void LeaveOut(const std::string& name, std::string why)
    {
        site_.left_out.push_back({name, std::move(why)});
    }

    bool LeadsOut(const std::string& path)
    {
        if (!files_.IsLink(path))
            return false;
        const std::string end = paths_.FromNative(files_.Open(path).native);
        const std::string folder(end.empty() ? "" : FolderOf(end));
        return folder.empty() || !files_.FolderExists(folder) ||
               !IsAtOrBelow(NativeName(files_.RealFolder(folder)), root_);
    }

    void TakeFile(const std::string& below, const FileName& name)
    {
        const std::string shown = below + name.text;
        if (name.text != name.exact || HasReference(name.exact) || Contains(name.text, ":"))
            return LeaveOut(shown, "has a name that page lists cannot hold");
        if (below.empty() && IsSourceName(name.text))
            return LeaveOut(shown, "has the name of a source of kiv");
        const auto [same, is_new] = names_.try_emplace(UpperCase(shown), shown);
        if (!is_new)
            return LeaveOut(shown, "differs from " + same->second + " in nothing but case");
        if (LeadsOut(PathOf(shown)))
            return LeaveOut(shown, "is a link that leads out of the folder");
        if (!IsPageName(name.text)) {
            site_.others.push_back(shown);
            return;
        }
        FoundPage& page = site_.pages.emplace_back();
        page.name = shown;
        page.bytes = files_.ReadFile(PathOf(shown));
    }

    void TakeFolder(const std::string& shown, const std::string& name, int depth)
    {
        if (name.starts_with('.'))
            return LeaveOut(shown, "is a hidden folder");
        if (files_.IsLink(PathOf(shown)))
            return LeaveOut(shown, "is a link to a folder");
        if (depth == kDeepest)
            return LeaveOut(shown, "lies too deep");
        ReadFolder(shown + "/", depth + 1);
    }

    Files& files_;
    NativePaths& paths_;
    OldSite& site_;
    std::string root_;                         // native
    std::map<std::string, std::string> names_; // by upper case
};

} // namespace

bool IsAtOrBelow(std::string_view path, std::string_view folder)
{
    const bool is_root = folder.ends_with('/') || folder.ends_with('\\');
    return path.starts_with(folder) &&
           (path.size() == folder.size() || is_root || IsSeparator(path[folder.size()]));
}

bool CanBeWritten(std::string_view name)
{
    const std::string lower = LowerCase(name);
    const auto is_odd = [](char c) {
        return static_cast<unsigned char>(c) < ' ' ||
               Contains("<>|\"*?\\", std::string_view(&c, 1));
    };
    return (lower.ends_with(".htm") || lower.ends_with(".html") || lower.ends_with(".asp")) &&
           !lower.ends_with("/.htm") && std::ranges::none_of(name, is_odd);
}

std::vector<std::string_view> LinesOf(std::string_view text)
{
    std::vector<std::string_view> lines;
    while (!text.empty())
        lines.push_back(TakeLine(text));
    return lines;
}

OldSite ReadOldSite(Machine& machine, const std::string& folder)
{
    OldSite site;
    site.folder = folder;
    Reading(machine, site).ReadFolder("", 0);
    for (FoundPage& page : site.pages)
        page.lines = LinesOf(page.bytes);
    return site;
}

} // namespace kiv
