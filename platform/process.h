// This process as the machine gives it to the program.
#pragma once

namespace kiv {

/// To be called first. Standard streams that are closed become streams that fail, so that no file
/// gets their number by chance; and a reader that has gone, or a file that may not grow any more,
/// becomes an error instead of the process's end.
void PrepareProcess();

} // namespace kiv
