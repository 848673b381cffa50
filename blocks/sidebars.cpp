#include "blocks/sidebars.h"

#include "text/text.h"

namespace kiv {

void zusidebar(std::string& line, std::string_view align, std::string_view width)
{
    constexpr std::size_t kStartTagSize = 12; // "<zusidebar1>"
    constexpr std::size_t kEndTagSize = 13;   // "</zusidebar1>"

    // The dispatcher takes any case, this search does not: "<zuSidebar1>" stays as written.
    const std::size_t start = line.find("<zusidebar");
    if (start == npos)
        return;
    std::string box = "<table cellspacing=0 cellpadding=6 align=";
    box.append(align).append(" width=").append(width);
    box.append(" border=0 bgcolor=\"#ffeecc\" hspace=7><TR><TD>"
               "<font face='verdana,geneva,arial,helvetica,helv' size=2>");
    line.replace(start, kStartTagSize, box);

    // A side bar is a one-line construct: an end tag on a later line is never converted. The font
    // stays open. An end tag that stands before the start tag is taken like any other.
    const std::size_t end = line.find(kSidebarEnd);
    if (end != npos)
        line.replace(end, kEndTagSize, "</td></tr></table>");
}

} // namespace kiv
