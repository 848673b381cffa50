// The manual that comes with kiv, and showing it.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

class FileReader;
class Workspace;

/// The manual's first page, a drive path, for a program in this folder (a drive path, too): where
/// it is installed to, or where the build makes it. "" when it is not there.
std::string ManualFor(FileReader& files, std::string_view program_folder);

/// Opens the manual in the browser. Throws RunError of kind `file` when it, or a program that opens
/// pages, is not there.
void OpenManual(Workspace& workspace);

} // namespace kiv
