// Drive paths as text: "C:\site\_html.txt". Nothing here looks at a disk.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Whether `c` parts folders: "\" or "/".
inline bool IsSeparator(char c)
{
    return c == '\\' || c == '/';
}

/// Whether `path` begins with a drive: a letter and ":".
inline bool HasDrive(std::string_view path)
{
    return path.size() >= 2 && path[1] == ':' &&
           ((path[0] >= 'A' && path[0] <= 'Z') || (path[0] >= 'a' && path[0] <= 'z'));
}

/// The absolute form of `path`: upper-case drive letter, ":\", the parts joined with "\". "." and
/// empty parts drop out, ".." takes a part away and stays put at the root. A path without a drive
/// is relative to `current` (an absolute path), "\x" to the root of its drive, and "C:x" to
/// `current` when that is on C:, else to the root of C:. "\\server\share" is no place: the result
/// is empty. No final "\" but at a root.
std::string AbsolutePath(std::string_view path, std::string_view current);

/// The folder of an absolute path ("C:\site" of "C:\site\a.htm", "C:\" of "C:\a.htm").
std::string_view FolderOf(std::string_view absolute);

/// The name in an absolute path ("a.htm" of "C:\site\a.htm"), empty for a root.
std::string_view NameOf(std::string_view absolute);

/// The name of a folder without the folders above it, whether or not its path ends in a separator;
/// "" at a root.
std::string ThisDirNameOf(std::string_view directory);

/// A path as a message has it that is shown to the user: on one line, with "\x0A" for a line feed
/// in a name, which would begin what looks like another message.
std::string OnOneLine(std::string_view path);

/// The path with one "\" at its end.
std::string WithSeparator(std::string_view path);

/// Whether a name fits a pattern. "*.*" fits every name; otherwise "*" stands for any run of
/// characters and "?" for one, and case does not matter.
bool FitsPattern(std::string_view name, std::string_view pattern);

} // namespace kiv
