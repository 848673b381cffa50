// What an error at a file or a program says: "cannot read C:\a.txt: permission denied".
#pragma once

#include "platform/file_reader.h"

#include <string>
#include <string_view>

namespace kiv {

/// Why a file cannot be used, and what can be done about it.
struct FileReason {
    constexpr FileReason(const char* reason, std::string_view what_to_do = {})
        : text(reason), hint(what_to_do)
    {
    }
    /// The reason must outlive this.
    FileReason(const std::string& reason, std::string_view what_to_do = {}, bool passing = false)
        : text(reason), hint(what_to_do), may_pass(passing)
    {
    }

    std::string_view text;
    std::string_view hint; // a sentence; "": nothing
    bool may_pass = false; // by itself, when another program is done
};

// Reasons that several calls have.
inline constexpr auto kNoSuchFolder =
    FileReason("no such folder", "Look at the spelling of the folder's name, or make the folder.");
inline constexpr auto kNoSuchFile =
    FileReason("no such file", "Look at the spelling of the file's name.");
inline constexpr auto kNoSuchProgram =
    FileReason("no such program", "Install the program, or mend the command that names it.");
inline constexpr auto kNoPlainFile =
    FileReason("no plain file", "Take another name: what has this one is no file that can be "
                                "read or written.");
inline constexpr auto kFolderInTheWay = FileReason(
    "a folder has this name", "Give the folder another name, or take another one for the file.");
inline constexpr auto kLinkToNothing =
    FileReason("a link that leads to nothing has this name",
               "Take the link away, or make what it leads to, and start again.");
inline constexpr auto kTargetExists =
    FileReason("target exists", "Move or rename the file that has the new name already.");
inline constexpr auto kOtherRun =
    FileReason("another run of kiv is at work there",
               "Wait until the other run has ended, and start this one again.");

// What can be done about errors that every operating system knows.
inline constexpr std::string_view kNoRightHint =
    "You may not do this: change the rights of the file or of its folder, or ask whom it belongs "
    "to.";
inline constexpr std::string_view kNothingThereHint =
    "Nothing has this name: look at its spelling, and whether it was moved.";
inline constexpr std::string_view kFullDiskHint = "Make room on the disk, and start again.";
inline constexpr std::string_view kReadOnlyDiskHint =
    "This disk takes no changes: copy the folder to another one, and work there.";
inline constexpr std::string_view kInUseHint =
    "Another program uses the file: close it there, and start again.";
inline constexpr std::string_view kFailingDiskHint =
    "The disk may be failing: copy what you need to another one, and start again there.";
inline constexpr std::string_view kManyFilesHint =
    "Too many files are open: close some programs, and start again.";

/// Throws RunError of kind `file`: "cannot `action` `path`: `reason`". An absolute drive path is
/// what the error is about.
[[noreturn]] void Refuse(std::string_view action, std::string_view path, const FileReason& reason);
/// The same with the reason that an error number of the operating system stands for.
[[noreturn]] void RefuseWith(std::string_view action, std::string_view path, int error);
/// The same for what is to be started; a command line is no place.
[[noreturn]] void RefuseStart(std::string_view command, const FileReason& reason);

/// The content of a file. When there is none, the error says `what_to_do`.
std::string ReadNeeded(FileReader& files, std::string_view path, std::string_view what_to_do);

/// The operating system's words for an error number, as it has them.
std::string SystemWords(int error);
/// The same beginning in lower case and without full stop.
std::string SystemReason(int error);
/// What a user can do about it; "" when that is not known.
std::string_view SystemHint(int error);
/// Whether another program may be the cause, one that has the file in use for a moment.
bool SystemMayPass(int error);

} // namespace kiv
