// The files of a folder for a tool that works on every one.
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

} // namespace kiv
