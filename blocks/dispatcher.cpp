#include "blocks/dispatcher.h"

#include "blocks/equations.h"
#include "blocks/play_scripts.h"
#include "blocks/quizzes.h"
#include "blocks/sidebars.h"
#include "blocks/tables.h"
#include "blocks/timelines.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <iterator>

namespace kiv {

namespace {

/// One block tag. `tag` is compared with the whole lower-cased tag of the line, so an attribute
/// makes it unknown.
struct BlockTag {
    std::string_view tag;
    void (*expand)(std::string& line, BlockContext& context);
};

constexpr BlockTag kBlockTags[] = {
    {"<zuequation>", zuequation},
    {"<zuplaywright>", zuplaywright},
    {"<zuquiz1>", zuquiz1},
    {"<zuquiz2>", [](std::string& line, BlockContext& context) { zuquiz2(line, 1, context); }},
    {"<zusidebar1>", [](std::string& line, BlockContext&) { zusidebar(line, "left", "150"); }},
    {"<zusidebar2>", [](std::string& line, BlockContext&) { zusidebar(line, "right", "150"); }},
    {"<zusidebar3>", [](std::string& line, BlockContext&) { zusidebar(line, "left", "200"); }},
    {"<zusidebar4>", [](std::string& line, BlockContext&) { zusidebar(line, "right", "200"); }},
    {"<zusidebar5>", [](std::string& line, BlockContext&) { zusidebar(line, "left", "250"); }},
    {"<zusidebar6>", [](std::string& line, BlockContext&) { zusidebar(line, "right", "250"); }},
    {"<zutable>", [](std::string& line, BlockContext& context) { zutable(line, 0, context); }},
    {"<zutable1>", [](std::string& line, BlockContext& context) { zutable(line, 1, context); }},
    {"<zutimeline1>",
     [](std::string& line, BlockContext& context) { zutimeline(line, "1", context); }},
};

/// A run of equal unknown tags is reported once.
void ReportUnknown(const std::string& tag, BlockContext& context)
{
    if (tag != context.memory.last_unknown_tag)
        context.reporter.reportmsg(tag + " is unknown!");
    context.memory.last_unknown_tag = tag;
}

/// Finds the first tag of `line` and calls its expander. The search wants a lower-case "<zu"; what
/// follows it may be written in any case.
void zudispatch(std::string& line, bool& again, BlockContext& context)
{
    again = false;
    const std::size_t start = line.find("<zu");
    if (start == npos)
        return;
    const std::size_t end = line.find('>', start + 1);
    if (end == npos) {
        context.reporter.reportmsg("Oops! Missing close '>' in: " + line);
        return;
    }
    const std::string tag = line.substr(start, end - start + 1);
    const auto* const row = std::find_if(
        std::begin(kBlockTags), std::end(kBlockTags),
        [lower = LowerCase(tag)](const BlockTag& known) { return known.tag == lower; });
    if (row == std::end(kBlockTags))
        ReportUnknown(tag, context);
    else
        row->expand(line, context);
}

} // namespace

void zuloop(std::string& line, int /*block_mode*/, BlockContext& context)
{
    // The dispatcher clears `again` and nothing sets it, so there is one pass and a second tag of
    // the line stays as written. The format wants it so; the limit is never met.
    constexpr int kEndless = 100;
    bool again = true;
    for (int count = 1; count < kEndless; ++count) {
        if (!again || !ContainsNoCase(line, "<zu"))
            return;
        zudispatch(line, again, context);
    }
    context.reporter.reportmsg("Endless loop encountered .... skipping past it.");
}

} // namespace kiv
