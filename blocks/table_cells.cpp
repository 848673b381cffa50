#include "blocks/table_cells.h"

#include "platform/run_error.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

/// Cuts a code of `size` characters off `cell`, or what there is of it, and returns its argument.
std::string_view TakeCode(std::string_view& cell, std::size_t size)
{
    const std::string_view argument = FromChar(FirstChars(cell, size), 3);
    cell.remove_prefix(std::min(size, cell.size()));
    return argument;
}

/// Cuts "{{name}}" off `cell` and returns the name.
std::string_view TakeClass(std::string_view& cell)
{
    const std::size_t end = cell.find("}}");
    if (end == npos)
        throw RunError(ErrorKind::invalid_argument,
                       "table cell with \"{{\" and no \"}}\": " + std::string(cell), {},
                       "End the class of the cell with \"}}\", as in \"{{name}}text\".");
    const std::string_view name = FromChar(cell.substr(0, end), 3);
    cell.remove_prefix(end + 2);
    return name;
}

} // namespace

void TakeCellCodes(std::string_view& cell, CellCodes& codes, ClassCode class_code)
{
    for (;;) {
        // Spans are one digit wide and bear no quotes; a colour has a blank after its quote.
        if (cell.starts_with("^^"))
            codes.spans.append(" rowspan=").append(TakeCode(cell, 3));
        else if (cell.starts_with("++"))
            codes.spans.append(" colspan=").append(TakeCode(cell, 3));
        else if (cell.starts_with("##"))
            codes.colour.assign(" style=\"background-color:#")
                .append(TakeCode(cell, 8))
                .append(";\" ");
        else if (class_code == ClassCode::braces && cell.starts_with("{{"))
            codes.css_class.assign(" class=\"").append(TakeClass(cell)).append("\"");
        else
            return;
    }
}

} // namespace kiv
