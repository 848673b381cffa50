// Builds of the working directory and its group, and the New Year switch that they look at.
#pragma once

#include <functional>
#include <string_view>

namespace kiv {

class Reporter;
class Trace;
class UnwrittenFiles;
class Workspace;
struct OutputRoots;

/// Builds the working directory.
void BuildWorkDir(Workspace& workspace);

/// Builds the working directory into `files` alone, and tells `trace` of each line; `reporter` is
/// told what the build has to say. Nothing is recorded for the upload, and the workspace remembers
/// nothing of it. Throws RunError as a build does.
void BuildUnwritten(Workspace& workspace, UnwrittenFiles& files, Reporter& reporter, Trace& trace);

/// The same; `roots` becomes what the page list declares.
void BuildUnwritten(Workspace& workspace, UnwrittenFiles& files, Reporter& reporter, Trace& trace,
                    OutputRoots& roots);

/// Builds the working directory and every folder of its group list, with the New Year switch on; it
/// is off afterwards. Throws RunError of kind `subscript` past 500 entries, `file` for a folder
/// that is missing.
void BuildGroup(Workspace& workspace);

/// The same; `around` is called for each of them when it is the current directory, with the
/// function that builds it.
using AroundMember = std::function<void(const std::function<void()>& build)>;
void BuildGroup(Workspace& workspace, const AroundMember& around);

void ToggleNewYear(Workspace& workspace);
/// The New Year indicator.
std::string_view NewYearText(const Workspace& workspace);

} // namespace kiv
