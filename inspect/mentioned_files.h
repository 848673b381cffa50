// What script names without an address.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The words of a script that look like names of files: "door2.gif".
std::vector<std::string> MentionedFiles(std::string_view script);

} // namespace kiv
