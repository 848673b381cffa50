#include "shell/list_files.h"

#include "platform/drive_path.h"
#include "platform/reporter.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/table_column.h"
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

constexpr std::string_view kJumpSample = ";label|path\r\n"
                                         ";for example: quillcrest|e:\\internet\\quillcrest\\\r\n";
constexpr std::string_view kUploadSample = ";Label|ftp line\r\n"
                                           ";for example: Test|E:\\progs\\ws_ftp\\ftp95pro.exe -i "
                                           "zu_pa000.ini -p zu -s local:e:/test/test.htm"
                                           " -d Test:/public/test/test.htm\r\n";

} // namespace

std::vector<std::string> ReadLines(Files& files, std::string_view path)
{
    std::vector<std::string> lines;
    const std::string bytes = files.ReadFile(path);
    for (std::string_view rest = bytes; !rest.empty();)
        lines.emplace_back(TakeLine(rest));
    return lines;
}

std::string FirstLine(Files& files, std::string_view path)
{
    if (!files.FileExists(path))
        return {};
    const std::string bytes = files.ReadFile(path);
    std::string_view rest = bytes;
    return rest.empty() ? std::string() : std::string(TakeLine(rest));
}

EditorSetting loadeditor(Files& files)
{
    EditorSetting setting{FirstLine(files, kEditorFile)};
    if (setting.command.empty()) {
        setting.command = kDefaultEditor;
        setting.editor_is_missing = !files.FileExists(kDefaultEditor);
    }
    if (!setting.command.ends_with(' '))
        setting.command += ' ';
    return setting;
}

void loadjumps(Files& files, std::vector<JumpEntry>& entries)
{
    entries.clear();
    if (!files.FileExists(kJumpListFile))
        return;
    int line_number = 0;
    for (const std::string& line : ReadLines(files, kJumpListFile)) {
        ++line_number;
        const std::vector<std::string_view> fields = Split(line, '|');
        if (line.starts_with(';') || fields.size() < 2)
            continue;
        if (entries.size() == kJumpEntries)
            throw RunError(ErrorKind::subscript, "more than 10 jump entries",
                           {kJumpListFile, line_number, {}},
                           "There is room for 10: take one out, or put \";\" before its line.");
        std::string path(Trim(fields[1]));
        if (!path.ends_with('\\'))
            path += '\\';
        entries.push_back({std::string(Trim(fields[0])), std::move(path)});
    }
}

namespace {

std::string LabelOf(std::string_view folder)
{
    std::string label = ThisDirNameOf(folder);
    return label.empty() ? std::string(folder) : label;
}

void RefuseAsJump(const std::vector<JumpEntry>& entries, const std::string& path)
{
    for (const JumpEntry& entry : entries)
        if (EqualsNoCase(entry.path, path))
            throw RunError(ErrorKind::file, path + " is in the Jump to list already", {path},
                           "Its entry is called \"" + entry.label + "\".");
    if (entries.size() == kJumpEntries)
        throw RunError(ErrorKind::file, "the Jump to list is full", {kJumpListFile},
                       "There is room for 10: take one out with \"Edit Jump to list\".");
    if (path.find_first_of("|\r\n") != std::string::npos || LabelOf(path).starts_with(';'))
        throw RunError(
            ErrorKind::file, path + " cannot stand in the Jump to list", {path},
            "A \"|\" or a line end in a path, or a \";\" before a label, means something "
            "else there: give the folder another name.");
}

} // namespace

void AddJump(Files& files, std::string_view folder)
{
    const std::string path = WithSeparator(folder);
    ProvideJumpList(files);
    std::vector<JumpEntry> entries;
    loadjumps(files, entries);
    RefuseAsJump(entries, path);
    const std::string old = files.ReadFile(kJumpListFile);
    const bool ends_open = !old.empty() && old.back() != '\n' && old.back() != '\r';
    files.ReplaceSource(kJumpListFile, old,
                        Joined({old, ends_open ? "\r\n" : "", LabelOf(path), "|", path, "\r\n"}));
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
        const Place where = {kUploadListFile, line_number, {}};
        if (fields.size() < 2)
            throw RunError(ErrorKind::subscript, "upload entry without \"|\"", where,
                           "Write it as \"folder|command\"; a remark has no place in this file.");
        if (count == 50)
            throw RunError(ErrorKind::subscript, "more than 50 upload entries", where,
                           "There is room for 50: take one out.");
        ++count;
        entries[count] = {std::string(fields[0]), std::string(fields[1])};
    }
    return count;
}

void ProvideJumpList(Files& files)
{
    if (!files.FileExists(kJumpListFile))
        files.WriteNewSource(kJumpListFile, kJumpSample);
}

void ProvideUploadList(Files& files)
{
    if (!files.FileExists(kUploadListFile))
        files.WriteNewSource(kUploadListFile, kUploadSample);
}

std::vector<std::string_view> AddressNames()
{
    return ColumnOf(kAddressNames, &AddressName::name);
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
