// The list and settings files that a user keeps in the utilities folder.
#pragma once

#include "builder/addresses.h"
#include "platform/files.h"
#include "platform/fixed_table.h"
#include "platform/site_files.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

inline constexpr std::string_view kDefaultEditor = "c:\\utils\\editpad.exe";

/// The lines of a text file. Throws `file` when it cannot be read.
std::vector<std::string> ReadLines(Files& files, std::string_view path);

/// The first line of a settings file; "" when the file is missing or empty: a settings file must
/// never keep the program from starting.
std::string FirstLine(Files& files, std::string_view path);

/// The editor command: a prefix to which a file name is appended, so it always ends in a blank.
struct EditorSetting {
    std::string command;
    bool editor_is_missing = false; // no setting, and the usual editor is not there
};
EditorSetting loadeditor(Files& files);

/// One entry of the jump list.
struct JumpEntry {
    std::string label;
    std::string path; // ends in "\"
};
inline constexpr std::size_t kJumpEntries = 10;

/// Reads the jump list into `entries`, which hold at most ten. Throws `subscript` for an eleventh,
/// with the first ten in place.
void loadjumps(Files& files, std::vector<JumpEntry>& entries);

/// One entry of the upload list.
struct UploadEntry {
    std::string label;
    std::string command;
};
using UploadEntries = FixedTable<UploadEntry, 0, 50>;

/// Reads the upload list into `entries` from index 1 on and returns the index of the last. Throws
/// `subscript` for a 51st entry and for a line without "|".
int loadftplist(Files& files, UploadEntries& entries);

/// Puts a folder (a drive path) at the end of the jump list, which is made when it is missing; its
/// own name is the label. Throws RunError when it is there already, when the list is full, or when
/// it cannot stand in a line of it: `file`, or `subscript` as loadjumps.
void AddJump(Files& files, std::string_view folder);

/// Makes the jump list or the upload list with its sample lines when it is missing.
void ProvideJumpList(Files& files);
void ProvideUploadList(Files& files);

/// The names under which the user's list sets an address.
std::vector<std::string_view> AddressNames();

/// The addresses of generated pages: the defaults, and what the user's list says instead.
Addresses LoadAddresses(Files& files);

} // namespace kiv
