// The editors that kiv knows, each with its way to a line.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace kiv {

class Files;
class Programs;

/// The commands, as they are set in the editor's setting, of the known editors that are there:
/// those with a window first, then those in a terminal, then what the desktop prefers. Looked for
/// by their names, then in `program_folders` (drive paths; where a system keeps programs that PATH
/// does not know). May be empty.
std::vector<std::string> InstalledEditors(Programs& programs,
                                          std::span<const std::string> program_folders);

/// Whether no editor is set and the usual one is missing. False when the setting cannot be read.
bool EditorIsMissing(Files& files);

} // namespace kiv
