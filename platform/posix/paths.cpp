#include "platform/posix/paths.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

std::string JoinNative(std::string_view folder, std::string_view name)
{
    std::string native;
    native.reserve(folder.size() + 1 + name.size());
    native.append(folder);
    if (folder != "/")
        native.push_back('/');
    native.append(name); // what append gives back would be copied
    return native;
}

std::string_view NativeFolderOf(std::string_view native)
{
    return native.substr(0, std::max<std::size_t>(native.rfind('/'), 1));
}

std::string_view NativeNameOf(std::string_view native)
{
    return native.substr(native.rfind('/') + 1);
}

std::string CleanNative(std::string_view native)
{
    std::string clean;
    for (const std::string_view part : Split(native, '/')) {
        if (part.empty() || part == ".")
            continue;
        if (part == "..")
            clean.resize(clean.empty() ? 0 : clean.rfind('/'));
        else
            clean.append("/").append(part);
    }
    return clean.empty() ? "/" : clean;
}

} // namespace kiv
