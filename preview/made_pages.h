// Pages that no file holds: what is in a folder, what is missing, the text of a script page.
#pragma once

#include "preview/served_files.h"

#include <string>
#include <string_view>

namespace kiv {

/// These are whole pages, in UTF-8 but for the last; `script` is the element that loads the script.
std::string FolderPage(const Served& folder, const std::string& script);
std::string MissingPage(const Served& missing, const std::string& script);
/// The lines of a page that a server would run, each one marked as MarkedPage marks elements. Its
/// bytes stay what they are, whatever its character set.
std::string ScriptPage(std::string_view name, std::string_view text, const std::string& script);

} // namespace kiv
