// The target of a request, "/images/a%20b.gif?x", as the names of folders and a file.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct TargetPath {
    std::vector<std::string> names; // decoded once, UTF-8 as browsers send it; one may be ""
    bool is_folder = false;         // it ends in "/"

    bool operator==(const TargetPath&) const = default;
};

/// Nothing where a target is none of a browser: without "/" at its beginning, or with a name that
/// is "." or "..", or holds a separator, a control character or half a percent code.
std::optional<TargetPath> ReadTarget(std::string_view target);

/// The value of a name in what stands behind "?", or in a form's body; "" when it is not there.
std::string QueryValue(std::string_view query, std::string_view name);

/// What stands behind "?" in a target.
std::string_view QueryOf(std::string_view target);

/// The path from the root on, "/images/a b.gif".
std::string SitePath(std::span<const std::string> names);

/// The same as it stands in an address, "/images/a%20b.gif".
std::string EncodedPath(std::span<const std::string> names);
std::string EncodedName(std::string_view name);

} // namespace kiv
