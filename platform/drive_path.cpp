#include "platform/drive_path.h"

#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::size_t kRootSize = 3; // "C:\"

std::string RootOf(char drive)
{
    return std::string(1, ToUpper(drive)).append(":\\");
}

/// Goes from `absolute` along the parts of `path`.
void AddParts(std::string& absolute, std::string_view path)
{
    while (!path.empty()) {
        const auto separator = std::ranges::find_if(path, IsSeparator);
        const auto end = static_cast<std::size_t>(separator - path.begin());
        const std::string_view part = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (part.empty() || part == ".")
            continue;
        if (part == "..") {
            absolute.resize(FolderOf(absolute).size());
            continue;
        }
        if (absolute.size() > kRootSize)
            absolute.push_back('\\');
        absolute.append(part);
    }
}

} // namespace

std::string AbsolutePath(std::string_view path, std::string_view current)
{
    if (path.size() >= 2 && IsSeparator(path[0]) && IsSeparator(path[1]))
        return {};
    std::string absolute;
    if (HasDrive(path)) {
        const char drive = path[0];
        path.remove_prefix(2);
        const bool from_root = !path.empty() && IsSeparator(path[0]);
        const bool on_current = HasDrive(current) && ToUpper(current[0]) == ToUpper(drive);
        absolute = on_current && !from_root ? std::string(current) : RootOf(drive);
    } else if (!HasDrive(current)) {
        return {};
    } else {
        const bool from_root = !path.empty() && IsSeparator(path[0]);
        absolute = from_root ? RootOf(current[0]) : std::string(current);
    }
    AddParts(absolute, path);
    return absolute;
}

std::string_view FolderOf(std::string_view absolute)
{
    const std::size_t last = absolute.rfind('\\');
    if (last == npos)
        return {};
    return absolute.substr(0, std::max(last, std::min(kRootSize, absolute.size())));
}

std::string_view NameOf(std::string_view absolute)
{
    const std::size_t last = absolute.rfind('\\');
    return last == npos ? absolute : absolute.substr(last + 1);
}

std::string ThisDirNameOf(std::string_view directory)
{
    // The working directory is held with a "\" at its end; the colon leaves a bare drive empty.
    directory = directory.substr(0, directory.find_last_not_of("/\\") + 1);
    return std::string(directory.substr(directory.find_last_of("/\\:") + 1));
}

std::string OnOneLine(std::string_view path)
{
    std::string line(path);
    ReplaceEach(line, "\n", "\\x0A");
    return line;
}

std::string WithSeparator(std::string_view path)
{
    while (!path.empty() && IsSeparator(path.back()))
        path.remove_suffix(1);
    return std::string(path).append("\\");
}

bool FitsPattern(std::string_view name, std::string_view pattern)
{
    if (pattern == "*.*")
        return true;
    std::size_t at = 0;
    std::size_t rule = 0;
    std::size_t star = npos; // the last "*" met, and where the run it stands for ends so far
    std::size_t run_end = 0;
    while (at < name.size()) {
        if (rule < pattern.size() && pattern[rule] == '*') {
            star = rule++;
            run_end = at;
        } else if (rule < pattern.size() &&
                   (pattern[rule] == '?' || ToUpper(pattern[rule]) == ToUpper(name[at]))) {
            ++rule;
            ++at;
        } else if (star != npos) {
            rule = star + 1;
            at = ++run_end;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', rule) == npos;
}

} // namespace kiv
