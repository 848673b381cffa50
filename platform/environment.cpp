#include "platform/environment.h"

#include "platform/drive_path.h"
#include "text/windows1252.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace kiv {

namespace {

namespace fs = std::filesystem;

fs::path FromUtf8Path(const std::string& utf8)
{
    return {std::u8string(utf8.begin(), utf8.end())};
}

/// The native form of a path on Z:, the one drive that stands before any is set.
std::string WithoutRootDrive(std::string path)
{
#ifndef _WIN32
    if (HasDrive(path) && ToUpper(path[0]) == 'Z') {
        path.replace(0, 2, "/");
        std::replace(path.begin(), path.end(), '\\', '/');
    }
#endif
    return path;
}

/// Absolute, without "." and "..", without a final separator; links are not resolved.
std::string AbsoluteNative(const std::string& utf8)
{
    std::error_code error; // a process directory that is gone leaves the path as it is
    fs::path path = FromUtf8Path(WithoutRootDrive(utf8));
    const fs::path absolute = fs::absolute(path, error);
    path = (error ? path : absolute).lexically_normal();
    if (!path.has_filename() && path.has_relative_path())
        path = path.parent_path();
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

/// Where drive C: lies when nobody says so; empty where the machine has one.
std::string DefaultDriveC(const Variables& variable)
{
#ifdef _WIN32
    static_cast<void>(variable);
    return {};
#else
    const std::optional<std::string> data = variable("XDG_DATA_HOME");
    const std::string folder =
        data && !data->empty() ? *data : variable("HOME").value_or("/") + "/.local/share";
    return folder + "/kiv/drive_c";
#endif
}

} // namespace

DriveMap DrivesFrom(const Variables& variable, const std::optional<std::string>& drive_c)
{
    DriveMap drives;
    for (char letter = 'A'; letter < 'Z'; ++letter) {
        const std::string name = std::string("KIV_DRIVE_") + letter;
        const std::optional<std::string> folder = variable(name.c_str());
        if (folder && !folder->empty())
            drives[letter] = AbsoluteNative(*folder);
    }
    if (drive_c && !drive_c->empty())
        drives['C'] = AbsoluteNative(*drive_c);
    const std::string own = DefaultDriveC(variable);
    if (!drives.contains('C') && !own.empty())
        drives['C'] = AbsoluteNative(own);
    return drives;
}

namespace {

/// A file or folder among the program's own records; empty where the environment names no place.
std::string AmongRecords(const Variables& variable, const std::string& name)
{
    const auto below = [&](const char* place, const std::string& rest) {
        const std::string folder = variable(place).value_or("");
        // A relative one would be another folder for each directory that the user stands in.
        return FromUtf8Path(folder).is_absolute() ? folder + rest : std::string();
    };
#ifdef _WIN32
    return below("LOCALAPPDATA", "\\kiv\\" + name);
#else
    const std::string state = below("XDG_STATE_HOME", "/kiv/" + name);
    return state.empty() ? below("HOME", "/.local/state/kiv/" + name) : state;
#endif
}

} // namespace

std::string RecordsFolderFrom(const Variables& variable)
{
    return AmongRecords(variable, "renames");
}

std::string RecentFileFrom(const Variables& variable)
{
    return AmongRecords(variable, "recent-folders.txt");
}

std::vector<std::string> ProgramFoldersFrom(const Variables& variable)
{
    std::vector<std::string> folders;
#ifdef _WIN32
    for (const char* const name : {"ProgramFiles", "ProgramFiles(x86)"})
        if (const std::optional<std::string> folder = variable(name))
            folders.push_back(*folder);
    if (const std::optional<std::string> own = variable("LOCALAPPDATA"))
        folders.push_back(*own + "\\Programs");
#else
    static_cast<void>(variable);
#endif
    return folders;
}

void MakeDriveC(const DriveMap& drives)
{
    const auto drive = drives.find('C');
    if (drive == drives.end())
        return;
    const fs::path folder = FromUtf8Path(drive->second);
    std::error_code ignored; // what cannot be made is missed, and told, where it is needed
    if (!fs::exists(folder, ignored))
        fs::create_directories(folder / "utils", ignored);
}

} // namespace kiv
