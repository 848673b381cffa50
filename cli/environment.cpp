#include "cli/environment.h"

#include <filesystem>
#include <system_error>

namespace kiv {

namespace {

namespace fs = std::filesystem;

fs::path FromUtf8Path(const std::string& utf8)
{
    return {std::u8string(utf8.begin(), utf8.end())};
}

/// Absolute, without "." and "..", without a final separator; links are not resolved.
std::string AbsoluteNative(const std::string& utf8)
{
    fs::path path = fs::absolute(FromUtf8Path(utf8)).lexically_normal();
    if (!path.has_filename() && path.has_relative_path())
        path = path.parent_path();
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string DataFolder(const CliSurroundings& around)
{
    const std::optional<std::string> data = around.variable("XDG_DATA_HOME");
    if (data && !data->empty())
        return *data;
    return around.variable("HOME").value_or("/") + "/.local/share";
}

} // namespace

DriveMap DrivesFrom(const CliSurroundings& around, const std::optional<std::string>& drive_c)
{
    DriveMap drives;
    for (char letter = 'A'; letter < 'Z'; ++letter) {
        const std::string name = std::string("KIV_DRIVE_") + letter;
        const std::optional<std::string> folder = around.variable(name.c_str());
        if (folder && !folder->empty())
            drives[letter] = AbsoluteNative(*folder);
    }
    if (drive_c && !drive_c->empty())
        drives['C'] = AbsoluteNative(*drive_c);
    if (!drives.contains('C'))
        drives['C'] = AbsoluteNative(DataFolder(around) + "/kiv/drive_c");
    return drives;
}

void MakeDriveC(const DriveMap& drives)
{
    const fs::path folder = FromUtf8Path(drives.at('C'));
    std::error_code ignored; // what cannot be made is missed, and told, where it is needed
    if (!fs::exists(folder, ignored))
        fs::create_directories(folder / "utils", ignored);
}

} // namespace kiv
