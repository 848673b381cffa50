#include "platform/file_errors.h"

#include "platform/run_error.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <utility>

namespace kiv {

void Refuse(std::string_view action, std::string_view path, std::string_view reason)
{
    std::string text("cannot ");
    text.append(action).append(" ").append(path).append(": ").append(reason);
    throw RunError(ErrorKind::file, std::move(text));
}

void RefuseWith(std::string_view action, std::string_view path, int error)
{
    Refuse(action, path, SystemReason(error));
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
