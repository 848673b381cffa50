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
    std::string_view end = {}; // the line that ends it; "": it has one line
};

constexpr BlockTag kBlockTags[] = {
    {"<zuequation>", zuequation},
    {"<zuplaywright>", zuplaywright, "</zuplaywright>"},
    {"<zuquiz1>", zuquiz1, "</zuquiz1>"},
    {"<zuquiz2>", zuquiz2, "</zuquiz2>"},
    {"<zusidebar1>", [](std::string& line, BlockContext&) { zusidebar(line, "left", "150"); }},
    {"<zusidebar2>", [](std::string& line, BlockContext&) { zusidebar(line, "right", "150"); }},
    {"<zusidebar3>", [](std::string& line, BlockContext&) { zusidebar(line, "left", "200"); }},
    {"<zusidebar4>", [](std::string& line, BlockContext&) { zusidebar(line, "right", "200"); }},
    {"<zusidebar5>", [](std::string& line, BlockContext&) { zusidebar(line, "left", "250"); }},
    {"<zusidebar6>", [](std::string& line, BlockContext&) { zusidebar(line, "right", "250"); }},
    {"<zutable>", [](std::string& line, BlockContext& context) { zutable(line, 0, context); },
     "</zutable>"},
    {"<zutable1>", [](std::string& line, BlockContext& context) { zutable(line, 1, context); },
     "</zutable1>"},
    {"<zutimeline1>", zutimeline, "</zutimeline1>"},
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
        context.reportmsg(tag + " is unknown!");
    context.memory.last_unknown_tag = tag;
}

} // namespace

std::vector<std::string_view> BlockTagWords()
{
    return ColumnOf(kBlockTags, &BlockTag::tag);
}

std::string_view EndLineOf(std::string_view tag)
{
    if (const BlockTag* const row = Find(tag))
        return row->end;
    return "</zutable>"; // that of an included file, "<zutab" and anything
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
