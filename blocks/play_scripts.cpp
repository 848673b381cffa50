#include "blocks/play_scripts.h"

#include "text/text.h"

namespace kiv {

namespace {

/// One row: speaker and speech, or a line without a tab across both columns. The speech's font
/// stays open.
void AppendRow(std::string& output, std::string_view line)
{
    const std::size_t tab = line.find('\t');
    if (tab == npos) {
        output.append("<tr><td colspan=2><font face='geneva,arial,helvetica,helv' size=2>");
        output.append(line).append("</td></tr>");
        return;
    }
    output.append("<tr><td align=right valign=top>"
                  "<font face='geneva,arial,helvetica,helv' size=2 color=#aa0000>");
    output.append(line.substr(0, tab)).append("</font></td><td>");
    output.append(line.substr(tab + 1)).append("</td></tr>");
}

} // namespace

void zuplaywright(std::string& line, BlockContext& context)
{
    std::string output = "<center><table border=0 cellspacing=0 cellpadding=5>";
    for (;;) {
        line = context.lines.Next();
        if (line.starts_with('@')) {
            context.bigoops("Missing close zuplaywright: " + output);
            return;
        }
        if (line.starts_with(kPlayEnd)) {
            line = output.append("</table></center><p>");
            return;
        }
        if (line.starts_with("<zu")) {
            // The start tag of the other block is lost; the line after it is named and stays.
            line = context.lines.Next();
            context.reportmsg("Oops! zuplaywright error before: " + line);
            return;
        }
        AppendRow(output, line);
    }
}

} // namespace kiv
