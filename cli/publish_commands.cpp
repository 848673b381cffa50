// The commands that make what goes out beside the pages.
#include "cli/commands.h"
#include "cli/report.h"
#include "cli/values.h"
#include "exchange/web_address.h"
#include "shell/feeds.h"
#include "shell/thumbnails.h"
#include "shell/uploads.h"
#include "shell/workspace.h"

#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kMostSize = 4000;
constexpr std::size_t kMostQuality = 100;

/// What is wrong with a number that is to lie between 1 and `most`; "" when nothing is.
std::string RangeFault(const std::string& number, std::size_t most)
{
    const std::size_t value = ParseNumber(number).value_or(0);
    return value >= 1 && value <= most ? "" : "a number from 1 to " + std::to_string(most);
}

/// A number that was given, else `otherwise`.
int NumberOf(const GivenValues& given, std::string_view option, int otherwise)
{
    return given.Has(option) ? static_cast<int>(ParseNumber(given.Native(option)).value_or(0))
                             : otherwise;
}

} // namespace

std::string SizeFault(const std::string& size)
{
    return RangeFault(size, kMostSize);
}

std::string QualityFault(const std::string& quality)
{
    return RangeFault(quality, kMostQuality);
}

void RunThumbs(CallDesk& desk, const GivenValues& given)
{
    const ThumbnailLook look;
    const std::string folder = given.Text("--folder");
    MakeThumbnails(desk.workspace, {.look = {.size = NumberOf(given, "--size", look.size),
                                             .quality = NumberOf(given, "--quality", look.quality)},
                                    .folder = folder,
                                    .over_others = given.Has("--force")});
}

void RunUpload(CallDesk& desk, const GivenValues& given)
{
    if (!given.Has("--dry-run")) {
        Upload(desk.workspace);
        return;
    }
    const UploadPlan plan = PlanUpload(desk.workspace);
    for (std::string& line : UploadLines(plan)) // a dry run lists programs and starts none
        desk.workspace.machine().programs.Run({.command = std::move(line)}, "", {});
    desk.report.guide = PlanText(plan);
}

std::string AddressFault(const std::string& address)
{
    return BaseFault(address);
}

void RunFeed(CallDesk& desk, const GivenValues& given)
{
    WriteFeeds(desk.workspace, given.Native("--base"));
}

void RunSiteMapXml(CallDesk& desk, const GivenValues& given)
{
    WriteSiteMapXml(desk.workspace, given.Native("--base"));
}

} // namespace kiv
