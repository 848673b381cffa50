// The list and settings files that a user keeps in the utilities folder.
#pragma once

#include "platform/addresses.h"
#include "platform/fixed_table.h"
#include "platform/files.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

inline constexpr std::string_view kEditorFile = "c:\\utils\\kiv_editpad.txt";
inline constexpr std::string_view kDefaultEditor = "c:\\utils\\editpad.exe";
inline constexpr std::string_view kUploadListFile = "c:\\utils\\ftplist.txt";
inline constexpr std::string_view kAddressFile = "c:\\utils\\kivaddr.ini";

/// The lines of a text file. Throws `file` when it cannot be read.
std::vector<std::string> ReadLines(Files& files, std::string_view path);

/// The editor command: a prefix to which a file name is appended, so it always ends in a blank.
struct EditorSetting {
    std::string command;
    bool editor_is_missing = false; // no setting, and the usual editor is not there
};
EditorSetting loadeditor(Files& files);

/// One entry of the upload list.
struct UploadEntry {
    std::string label;
    std::string command;
};
using UploadEntries = FixedTable<UploadEntry, 0, 50>;

/// Reads the upload list into `entries` from index 1 on and returns the index of the last. Throws `subscript` for a 51st
/// entry and for a line without "|".
int loadftplist(Files& files, UploadEntries& entries);

/// The addresses of generated pages: the defaults, and what the user's list says instead.
Addresses LoadAddresses(Files& files);

} // namespace kiv
