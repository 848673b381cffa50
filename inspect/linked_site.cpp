#include "inspect/linked_site.h"

#include "inspect/address_walk.h"
#include "inspect/css_addresses.h"
#include "inspect/mentioned_files.h"
#include "inspect/page_names.h"
#include "inspect/waiting_pages.h"
#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

/// A build writes pages, so only what is none is surely missing where nobody looks at the build.
bool MayBeWritten(LinkKind kind)
{
    return kind == LinkKind::link || kind == LinkKind::frame || kind == LinkKind::form;
}

/// What a name that leads nowhere may have been meant for.
NameKind NamesFor(LinkKind kind)
{
    if (kind == LinkKind::picture)
        return NameKind::picture;
    return MayBeWritten(kind) ? NameKind::page : NameKind::same_extension;
}

/// Programs on a server lie elsewhere.
bool IsForPrograms(std::string_view path)
{
    return ContainsNoCase(path, "cgi-bin") || ContainsNoCase(path, "cgi-local");
}

bool IsBelow(std::string_view path, std::string_view folder)
{
    return UpperCase(path.substr(0, folder.size())) == UpperCase(folder);
}

} // namespace

LinkedSite::LinkedSite(std::span<const SiteView* const> sections,
                       const std::function<void()>& between)
    : files_(sections.front()->files), folders_(files_), sections_(sections)
{
    for (const SiteView* const section : sections) {
        inside_.push_back(section->folder);
        const std::string_view above = FolderOf(FolderOf(section->folder));
        if (folders_.Ask(above, kGroupFile) == EntryKind::file)
            inside_.push_back(WithSeparator(above));
        AddPages(*section, between);
        has_unknown_ |= section->IsCutShort();
        waiting_.merge(WaitingPages(*section));
    }
    for (std::size_t number = 0; number < pages_.size(); ++number) {
        ResolveLinks(number); // which may find more pages
        between();
    }
}

void LinkedSite::AddPages(const SiteView& section, const std::function<void()>& between)
{
    for (const PageText& text : section.pages) {
        folders_.AddWritten(text.path);
        AddPage({.view = &section, .text = &text, .path = text.path}, text.bytes);
        between();
    }
}

void LinkedSite::AddPage(LinkedPage page, std::string_view bytes)
{
    if (!by_path_.try_emplace(UpperCase(page.path), pages_.size()).second)
        return;                                 // another section has written it before
    const bool is_html = IsPageName(page.path); // else it is a feed, a list of films, a plain text
    if (is_html && page.facts.is_read)
        page.facts = ReadPage(bytes, time_);
    if (!is_html || page.facts.is_made_by_server)
        Mention(MentionedFiles(bytes));
    has_unknown_ |= !page.facts.is_read;
    for (const PageWord& id : page.facts.ids)
        page.anchors.insert(id.text);
    page.anchors.insert(page.facts.names.begin(), page.facts.names.end());
    Mention(std::exchange(page.facts.mentioned, {}));
    pages_.push_back(std::move(page));
}

void LinkedSite::Mention(const std::vector<std::string>& names)
{
    for (const std::string& name : names)
        mentioned_.insert(UpperCase(name));
}

const LinkedPage* LinkedSite::Find(std::string_view path) const
{
    const auto found = by_path_.find(UpperCase(path));
    return found == by_path_.end() ? nullptr : &pages_[found->second];
}

std::vector<std::string> LinkedSite::UsedFiles() const
{
    std::vector<std::string> paths;
    for (const auto& [key, path] : used_)
        paths.push_back(path);
    return paths;
}

bool LinkedSite::IsUsed(std::string_view path) const
{
    return used_.contains(UpperCase(path)) || IsMentioned(NameOf(path));
}

bool LinkedSite::IsWaiting(std::string_view path) const
{
    return waiting_.contains(UpperCase(path));
}

bool LinkedSite::IsMentioned(std::string_view name) const
{
    return mentioned_.contains(UpperCase(name));
}

