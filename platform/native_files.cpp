#include "platform/native_files.h"

namespace kiv {

namespace {

bool EndsInSeparator(std::string_view path)
{
    return path.ends_with(kNativeSeparator);
}

} // namespace

std::string NativeJoined(std::string_view folder, std::string_view name)
{
    std::string path(folder);
    if (!EndsInSeparator(path))
        path.push_back(kNativeSeparator);
    return path.append(name);
}

std::string NativeParentOf(const std::string& path)
{
    const std::size_t last = path.rfind(kNativeSeparator);
    if (last == std::string::npos)
        return path;
    const bool is_below_root = last == path.find(kNativeSeparator);
    return path.substr(0, is_below_root ? last + 1 : last);
}

bool LiesIn(std::string_view path, std::string_view folder)
{
    if (!path.starts_with(folder))
        return false;
    return path.size() == folder.size() || EndsInSeparator(folder) ||
           path[folder.size()] == kNativeSeparator;
}

} // namespace kiv
