#include "preview/content_marks.h"

#include <vector>

namespace kiv {

std::optional<ContentMark> MarkOfFile(const std::string& native)
{
    const std::unique_ptr<NativeFile> file = OpenNativeFile(native);
    if (!file || file->Size() > kLargestText)
        return std::nullopt;
    return ContentMark(file->Read(0, static_cast<std::size_t>(file->Size())));
}

std::optional<ContentMark> MarkOfFolder(const std::string& native)
{
    std::optional<std::vector<NativeEntry>> names = NativeEntries(native);
    if (!names)
        return std::nullopt;
    std::erase_if(*names, [](const NativeEntry& entry) { return !IsShownName(entry.name); });
    return MarkOfNames(*names);
}

ContentMark MarkOfNames(std::span<const NativeEntry> names)
{
    std::string list;
    for (const NativeEntry& entry : names)
        list.append(entry.name).push_back(entry.is_folder ? '/' : '\0'); // no name holds either
    return ContentMark(list);
}

bool IsShownName(std::string_view name)
{
    return !name.starts_with('.') || name == ".well-known";
}

} // namespace kiv
