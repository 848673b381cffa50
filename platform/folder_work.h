// Folders for a tool: the files of one, for who works on each of them, and new ones.
#pragma once

#include "platform/machine.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Tells the user of each file that a listing leaves out.
void WarnOfLeftOut(Reporter& reporter, const std::vector<std::string>& left_out);

/// The plain files of the current directory that fit a pattern, in the order of Files::List. Warns
/// of those that it leaves out.
std::vector<FileName> FilesToWorkOn(Machine& machine, std::string_view pattern);

/// Makes a folder (an absolute path) and those above it that are missing, as far as that goes.
void MakeFolders(Files& files, const std::string& folder);

/// The same; when the folder is not there in the end, throws RunError of kind `file` that says what
/// is in its way.
void NeedFolder(Files& files, const std::string& folder);

/// The same for a folder as somebody has typed its path (native, UTF-8), which leads to `folder`.
/// One that would be made under another name than was typed is an error, too.
void NeedTypedFolder(Machine& machine, std::string_view native, const std::string& folder);

} // namespace kiv
