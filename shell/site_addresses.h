// The addresses at which sites are to be found, kept from one run to the next.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

class Workspace;

/// The address that was given last for the working directory; "" when none is known.
std::string SiteAddress(Workspace& workspace);

/// Keeps an address for it, where the program has a place for its records.
void KeepSiteAddress(Workspace& workspace, std::string_view address);

} // namespace kiv