const SiteView* LinkedSite::SectionOf(std::string_view folder, bool& is_known) const
{
    is_known = true;
    for (std::string_view place = folder;; place = FolderOf(place)) {
        for (const SiteView* const section : sections_)
            if (UpperCase(section->folder) == UpperCase(WithSeparator(place)))
                return section;
        if (folders_.Ask(place, kPageListFile) == EntryKind::file) {
            is_known = false;
            return nullptr;
        }
        if (NameOf(place).empty())
            return nullptr;
    }
}

bool LinkedSite::IsInside(std::string_view path) const
{
    return std::ranges::any_of(inside_,
                               [&](const std::string& folder) { return IsBelow(path, folder); });
}

std::optional<std::string> LinkedSite::Read(const std::string& path) const
{
    constexpr std::uint64_t kLargest = std::uint64_t{32} << 20U;
    if (!IsInside(path))
        return std::nullopt;
    try {
        const std::uint64_t size = files_.Stamp(path).size;
        if (size > std::min(kLargest, left_to_read_))
            return std::nullopt;
        left_to_read_ -= size;
        // What is no file on a disk says that it is empty, and may have no end.
        return size == 0 ? std::string() : files_.ReadFile(path);
    } catch (const RunError&) {
        return std::nullopt;
    }
}

void LinkedSite::ResolveLinks(std::size_t number)
{
    LinkedPage& page = pages_[number];
    const std::string folder = BaseFolder(page);
    page.targets.reserve(page.facts.links.size());
    for (const PageLink& link : page.facts.links) {
        const Target& target = TargetOf(page, folder, link);
        page.targets.push_back(&target);
        if (target.page != Target::kNone && target.page != number)
            pages_[target.page].is_linked = true;
    }
}

/// The folder that addresses are relative to; "": nobody knows.
std::string LinkedSite::BaseFolder(const LinkedPage& page)
{
    std::string folder(FolderOf(page.path));
    if (page.facts.base.empty())
        return folder;
    const Address base = ReadAddress(page.facts.base);
    const std::size_t slash = base.path.rfind('/');
    if (base.kind != AddressKind::site || base.from_root)
        return {};
    if (slash == npos)
        return folder;
    const WalkEnd end =
        Walk(folders_, folder, base.path.substr(0, slash), NameKind::same_extension);
    return end.kind == WalkEnd::Kind::folder ? end.folder : std::string();
}

/// Pages of a folder share most of their addresses.
const Target& LinkedSite::TargetOf(const LinkedPage& page, const std::string& folder,
                                   const PageLink& link)
{
    const std::size_t first = link.address.find_first_not_of(" \t\r\n");
    const bool is_own = first == npos || link.address[first] == '#' || link.address[first] == '?';
    std::string key = is_own ? page.path : folder;
    key.append(1, '\n').append(1, static_cast<char>('a' + static_cast<int>(link.kind)));
    const auto [entry, is_new] = targets_.try_emplace(key.append(link.address));
    Target& target = entry->second;
    if (!is_new)
        return target;
    const Address address = ReadAddress(link.address);
    has_unknown_ |= address.kind == AddressKind::unknown;
    if (is_own && page.facts.base.empty() && address.kind == AddressKind::site)
        target = {.state = Target::State::found, .path = page.path};
    else if (!is_own && !folder.empty())
        target = Resolve(folder, address, link.kind);
    else if (address.kind == AddressKind::drive)
        target.state = Target::State::drive;
    target.fragment = address.fragment;
    target.has_backslash = address.has_backslash;
    if (target.state == Target::State::found)
        Follow(target, link.kind);
    const auto found = by_path_.find(UpperCase(target.path));
    if (target.state == Target::State::found && found != by_path_.end())
        target.page = found->second;
    return target;
}

Target LinkedSite::Resolve(std::string_view folder, const Address& address, LinkKind kind) const
{
    if (address.kind == AddressKind::drive)
        return {.state = Target::State::drive};
    if (address.kind != AddressKind::site || IsForPrograms(address.path))
        return {};
    if (!address.from_root)
        return FindFrom(folder, address.path, kind);
    // The root of the site is one of the folders above, or elsewhere.
    for (std::string_view root = folder;; root = FolderOf(root)) {
        Target target = FindFrom(root, address.path.substr(1), kind);
        if (target.state == Target::State::found) {
            target.spelling.insert(0, 1, '/');
            return target;
        }
        if (NameOf(root).empty())
            return {};
    }
}

