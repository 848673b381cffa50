// What an error at a file or a program says: "cannot read C:\a.txt: permission denied".
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Throws RunError of kind `file`: "cannot `action` `path`: `reason`".
[[noreturn]] void Refuse(std::string_view action, std::string_view path, std::string_view reason);
/// The same with the reason that an error number of the operating system stands for.
[[noreturn]] void RefuseWith(std::string_view action, std::string_view path, int error);

/// The operating system's words for an error number, as it has them.
std::string SystemWords(int error);
/// The same beginning in lower case and without full stop.
std::string SystemReason(int error);

} // namespace kiv
