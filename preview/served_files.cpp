#include "preview/served_files.h"

#include "inspect/near_names.h"
#include "inspect/page_names.h"
#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

/// What stands for a folder, the first one that is there.
constexpr std::string_view kIndexNames[] = {
    "index.html",  "index.htm", "default.html", "default.htm",
    "index.shtml", "index.asp", "default.asp",  "index.php",
};

const NativeEntry* FindName(const std::vector<NativeEntry>& names, std::string_view name)
{
    const auto found = std::ranges::lower_bound(
        names, name, {}, [](const NativeEntry& entry) { return std::string_view(entry.name); });
    return found != names.end() && found->name == name ? &*found : nullptr;
}

std::string InCapitals(const std::string& name)
{
    return UpperCase(FromUtf8(name));
}

NameKind KindOf(std::string_view name)
{
    if (IsPageName(name))
        return NameKind::page;
    return IsPictureName(name) ? NameKind::picture : NameKind::same_extension;
}

/// The entry that was most likely meant by a name that none has; null when none is near.
const NativeEntry* NearestOf(const std::vector<NativeEntry>& names, const std::string& name,
                             bool is_folder)
{
    // Among more, only the spelling is looked at: each comparison takes its time.
    constexpr std::size_t kMostCompared = 5000;
    const bool is_compared = names.size() <= kMostCompared;
    const std::string capitals = InCapitals(name);
    std::vector<std::string> texts;
    std::vector<const NativeEntry*> entries;
    for (const NativeEntry& entry : names) {
        if (InCapitals(entry.name) == capitals)
            return &entry;
        if (!is_compared || entry.is_folder != is_folder)
            continue;
        texts.push_back(FromUtf8(entry.name));
        entries.push_back(&entry);
    }
    const std::vector<std::string_view> views(texts.begin(), texts.end());
    const std::string asked = FromUtf8(name);
    const std::string_view near =
        is_folder ? Nearest(asked, views) : NearestFileName(asked, texts, KindOf(asked));
    const auto found = std::ranges::find(texts, near);
    return near.empty() || found == texts.end()
               ? nullptr
               : entries[static_cast<std::size_t>(found - texts.begin())];
}

} // namespace

ServedFiles::ServedFiles(std::string root)
    : root_(std::move(root)), real_root_(RealNativePath(root_))
{
}

bool ServedFiles::IsInside(const std::string& native) const
{
    const std::string real = RealNativePath(native);
    return !real.empty() && !real_root_.empty() && LiesIn(real, real_root_);
}

FolderLists::Names ServedFiles::NamesIn(const std::string& folder, NativeFault& fault) const
{
    static const auto kNone = std::make_shared<const std::vector<NativeEntry>>();
    fault = NativeFault::none;
    FolderLists::Names names = IsInside(folder) ? lists_.NamesIn(folder, fault) : nullptr;
    return names ? names : kNone;
}

Served ServedFiles::Find(const TargetPath& path) const
{
    Served served;
    served.native = root_;
    bool is_folder = true;
    for (std::size_t i = 0; i < path.names.size(); ++i) {
        if (!is_folder)
            return Missing(path, i, served.native, {});
        const FolderLists::Names names = NamesIn(served.native, served.fault);
        if (served.fault != NativeFault::none)
            return Unreadable(std::move(served));
        const NativeEntry* const entry = FindName(*names, path.names[i]);
        const std::string native = NativeJoined(served.native, path.names[i]);
        if (entry == nullptr || !IsInside(native))
            return Missing(path, i, served.native, *names);
        served.native = native;
        served.names.push_back(entry->name);
        is_folder = entry->is_folder;
    }
    if (is_folder && path.is_folder)
        return OfFolder(std::move(served));
    if (is_folder)
        served.kind = Served::Kind::to_folder;
    else if (!path.is_folder)
        served.kind = Served::Kind::file;
    return served;
}

std::unique_ptr<NativeFile> ServedFiles::Open(const Served& file, NativeFault& fault) const
{
    fault = NativeFault::absent;
    return real_root_.empty() ? nullptr : OpenNativeFileIn(file.native, real_root_, fault);
}

Served ServedFiles::Unreadable(Served served)
{
    served.kind =
        served.fault == NativeFault::absent ? Served::Kind::missing : Served::Kind::unreadable;
    return served;
}

Served ServedFiles::OfFolder(Served served) const
{
    const FolderLists::Names names = NamesIn(served.native, served.fault);
    if (served.fault != NativeFault::none)
        return Unreadable(std::move(served));
    for (const std::string_view index : kIndexNames) {
        const NativeEntry* const entry = FindName(*names, index);
        std::string native = NativeJoined(served.native, index);
        if (entry == nullptr || entry->is_folder || !IsInside(native))
            continue;
        served.kind = Served::Kind::file;
        served.native = std::move(native);
        served.names.push_back(entry->name);
        return served;
    }
    served.kind = Served::Kind::folder;
    served.entries = *names;
    return served;
}

Served ServedFiles::Missing(const TargetPath& path, std::size_t at, const std::string& folder,
                            const std::vector<NativeEntry>& names) const
{
    Served missing;
    missing.names = path.names;
    missing.native = folder;
    for (std::size_t i = at; i < path.names.size(); ++i)
        missing.native = NativeJoined(missing.native, path.names[i]);
    const bool is_folder = at + 1 < path.names.size() || path.is_folder;
    const NativeEntry* const near = NearestOf(names, path.names[at], is_folder);
    if (near == nullptr || near->name == path.names[at])
        return missing; // the second is a link that leads out
    TargetPath meant = path;
    meant.names[at] = near->name;
    meant.is_folder = meant.is_folder || (near->is_folder && at + 1 == path.names.size());
    const bool is_case = InCapitals(near->name) == InCapitals(path.names[at]);
    const Served found = Find(meant);
    const bool is_there = found.kind != Served::Kind::missing;
    missing.nearest = is_there ? meant.names : found.nearest;
    missing.nearest_is_folder = is_there ? meant.is_folder : found.nearest_is_folder;
    missing.differs_in_case = is_case && (is_there || found.differs_in_case);
    return missing;
}

} // namespace kiv
