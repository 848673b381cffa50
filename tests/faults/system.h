// What the attacks themselves ask of the system. A call of theirs that fails ends everything: its
// result would say nothing about the program under attack.
#pragma once

#include <string>
#include <string_view>

namespace kiv::faults {

/// Throws std::runtime_error of `what` and the system's reason in errno.
[[noreturn]] void Fail(const std::string& what);

std::string BytesOfFile(const std::string& native);
void WriteWholeFile(const std::string& native, std::string_view bytes);

/// All that an open file holds, from its beginning.
std::string BytesOf(int fd);

/// Has this process mount for itself alone, so that all of its mounts end with it. Why that cannot
/// be; "" when it can.
std::string WhyNoMounts();

} // namespace kiv::faults
