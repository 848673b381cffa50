// A site made of pages that were there before, as a user asks for it.
#pragma once

#include "exchange/adoption.h"
#include "platform/machine.h"

#include <string>
#include <string_view>

namespace kiv {

/// Where the new site goes when nobody says: "mill-site" in `where` for the folder "C:\old\mill".
/// Absolute drive paths.
std::string AdoptionTarget(std::string_view folder, std::string_view where);

/// Makes a site of the pages of `folder` in `target`, which is made when it is missing. Both are
/// absolute drive paths. Tells the reporter as AdoptSite does. Throws RunError of kind
/// `invalid_argument` where `target` holds something, or lies in `folder`; of kind `file` for what
/// cannot be read or written.
Adoption AdoptFolder(Machine& machine, const std::string& folder, const std::string& target);

} // namespace kiv
