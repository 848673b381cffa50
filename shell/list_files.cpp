#include "shell/list_files.h"

#include "platform/run_error.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <array>
#include <utility>

namespace kiv {

namespace {

struct AddressName {
    std::string_view name;
    std::string Addresses::*field;
};

constexpr std::array<AddressName, 6> kAddressNames = {{
    {"kel", &Addresses::kel},
    {"mor", &Addresses::mor},
    {"plugin page", &Addresses::plugin_page},
    {"plugin cabinet", &Addresses::plugin_cabinet},
    {"sender", &Addresses::sender},
    {"recipient", &Addresses::recipient},
}};

} // namespace

std::vector<std::string> ReadLines(Files& files, std::string_view path)
{
    std::vector<std::string> lines;
    const std::string bytes = files.ReadFile(path);
    for (std::string_view rest = bytes; !rest.empty();)
        lines.emplace_back(TakeLine(rest));
    return lines;
}

EditorSetting loadeditor(Files& files)
{
    EditorSetting setting;
    if (files.FileExists(kEditorFile)) {
        const std::vector<std::string> lines = ReadLines(files, kEditorFile);
        if (!lines.empty())
            setting.command = lines[0];
    }
    // An empty settings file counts as none: it must not keep the program from starting.
    if (setting.command.empty()) {
        setting.command = kDefaultEditor;
        setting.editor_is_missing = !files.FileExists(kDefaultEditor);
    }
    if (!setting.command.ends_with(' '))
        setting.command += ' ';
    return setting;
}

int loadftplist(Files& files, UploadEntries& entries)
{
    int count = 0;
    if (!files.FileExists(kUploadListFile))
        return count;
    int line_number = 0;
    for (const std::string& line : ReadLines(files, kUploadListFile)) {
        ++line_number;
        if (line.empty())
            continue;
        const std::vector<std::string_view> fields = Split(line, '|');
        const std::string where =
            std::string(kUploadListFile) + ", line " + std::to_string(line_number);
        if (fields.size() < 2)
            throw RunError(ErrorKind::subscript, "upload entry without \"|\"", where);
        if (count == 50)
            throw RunError(ErrorKind::subscript, "more than 50 upload entries", where);
        ++count;
        entries[count] = {std::string(fields[0]), std::string(fields[1])};
    }
    return count;
}

Addresses LoadAddresses(Files& files)
{
    Addresses addresses;
    if (!files.FileExists(kAddressFile))
        return addresses;
    for (const std::string& line : ReadLines(files, kAddressFile)) {
        const std::vector<std::string_view> fields = Split(line, '|');
        if (fields.size() < 2 || line.starts_with(';'))
            continue;
        for (const AddressName& address : kAddressNames)
            if (EqualsNoCase(Trim(fields[0]), address.name))
                addresses.*address.field = Trim(fields[1]);
    }
    return addresses;
}

} // namespace kiv
