// The table form of included files.
#include "blocks/fragments.h"
#include "blocks/table_cells.h"
#include "blocks/tables.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/loop_bound.h"
#include "text/text.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace kiv {

namespace {

/// Where the heading goes when the table is finished.
constexpr std::string_view kHeadingMark = "%%headtext%%";

/// A table while its block is read.
struct IncludedTable {
    std::string output = "<table cellspacing=\"0\" cellpadding=\"0\">\r\n";
    std::string heading; // empty: none was given
    std::string align;   // empty: none was given
    bool has_rows = false;
    std::size_t widest_row = 1; // in cells; a table without rows counts as one cell wide
};

/// "h:", "align:" and "cols:" lines. Returns whether `text` is one.
bool TakeSetting(IncludedTable& table, std::string_view text)
{
    if (text.starts_with("h:")) {
        // Every heading line leaves a mark; all of them become the last heading.
        table.output += kHeadingMark;
        table.heading = "<tr><td colspan=%%colcounter%%>";
        table.heading.append(Trim(FromChar(text, 3))).append("</td></tr>");
        return true;
    }
    if (text.starts_with("align:")) {
        table.align = Trim(FromChar(text, 7));
        return true;
    }
    return text == "cols:"; // sets nothing
}

void AppendRow(IncludedTable& table, std::string_view row)
{
    table.has_rows = true;
    CellCodes dropped; // this form reads the codes and writes none of them
    const std::size_t cells = ForEachCell(row, [&](std::string_view cell, std::size_t number) {
        dropped.spans.clear();
        TakeCellCodes(cell, dropped, ClassCode::none);
        table.output.append(number == 1 ? "<tr><td>" : "<td>").append(Trim(cell)).append("</td>");
    });
    table.output.append("</tr>").append(kCrLf);
    table.widest_row = std::max(table.widest_row, cells);
}

/// The table tag bears no "%%ALIGN%%", so only text that the user wrote can change here.
void ApplyAlign(std::string& output, std::string_view align)
{
    if (align.empty()) {
        ReplaceEach(output, " %%ALIGN%%", "");
        return;
    }
    output += kCrLf;
    std::string_view attribute;
    if (align == "left")
        attribute = "align=left hspace=8";
    else if (align == "right")
        attribute = "align=right hspace=8";
    else if (align == "full")
        attribute = "width=100% ";
    ReplaceEach(output, "%%ALIGN%%", attribute);
}

std::string Finish(IncludedTable& table)
{
    std::string output = std::move(table.output.append("</table>"));
    ApplyAlign(output, table.align);
    if (!table.heading.empty()) {
        const std::size_t added = CountNoCase(output, kHeadingMark) * table.heading.size();
        if (added > LongestLine(output.size() + table.heading.size()))
            throw RunError(ErrorKind::overflow,
                           "the heading of the table is too long to stand in it so often", {},
                           "Write one line \"h:\" with a short heading.");
        ReplaceEach(table.heading, "%%colcounter%%",
                    Decimal(static_cast<long long>(table.widest_row)));
        ReplaceEach(output, kHeadingMark, table.heading);
    }
    return zuorange(std::move(output));
}

} // namespace

void zutabtable2(std::string& line, BlockContext& context)
{
    IncludedTable table;
    for (;;) {
        const std::string_view text = context.lines.Next();
        if (text.starts_with('@')) { // "@@" too, other than in the page list's own tables
            line = text;
            context.bigoops("zutable!!");
            return;
        }
        if (text.starts_with(kTableEnd)) {
            line = Finish(table);
            return;
        }
        if (table.has_rows || !TakeSetting(table, text))
            AppendRow(table, text);
    }
}

std::string zuorange(std::string text)
{
    ReplaceEach(text, "<zuorange>", "<font color=\"#FFE4C1\">");
    ReplaceEach(text, "</zuorange>", "</font>");
    return text;
}

} // namespace kiv
