#include "platform/file_errors.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <utility>

namespace kiv {

namespace {

bool IsAbsolute(std::string_view path)
{
    return path.size() > 2 && HasDrive(path) && IsSeparator(path[2]);
}

/// Whether the disk says that there is no such file.
bool IsMissing(FileReader& files, std::string_view path)
{
    try {
        return !files.FileExists(path);
    } catch (const RunError&) {
        return false;
    }
}

RunError Refusal(std::string_view action, std::string_view path, const FileReason& reason)
{
    RunError error(ErrorKind::file, Joined({"cannot ", action, " ", path, ": ", reason.text}), {},
                   std::string(reason.hint));
    error.may_pass = reason.may_pass;
    return error;
}

} // namespace

void Refuse(std::string_view action, std::string_view path, const FileReason& reason)
{
    RunError error = Refusal(action, path, reason);
    if (IsAbsolute(path))
        error.file = path;
    throw RunError(std::move(error));
}

void RefuseWith(std::string_view action, std::string_view path, int error)
{
    const std::string reason = SystemReason(error);
    Refuse(action, path, {reason, SystemHint(error), SystemMayPass(error)});
}

void RefuseStart(std::string_view command, const FileReason& reason)
{
    throw Refusal("start", command, reason);
}

std::string ReadNeeded(FileReader& files, std::string_view path, std::string_view what_to_do)
{
    try {
        return files.ReadFile(path);
    } catch (RunError& error) {
        if (error.kind == ErrorKind::file && IsMissing(files, path))
            error.hint = what_to_do;
        throw;
    }
}

std::string SystemReason(int error)
{
    std::string reason = SystemWords(error);
    while (!reason.empty() && std::string_view(". \r\n").find(reason.back()) != npos)
        reason.pop_back();
    // An abbreviation such as "I/O error" keeps its capital.
    const bool word = reason.size() > 1 && ToUpper(reason[1]) != reason[1];
    if (word)
        reason[0] = ToLower(reason[0]);
    return reason;
}

} // namespace kiv
