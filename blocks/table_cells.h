// Rows of tab-separated cells, and the two-character codes at the head of a cell.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// What the codes of one cell ask for, as attribute text.
struct CellCodes {
    std::string spans; // in the order read, repeats too
    std::string colour;
    std::string css_class;
};

/// Which codes there are: "^^", "++" and "##" always, "{{name}}" in some tables only.
enum class ClassCode { none, braces };

/// Takes the codes off the head of `cell` and writes them into `codes`; of several colours or
/// classes the last one stays. Throws RunError `invalid-argument` when "{{" has no "}}".
void TakeCellCodes(std::string_view& cell, CellCodes& codes, ClassCode class_code);

/// Calls `use(cell, number)` for each cell of a row, numbered from 1, and returns how many there
/// are. An empty cell is "&nbsp;", and so is the one cell of an empty row.
template <typename Use>
std::size_t ForEachCell(std::string_view row, Use use)
{
    for (std::size_t number = 1;; ++number) {
        const std::size_t tab = row.find('\t');
        const std::string_view cell = row.substr(0, tab);
        use(cell.empty() ? std::string_view("&nbsp;") : cell, number);
        if (tab == std::string_view::npos)
            return number;
        row.remove_prefix(tab + 1);
    }
}

} // namespace kiv
