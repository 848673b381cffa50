#include "blocks/tables.h"

#include "blocks/fragments.h"
#include "blocks/table_cells.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/loop_bound.h"
#include "text/text.h"

#include <algorithm>
#include <string_view>

namespace kiv {

namespace {

/// A table while its block is read.
struct Table {
    std::string css_class;
    std::string_view font;
    std::string width; // the attribute with its leading blank
    std::string rows;
    bool has_rows = false;
    std::size_t widest_row = 1; // in cells; a table without rows counts as one cell wide
};

/// "class:", "width:" and "cols:" lines. Returns whether `text` is one.
bool TakeSetting(Table& table, std::string_view text)
{
    if (StartsWithNoCase(text, "class:")) {
        table.css_class = Trim(FromChar(text, 7));
        return true;
    }
    if (StartsWithNoCase(text, "width:")) {
        table.width.assign(" width=\"").append(Trim(FromChar(text, 7))).append("\"");
        return true;
    }
    // Six characters against a five-character word: only a bare "cols:" is a setting, which sets
    // nothing; "cols:3" is a row. The format wants it so.
    return FirstChars(text, 6) == "cols:";
}

void AppendRow(Table& table, std::string_view row, std::string_view element)
{
    table.has_rows = true;
    CellCodes codes;
    const std::size_t cells = ForEachCell(row, [&](std::string_view cell, std::size_t number) {
        codes.spans.clear();
        codes.colour.clear();
        codes.css_class.assign(" class=\"r").append(Decimal(static_cast<long long>(number)));
        codes.css_class += '"';
        TakeCellCodes(cell, codes, ClassCode::braces);
        if (number == 1)
            table.rows += "<tr>";
        table.rows.append("<").append(element).append(codes.spans).append(codes.colour);
        table.rows.append(codes.css_class).append(">").append(Trim(cell));
        table.rows.append("</").append(element).append(">");
    });
    table.rows.append("</tr>").append(kCrLf);
    table.widest_row = std::max(table.widest_row, cells);
}

std::string StyleText(const Table& table)
{
    const std::string selector = "   ." + table.css_class + " ";
    std::string style = "<style>\r\n";
    style.append(selector).append("{border-collapse:collapse;font:").append(table.font);
    style.append(" arial,sans-serif;}\r\n");
    style.append(selector).append("th {border:1px black solid;background-color:#eee;"
                                  "font-weight:bold;text-align:center;vertical-align: top;}\r\n");
    style.append(selector).append("td {border:1px black solid;padding:2px 4px;"
                                  "vertical-align: top;}\r\n");
    for (std::size_t column = 1; column <= table.widest_row; ++column) {
        style.append(selector).append("td.r").append(Decimal(static_cast<long long>(column)));
        style.append(" {padding:2px 4px;text-align:left;}\r\n");
    }
    return style.append("</style>\r\n");
}

std::string TableText(const Table& table)
{
    std::string text = "<table class=\"" + table.css_class + "\"" + table.width + ">\r\n";
    return text.append(table.rows).append("</table>\r\n");
}

/// A long class name in the styles of many columns must not eat the memory.
void BoundStyles(const Table& table)
{
    const std::size_t source = table.css_class.size() + table.rows.size();
    if (table.widest_row * table.css_class.size() > LongestLine(source))
        throw RunError(ErrorKind::overflow,
                       "the class of the table is too long a name for so many columns", {},
                       "Take a shorter name behind \"class:\", or fewer columns.");
}

/// The finished table. The styles of a class of the user's own go to the shared style sheet.
std::string Finish(const Table& table, std::string& style_sheet)
{
    BoundStyles(table);
    if (table.css_class.starts_with("zutable"))
        return StyleText(table).append(TableText(table));
    style_sheet += StyleText(table);
    return TableText(table);
}

} // namespace

void zutable(std::string& line, int kind, BlockContext& context)
{
    Table table;
    table.css_class = kind == 1 ? "zutable1" : "zutable";
    table.font = kind == 1 ? "10pt/12pt" : "9pt/11pt";
    for (;;) {
        std::string_view text = context.lines.Next();
        if (text.starts_with('@') && !text.starts_with("@@")) {
            line = text;
            context.reportmsg(line + "\r\nForgot to close your zutable!");
            return;
        }
        // "h:" goes before anything else is tested, so "h:</zutable>" ends the block as well.
        const bool header = text.starts_with("h:");
        if (header)
            text.remove_prefix(2);
        if (text.starts_with(kTableEnd)) {
            line = Finish(table, context.style_sheet);
            return;
        }
        if (table.has_rows || !TakeSetting(table, text))
            AppendRow(table, text, header ? "th" : "td");
    }
}

} // namespace kiv
