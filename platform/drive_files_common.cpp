#include "platform/drive_files_common.h"

#include "platform/drive_path.h"
#include "platform/file_errors.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace kiv {

void DriveFiles::ChangeDirectory(std::string_view path)
{
    std::string absolute = Absolute(path);
    if (!FolderExists(path))
        Refuse("change to", path, "no such folder");
    current_ = std::move(absolute);
}

std::vector<std::string> DriveFiles::ListFiles(std::string_view folder, std::string_view pattern)
{
    return Listing(folder, pattern, false);
}

std::vector<std::string> DriveFiles::ListFolders(std::string_view folder)
{
    return Listing(folder, "*.*", true);
}

std::vector<std::string> DriveFiles::Listing(std::string_view folder, std::string_view pattern,
                                             bool folders)
{
    const std::string absolute = Absolute(folder);
    if (absolute.empty())
        Refuse("list", folder, "no such folder");
    struct Row {
        std::string upper;
        std::string name;
    };
    std::vector<Row> rows;
    for (std::string& name : Names(absolute, folders))
        if (FitsPattern(name, pattern))
            rows.push_back({UpperCase(name), std::move(name)});
    std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
        return std::tie(a.upper, a.name) < std::tie(b.upper, b.name);
    });
    std::vector<std::string> names;
    names.reserve(rows.size());
    for (Row& row : rows)
        names.push_back(std::move(row.name));
    return names;
}

std::string DriveFiles::Absolute(std::string_view path) const
{
    return path.find('\0') == npos ? AbsolutePath(path, current_) : std::string();
}

std::string DriveFiles::AbsoluteFile(std::string_view path) const
{
    return path.empty() || IsSeparator(path.back()) ? std::string() : Absolute(path);
}

std::string DriveFiles::FileToUse(std::string_view path, std::string_view action) const
{
    std::string absolute = AbsoluteFile(path);
    if (absolute.empty() || NameOf(absolute).empty())
        Refuse(action, path, "no such file");
    return absolute;
}

void DriveFiles::CountWritten(const std::string& absolute)
{
    written_.push_back(absolute);
    ++writes_;
}

} // namespace kiv
