// Has the system stop a process at the calls of the table, and at no others.
#pragma once

namespace kiv::faults {

/// For the process that is to be traced, before it becomes the program. Only calls of the system
/// from here on.
void StopAtCalls();

} // namespace kiv::faults
