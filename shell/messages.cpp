#include "shell/messages.h"

#include "shell/workspace.h"

namespace kiv {

std::vector<Finding> MessagesOf(const Workspace& workspace, const std::vector<Warning>& warnings,
                                const std::optional<RunError>& error)
{
    std::vector<Finding> messages;
    if (workspace.Checked)
        messages = workspace.Checked->findings;
    for (const Warning& warning : warnings)
        messages.push_back({Severity::warning, "", warning.text, warning.where, warning.hint});
    if (error)
        messages.push_back({Severity::error, "", error->text, error->where, error->hint});
    return messages;
}

} // namespace kiv
