#include "shell/messages.h"

#include "shell/story_parts.h"
#include "shell/workspace.h"
#include "text/text.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

bool IsSame(const Finding& one, const Finding& other)
{
    return one.severity == other.severity && one.text == other.text &&
           one.where.Text() == other.where.Text();
}

} // namespace

bool MessageList::FollowCommand(const Workspace& workspace, const std::vector<Warning>& warnings,
                                const std::optional<RunError>& error)
{
    if (workspace.Built || workspace.Checked)
        messages_.clear();
    if (workspace.Checked)
        messages_ = workspace.Checked->findings;
    const bool has_findings = !messages_.empty() && workspace.Checked;
    const bool is_build = workspace.Built.has_value();
    for (const Warning& warning : warnings) {
        Finding message{Severity::warning, "", warning.text, warning.where, warning.hint};
        if (is_build) // as many as there are
            messages_.push_back(std::move(message));
        else
            Add(std::move(message));
    }
    if (error)
        Add({Severity::error, "", error->text, error->where, error->hint});
    return has_findings || !warnings.empty() || error.has_value();
}

void MessageList::Add(Finding message)
{
    const auto is_same = [&](const Finding& other) { return IsSame(message, other); };
    std::erase_if(messages_, is_same); // it stands where it was told last
    messages_.push_back(std::move(message));
}

std::string ShownPlace(const KeptPlace& where, std::string_view folder)
{
    if (where.line > 0 && !where.file.empty())
        return PlaceWords({where.file, where.line, where.line}, folder);
    const bool is_inside = StartsWithNoCase(where.file, folder);
    return is_inside ? where.file.substr(folder.size()) : where.file;
}

} // namespace kiv
