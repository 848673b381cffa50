#include "preview/page_overview.h"

#include "platform/drives.h"
#include "platform/reporter.h"
#include "shell/workspace.h"

#include <chrono>
#include <utility>

namespace kiv {

namespace {

SourceWatch::Instant Now()
{
    return std::chrono::steady_clock::now();
}

} // namespace

bool PageOverview::FollowCommand(const std::optional<RunError>& error)
{
    if (!workspace_.Built) {
        const bool is_due = directory_ != workspace_.WorkDir || IsOutdated();
        if (is_due)
            ReadAgain();
        return is_due;
    }
    // Reading begins anew what is known of written files.
    const BuildTale tale{*workspace_.Built, drives_.WrittenFiles(),
                         workspace_.machine().reporter.Warnings(), error ? error->text : ""};
    ReadAgain();
    fates_.Take(tale, pages_);
    fates_.AddTo(pages_);
    return true;
}

void PageOverview::ReadAgain()
{
    directory_ = workspace_.WorkDir;
    watch_.Begin(Now());
    pages_ = ReadSitePages(workspace_);
    watch_.End(SourceWatch::Ended::whole, Now());
    fates_.AddTo(pages_);
}

bool PageOverview::IsOutdated()
{
    return !watch_.Look(Now()).changed.empty();
}

} // namespace kiv
