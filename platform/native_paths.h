// Paths as the world outside this program has them: what the user types in a shell, what other
// programs get.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

class NativePaths {
  public:
    NativePaths() = default;
    NativePaths(const NativePaths&) = delete;
    NativePaths& operator=(const NativePaths&) = delete;
    virtual ~NativePaths() = default;

    /// The drive letters there are, upper case, in order.
    virtual std::string DriveLetters() = 0;
    /// A native path, or a drive path, as an absolute drive path; empty when no drive leads there.
    /// A relative native path is taken from the process's directory. Never throws.
    virtual std::string FromNative(std::string_view utf8) = 0;
    /// The native path of a drive path, in UTF-8, as a started program needs it. Empty when there
    /// is no such drive.
    virtual std::string ToNative(std::string_view path) = 0;
};

} // namespace kiv
