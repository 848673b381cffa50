#include "blocks/timelines.h"

#include "text/text.h"

namespace kiv {

void zutimeline(std::string& line, BlockContext& context)
{
    std::string output = "<table border=0 cellspacing=0 cellpadding=2 bgcolor=293163><tr><td>"
                         "<table border=0 cellspacing=2 cellpadding=6 bgcolor=white>";
    for (;;) {
        line = context.lines.Next();
        if (line.starts_with('@')) {
            context.bigoops("zutimeline");
            return;
        }
        if (line.starts_with(kTimelineEnd)) {
            line = output.append("</table></td></tr></table>");
            return;
        }
        const std::size_t bar = line.find('|');
        if (bar == npos) {
            context.reportmsg("Oops! zutimeline");
            return;
        }
        // The label's bold font is never closed. The format wants it so.
        output.append("<tr><td bgcolor=293163><b><font color=white>").append(line, 0, bar);
        output.append("</td><td>").append(line, bar + 1).append("</td></tr>");
    }
}

} // namespace kiv
