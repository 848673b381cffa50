// The folder that a site's addresses stay within.
#pragma once

#include <span>
#include <string>

namespace kiv {

/// The nearest folder at or above `folder` in which all `pages` lie and all that is there of what
/// their addresses, and those of the style sheets among these, lead to; never that of a whole disk.
/// An address that begins with "/" counts from the folder in which most of these are found. Paths
/// are native and absolute.
std::string RootOfSite(const std::string& folder, std::span<const std::string> pages);

} // namespace kiv
