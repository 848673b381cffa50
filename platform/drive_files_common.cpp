#include "platform/drive_files_common.h"

#include "platform/drive_path.h"
#include "platform/exact_names.h"
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

FolderListing DriveFiles::List(std::string_view folder, std::string_view pattern)
{
    return Listing(folder, pattern, false);
}

std::vector<std::string> DriveFiles::ListFolders(std::string_view folder)
{
    std::vector<std::string> names;
    for (FileName& name : Listing(folder, "*.*", true).files)
        names.push_back(std::move(name.text));
    return names;
}

FolderListing DriveFiles::Listing(std::string_view folder, std::string_view pattern, bool folders)
{
    const std::string absolute = Absolute(folder);
    if (absolute.empty())
        Refuse("list", folder, "no such folder");
    struct Row {
        std::string upper;
        FileName name;
    };
    std::vector<Row> rows;
    for (FileName& name : Names(absolute, folders))
        if (FitsPattern(name.text, pattern))
            rows.push_back({UpperCase(name.text), std::move(name)});
    std::sort(rows.begin(), rows.end(), [](const Row& a, const Row& b) {
        return std::tie(a.upper, a.name.text, a.name.exact) <
               std::tie(b.upper, b.name.text, b.name.exact);
    });
    FolderListing listing;
    for (Row& row : rows) {
        if (Contains(row.name.text, "\\"))
            listing.left_out.push_back(std::move(row.name.text));
        else
            listing.files.push_back(std::move(row.name));
    }
    return listing;
}

NameChange DriveFiles::RenameFile(std::string_view from, std::string_view to)
{
    const std::string source = FileToUse(from, "rename");
    const std::string target = FileToUse(to, "rename to");
    NameChange change{ExactNameOf(source), {}};
    change.to = ExactNewName(NameOf(target), change.from);
    Rename(source, target, change, Alike::text);
    return change;
}

NameChange DriveFiles::RenameExactly(std::string_view from, std::string_view to)
{
    const std::string source = FileToUse(from, "rename");
    const std::string target = FileToUse(to, "rename to");
    NameChange change{ExactNameOf(source), std::string(NameOf(target))};
    Rename(source, target, change, Alike::exact);
    return change;
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
