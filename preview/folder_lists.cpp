#include "preview/folder_lists.h"

#include "preview/content_marks.h"

#include <optional>
#include <utility>

namespace kiv {

bool FolderLists::IsTrusted(const List& list, Instant now) const
{
    return list.names && list.listed - list.since >= kYoung && now - list.listed < kTrusted;
}

FolderLists::Names FolderLists::NamesIn(const std::string& native, NativeFault& fault, Instant now)
{
    constexpr std::size_t kMostKept = 32;
    const FileStamp stamp = NativeFolderStamp(native); // before the names are read
    const auto found = lists_.find(native);
    const bool is_same = stamp.exists && found != lists_.end() && found->second.stamp == stamp;
    fault = NativeFault::none;
    if (is_same && IsTrusted(found->second, now))
        return found->second.names;
    std::optional<std::vector<NativeEntry>> names = NativeEntries(native, &fault);
    if (!names)
        return nullptr;
    std::erase_if(*names, [](const NativeEntry& entry) { return !IsShownName(entry.name); });
    const Instant since = is_same ? found->second.since : now;
    if (!is_same && lists_.size() >= kMostKept)
        lists_.clear();
    auto kept = std::make_shared<const std::vector<NativeEntry>>(std::move(*names));
    lists_.insert_or_assign(native, List{stamp, since, now, kept});
    return kept;
}

} // namespace kiv
