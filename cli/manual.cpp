#include "cli/call_table.h"
#include "cli/docs.h"
#include "cli/help.h"

#include <algorithm>
#include <string_view>

namespace kiv {

namespace {

constexpr std::string_view kManualDate = "2026-11-21"; // of the texts, whatever day it is made

/// Text with what roff would read as its own made plain.
std::string Roff(std::string_view text)
{
    std::string plain;
    bool line_start = true;
    for (const char c : text) {
        if (c == '\\')
            plain += "\\e";
        else if (c == '-')
            plain += "\\-";
        else if (c == '\'')
            plain += "\\(aq"; // straight, to be copied
        else if (c == '~')
            plain += "\\(ti";
        else if (line_start && c == '.')
            plain += "\\&.";
        else
            plain += c;
        line_start = c == '\n';
    }
    return plain;
}

/// Short enough to be read in the source, with what is made plain.
std::string Lines(std::string_view text)
{
    return Roff(Wrapped(text, 72));
}

void AddParagraphs(std::string& page, std::string_view text)
{
    bool is_first = true;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find("\n\n"), text.size());
        page.append(is_first ? "" : ".PP\n").append(Lines(text.substr(0, end)));
        is_first = false;
        text.remove_prefix(std::min(end + 2, text.size()));
    }
}

void AddOptions(std::string& page, std::span<const OptionRow> rows)
{
    for (const OptionRow& row : rows) {
        page.append(".TP\n\\fB").append(Roff(row.name)).append("\\fR");
        if (!row.value.empty())
            page.append(" \\fI").append(Roff(row.value)).append("\\fR");
        page.append("\n").append(Lines(AboutOption(row)));
    }
}

void AddCommand(std::string& page, const CallRow& row)
{
    page.append(".SS \"").append(Roff(Synopsis(row))).append("\"\n");
    page.append(Lines(std::string(row.about) + ".")).append(Lines(row.details));
    AddOptions(page, row.arguments);
    AddOptions(page, row.options);
    page.append(".PP\n.nf\n").append(Roff(Example(row))).append(".fi\n");
}

std::string UpperHeading(std::string_view heading)
{
    std::string upper(heading);
    for (char& c : upper)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return upper;
}

} // namespace

std::string ManualPage()
{
    std::string page = ".TH KIV\\-CLI 1 ";
    page.append(kManualDate).append(" \"kiv " KIV_VERSION "\" \"User Commands\"\n.SH NAME\n");
    page.append(Roff(kProgram)).append(" \\- ").append(Roff(kSummary));
    page.append("\n.SH SYNOPSIS\n.B kiv\\-cli\n[\\fIOPTIONS\\fR] \\fICOMMAND\\fR ...\n");
    page.append(".SH DESCRIPTION\n").append(Lines(kAbout)).append(".SH OPTIONS\n");
    AddOptions(page, GlobalOptions());
    page.append(".SH COMMANDS\n");
    for (const CallRow& row : Calls())
        AddCommand(page, row);
    for (const Topic& topic : Topics()) {
        page.append(".SH \"").append(UpperHeading(topic.heading)).append("\"\n");
        AddParagraphs(page, topic.text);
    }
    return page;
}

} // namespace kiv
