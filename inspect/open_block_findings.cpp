// Block tags without their end.
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/open_blocks.h"
#include "text/joined_text.h"
#include "text/text.h"

namespace kiv {

namespace {

std::string WhatToDo(const OpenBlock& block)
{
    if (block.end_before == 0)
        return Joined({"put \"", block.end, "\" into the same line"});
    if (block.written_line > 0)
        return Joined({"write \"", block.end, "\" instead of \"", block.written, "\" in line ",
                       Decimal(block.written_line)});
    return Joined({"put \"", block.end, "\" before line ", Decimal(block.end_before)});
}

} // namespace

void FindUnclosedTags(const SiteView& site, FindingSink& sink)
{
    for (const OpenBlock& block : OpenBlocks(site))
        sink.Add(site.PlaceOf(site.sources[block.lines.source], block.lines.first),
                 Joined({"\"", block.tag, "\" has no end"}), WhatToDo(block));
}

} // namespace kiv
