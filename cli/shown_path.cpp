#include "cli/shown_path.h"

#include "platform/native_paths.h"
#include "platform/run_error.h"
#include "text/text.h"
#include "text/windows1252.h"

namespace kiv {

namespace {

#ifdef _WIN32
constexpr std::string_view kSeparators = "\\/";
bool IsSamePath(std::string_view a, std::string_view b)
{
    return UpperCase(FromUtf8(a)) == UpperCase(FromUtf8(b));
}
#else
constexpr std::string_view kSeparators = "/";
bool IsSamePath(std::string_view a, std::string_view b)
{
    return a == b;
}
#endif

/// Throws nothing for a path that is too long or no path.
std::string NativeOf(NativePaths& paths, std::string_view path)
{
    try {
        return path.empty() ? std::string() : paths.ToNative(path);
    } catch (const RunError&) {
        return {};
    }
}

} // namespace

std::string SeenFrom(std::string_view folder, const std::string& native)
{
    if (folder.empty() || native.size() < folder.size() ||
        !IsSamePath(std::string_view(native).substr(0, folder.size()), folder))
        return native;
    const std::string_view rest = std::string_view(native).substr(folder.size());
    if (rest.empty())
        return ".";
    const bool is_root = kSeparators.find(folder.back()) != npos;
    if (is_root)
        return std::string(rest);
    return kSeparators.find(rest.front()) == npos ? native : std::string(rest.substr(1));
}

std::string NativeOrDrive(NativePaths& paths, std::string_view path)
{
    std::string native = NativeOf(paths, path);
    return native.empty() ? ToUtf8(path) : native;
}

std::string ShellFolder(NativePaths& paths, const std::string& directory)
{
    return NativeOf(paths, paths.FromNative(directory.empty() ? "." : directory));
}

} // namespace kiv