Target LinkedSite::FindFrom(std::string_view folder, const std::string& path, LinkKind kind) const
{
    const WalkEnd end = Walk(folders_, folder, path, NamesFor(kind));
    Target target{.is_misspelled = end.is_misspelled, .spelling = end.spelling, .path = end.Path()};
    switch (end.kind) {
    case WalkEnd::Kind::file:
        target.state = Target::State::found;
        break;
    case WalkEnd::Kind::outside:
        break;
    case WalkEnd::Kind::folder: {
        const FolderNames& names = folders_.Of(end.folder);
        if (!names.is_known)
            return {};
        const auto index = std::ranges::find_if(names.files, IsIndexName);
        const bool is_there = index != names.files.end();
        target.state = is_there ? Target::State::found : Target::State::no_index;
        if (is_there)
            target.path = WithSeparator(end.folder) + *index;
        [[fallthrough]];
    }
    case WalkEnd::Kind::missing: {
        bool is_known = true;
        const SiteView* const section = SectionOf(end.folder, is_known);
        const bool is_unfinished = section != nullptr && section->IsCutShort();
        if (end.kind == WalkEnd::Kind::missing)
            target.state = Target::State::missing;
        if (IsSource(folder, target.spelling))
            target.spelling.clear();
        const bool may_come = !is_known || is_unfinished || IsWaiting(end.Path());
        if (target.state != Target::State::found && may_come && MayBeWritten(kind))
            target.state = Target::State::unjudged;
        break;
    }
    }
    return target;
}

/// Whether a path of the web leads to a file that a section is made of.
bool LinkedSite::IsSource(std::string_view folder, std::string path) const
{
    std::ranges::replace(path, '/', '\\');
    const std::string upper = UpperCase(AbsolutePath(path, folder));
    return !path.empty() && std::ranges::any_of(sections_, [&](const SiteView* section) {
        return std::ranges::any_of(section->sources, [&](const SourceText& source) {
            return UpperCase(source.path) == upper;
        });
    });
}

/// What a page leads to is used, and may lead further.
void LinkedSite::Follow(const Target& target, LinkKind kind)
{
    if (!Use(target.path))
        return;
    if (kind == LinkKind::style)
        TakeStyleSheets(target.path);
    else if (kind == LinkKind::script)
        TakeScript(target.path);
    else if (IsInside(target.path) && MayBeWritten(kind) && IsPageName(target.path))
        TakeFoundPage(target.path);
}

/// Returns whether nobody has looked at the file so far.
bool LinkedSite::Use(const std::string& path)
{
    const std::string key = UpperCase(path);
    return used_.try_emplace(key, path).second && !by_path_.contains(key);
}

void LinkedSite::TakeFoundPage(const std::string& path)
{
    const std::optional<std::string> bytes = Read(path);
    LinkedPage page{.path = path};
    page.facts.is_read = bytes.has_value();
    AddPage(std::move(page), bytes.value_or(std::string()));
}

void LinkedSite::TakeScript(const std::string& path)
{
    const std::optional<std::string> bytes = Read(path);
    has_unknown_ |= !bytes.has_value();
    if (bytes)
        Mention(MentionedFiles(*bytes));
}

/// And those that it imports, however long their chain is.
void LinkedSite::TakeStyleSheets(const std::string& first)
{
    std::vector<std::string> left{first};
    while (!left.empty()) {
        const std::string path = std::move(left.back());
        left.pop_back();
        const std::optional<std::string> bytes = Read(path);
        has_unknown_ |= !bytes.has_value();
        for (const CssAddress& found : CssAddresses(bytes ? *bytes : std::string_view())) {
            const Address address = ReadAddress(found.address);
            if (address.kind != AddressKind::site || address.path.empty())
                continue;
            const LinkKind kind = found.is_import ? LinkKind::style : LinkKind::picture;
            const Target target = Resolve(FolderOf(path), address, kind);
            if (target.state == Target::State::found && Use(target.path) && found.is_import)
                left.push_back(target.path);
        }
    }
}

} // namespace kiv
