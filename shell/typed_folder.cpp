#include "shell/typed_folder.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "shell/workspace.h"
#include "text/text.h"
#include "text/windows1252.h"

namespace kiv {

namespace {

constexpr std::string_view kSeparators = "/\\";
constexpr std::string_view kChanged = "Current directory changed";

/// Without a root of the system's: "lab", "..\lab", and "\lab" on the current drive, but not
/// "\\server".
bool IsRelative(std::string_view typed)
{
    if (typed.starts_with('\\'))
        return !typed.substr(1).starts_with('\\');
    return !typed.empty() && !IsSeparator(typed[0]) && !HasDrive(typed);
}

/// The typed path as an absolute drive path; empty when no drive leads there.
std::string TypedDrivePath(const Machine& machine, std::string_view typed)
{
    if (IsRelative(typed))
        return AbsolutePath(FromUtf8(typed), machine.files.CurrentDirectory());
    return machine.native_paths.FromNative(typed);
}

std::string_view WithoutQuotes(std::string_view typed)
{
    const std::string_view path = Trim(typed);
    const bool is_quoted = path.size() >= 2 && path.front() == '"' && path.back() == '"';
    return is_quoted ? path.substr(1, path.size() - 2) : path;
}

std::string_view WithoutSeparator(std::string_view path)
{
    return path.substr(0, path.find_last_not_of(kSeparators) + 1);
}

RunError NoFolder(Files& files, std::string_view typed, const std::string& path)
{
    const std::string shown = FromUtf8(typed);
    if (!path.empty() && files.FileExists(path))
        return {ErrorKind::file, shown + " is a file", {path}, "Give the folder that it lies in."};
    return {ErrorKind::file,
            "there is no folder " + shown,
            {path},
            "Look at its spelling, and whether it was moved."};
}

} // namespace

std::string FolderOfTyped(const Machine& machine, std::string_view typed)
{
    const std::string_view wanted = WithoutQuotes(typed);
    if (wanted.empty())
        throw RunError(ErrorKind::file, "no folder was given", {},
                       "Type the path of one, as this program or the system has it.");
    std::string path = TypedDrivePath(machine, wanted);
    if (path.empty() || !machine.files.FolderExists(path))
        throw RunError(NoFolder(machine.files, wanted, path));
    return path;
}

std::string PathOfTyped(const Machine& machine, std::string_view typed)
{
    const std::string_view wanted = WithoutQuotes(typed);
    std::string path = TypedDrivePath(machine, wanted);
    if (wanted.empty() || path.empty())
        throw RunError(NoFolder(machine.files, wanted, path));
    return path;
}

std::vector<std::string> CompletionsOf(const Machine& machine, std::string_view typed)
{
    const std::size_t head_size = typed.find_last_of(kSeparators) + 1; // 0 where there is none
    const std::string head(typed.substr(0, head_size));
    const std::string_view begun = typed.substr(head_size);
    std::vector<std::string> whole;
    if (head.empty() && HasDrive(typed))
        return whole;
    try {
        const std::string folder = TypedDrivePath(machine, head.empty() ? "." : head);
        if (folder.empty() || !machine.files.FolderExists(folder))
            return whole;
        for (const std::string& name : machine.files.ListFolders(folder)) {
            std::string shown = ToUtf8(name);
            const bool is_hidden = shown.starts_with('.') && !begun.starts_with('.');
            if (!is_hidden && UpperCase(name).starts_with(UpperCase(FromUtf8(begun))))
                whole.push_back(head + shown);
        }
    } catch (const RunError&) {
        whole.clear(); // it is told when somebody goes there
    }
    return whole;
}

std::string NativeToCopy(const Machine& machine, std::string_view folder)
{
    std::string native = machine.native_paths.ToNative(folder);
    return native.empty() ? ToUtf8(folder) : native;
}

std::string NativeBeside(const Machine& machine, std::string_view folder)
{
    std::string native = NativeToCopy(machine, folder);
    return WithoutSeparator(native) == WithoutSeparator(ToUtf8(folder)) ? std::string() : native;
}

void GoToTyped(Workspace& workspace, std::string_view typed)
{
    workspace.switchto(FolderOfTyped(workspace.machine(), typed));
    workspace.machine().reporter.Status(kChanged);
}

void GoToPicked(Workspace& workspace, std::string_view folder)
{
    workspace.changethedirectory(folder);
    workspace.machine().reporter.Status(kChanged);
}

void TellAddedJump(Workspace& workspace, std::string_view folder)
{
    workspace.AddToJumps(folder);
    workspace.machine().reporter.Status("Added to the Jump to list");
}

} // namespace kiv
