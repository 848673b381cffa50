#include "cli/call_table.h"
#include "cli/docs.h"
#include "cli/help.h"
#include "cli/roff.h"

#include <string_view>

namespace kiv {

namespace {

void AddOptions(std::string& page, std::span<const OptionRow> rows)
{
    for (const OptionRow& row : rows) {
        page.append(".TP\n\\fB").append(Roff(row.name)).append("\\fR");
        if (!row.value.empty())
            page.append(" \\fI").append(Roff(row.value)).append("\\fR");
        page.append("\n").append(RoffLines(AboutOption(row)));
    }
}

void AddCommand(std::string& page, const CallRow& row)
{
    page.append(".SS \"").append(Roff(Synopsis(row))).append("\"\n");
    page.append(RoffLines(std::string(row.about) + ".")).append(RoffLines(row.details));
    AddOptions(page, row.arguments);
    AddOptions(page, row.options);
    page.append(".PP\n.nf\n").append(Roff(Example(row))).append(".fi\n");
}

} // namespace

std::string ManualPage()
{
    std::string page = RoffHead(kProgram, kSummary);
    page.append("[\\fIOPTIONS\\fR] \\fICOMMAND\\fR ...\n");
    page.append(".SH DESCRIPTION\n").append(RoffLines(kAbout)).append(".SH OPTIONS\n");
    AddOptions(page, GlobalOptions());
    page.append(".SH COMMANDS\n");
    for (const CallRow& row : Calls())
        AddCommand(page, row);
    for (const Topic& topic : Topics())
        page += RoffSection(topic.heading, topic.text);
    return page.append(".SH \"SEE ALSO\"\n.BR kiv (1)\n");
}

} // namespace kiv
