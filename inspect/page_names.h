// What the name of a file tells of it.
#pragma once

#include <string_view>

namespace kiv {

/// A page by its extension: "about.htm", "guest.asp".
bool IsPageName(std::string_view name);
/// What a server shows for a folder: "index.htm", "default.asp".
bool IsIndexName(std::string_view name);
/// A picture by its extension.
bool IsPictureName(std::string_view name);

} // namespace kiv
