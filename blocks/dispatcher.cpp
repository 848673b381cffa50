#include "blocks/dispatcher.h"

#include "blocks/equations.h"
#include "blocks/play_scripts.h"
#include "blocks/quizzes.h"
#include "blocks/sidebars.h"
#include "blocks/tables.h"
#include "blocks/timelines.h"
#include "text/table_column.h"
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
    std::span<const std::string_view> ends; // of the block
    bool is_one_line = false;
};

constexpr std::string_view kEquationEnds[] = {kEquationEnd};
constexpr std::string_view kPlayEnds[] = {kPlayEnd};
constexpr std::string_view kQuizEnds[] = {kQuizEnd};
constexpr std::string_view kSidebarEnds[] = {kSidebarEnd};
constexpr std::string_view kTableEnds[] = {kTableEnd};
constexpr std::string_view kTimelineEnds[] = {kTimelineEnd};

constexpr BlockTag kBlockTags[] = {
    {"<zuequation>", zuequation, kEquationEnds, true},
    {"<zuplaywright>", zuplaywright, kPlayEnds},
    {"<zuquiz1>", zuquiz1, kQuizEnds},
    {"<zuquiz2>", zuquiz2, kSelfCheckEnds},
    {"<zusidebar1>", [](std::string& line, BlockContext&) { zusidebar(line, "left", "150"); },
     kSidebarEnds, true},
    {"<zusidebar2>", [](std::string& line, BlockContext&) { zusidebar(line, "right", "150"); },
     kSidebarEnds, true},
    {"<zusidebar3>", [](std::string& line, BlockContext&) { zusidebar(line, "left", "200"); },
     kSidebarEnds, true},
    {"<zusidebar4>", [](std::string& line, BlockContext&) { zusidebar(line, "right", "200"); },
     kSidebarEnds, true},
    {"<zusidebar5>", [](std::string& line, BlockContext&) { zusidebar(line, "left", "250"); },
     kSidebarEnds, true},
    {"<zusidebar6>", [](std::string& line, BlockContext&) { zusidebar(line, "right", "250"); },
     kSidebarEnds, true},
    {"<zutable>", [](std::string& line, BlockContext& context) { zutable(line, 0, context); },
     kTableEnds},
    {"<zutable1>", [](std::string& line, BlockContext& context) { zutable(line, 1, context); },
     kTableEnds},
    {"<zutimeline1>", zutimeline, kTimelineEnds},
};

/// The row of a tag, however its letters are written; null when it is unknown.
const BlockTag* Find(std::string_view tag)
{
    const auto* const row = std::find_if(
        std::begin(kBlockTags), std::end(kBlockTags),
        [lower = LowerCase(tag)](const BlockTag& known) { return known.tag == lower; });
    return row == std::end(kBlockTags) ? nullptr : row;
}

/// A run of equal unknown tags is reported once.
void ReportUnknown(const std::string& tag, BlockContext& context)
{
    if (tag != context.memory.last_unknown_tag)
        context.reportmsg(std::string(tag).append(kUnknownTagWarning));
    context.memory.last_unknown_tag = tag;
}

} // namespace

std::vector<std::string_view> BlockTagWords()
{
    return ColumnOf(kBlockTags, &BlockTag::tag);
}

std::string EndLineOf(std::string_view tag)
{
    const BlockTag* const row = Find(tag);
    if (row == nullptr)
        return "</zutable>"; // that of an included file, "<zutab" and anything
    return row->is_one_line ? "" : "</" + std::string(row->tag.substr(1));
}

std::vector<BlockTagForm> BlockTagForms()
{
    std::vector<BlockTagForm> forms;
    for (const BlockTag& row : kBlockTags)
        forms.push_back({row.tag, row.ends, row.is_one_line});
    return forms;
}

void zuloop(std::string& line, BlockContext& context)
{
    // The search wants a lower-case "<zu"; what follows it may be written in any case.
    const std::size_t start = line.find("<zu");
    if (start == npos)
        return;
    const std::size_t end = line.find('>', start + 1);
    if (end == npos) {
        context.reportmsg("Oops! Missing close '>' in: " + line);
        return;
    }
    const std::string tag = line.substr(start, end - start + 1);
    const BlockTag* const row = Find(tag);
    if (row == nullptr)
        ReportUnknown(tag, context);
    else
        row->expand(line, context);
}

} // namespace kiv
