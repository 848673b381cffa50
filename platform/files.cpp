#include "platform/files.h"

#include <utility>

namespace kiv {

std::vector<std::string> Files::ListFiles(std::string_view folder, std::string_view pattern)
{
    FolderListing listing = List(folder, pattern);
    std::vector<std::string> names;
    names.reserve(listing.files.size());
    for (FileName& name : listing.files)
        names.push_back(std::move(name.text));
    return names;
}

} // namespace kiv
