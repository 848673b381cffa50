// Blocks whose end tag is missing.
#pragma once

#include "inspect/finding.h"
#include "inspect/site_view.h"

#include <string>
#include <vector>

namespace kiv {

/// A block without its end: the build has broken it off, or gone on into what was to follow it.
struct OpenBlock {
    SourceLines lines;         // from its tag to the last line that went into it
    std::string tag;           // as it is written, "<zutable>"
    std::string end;           // the tag that is missing
    int end_before = 0;        // the line above which it belongs; 0: in the line of the tag
    std::string written = {};  // an end tag of another spelling; "": there is none
    int written_line = 0;      // of `written`
    bool takes_pages = false;  // the beginning of a page has gone into it
    bool takes_switch = false; // a "@@EOY" or "@@stop" has gone into it
};

/// In no order, and the same block once for each pass.
std::vector<OpenBlock> OpenBlocks(const SiteView& site);

/// Whether the finding tells of lines that have become what they are because one of the blocks has
/// no end.
bool IsOfOpenBlock(const SiteView& site, const std::vector<OpenBlock>& blocks,
                   const Finding& finding);

} // namespace kiv
