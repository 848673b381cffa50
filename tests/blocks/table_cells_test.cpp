#include "blocks/table_cells.h"

#include "tests/blocks/block_desk.h"

namespace kiv {
namespace {

using testing::IsEmpty;

/// The first cell of a table's only row, as it is written.
std::string FirstCell(const std::string& cell)
{
    BlockDesk desk({cell, "</zutable>"});
    const std::string table = desk.Expand("<zutable>");
    const std::string before = "<table class=\"zutable\">\r\n<tr>";
    const std::string after = "</tr>\r\n</table>\r\n";
    const std::size_t start = table.find(before) + before.size();
    EXPECT_THAT(table, testing::EndsWith(after));
    return table.substr(start, table.size() - after.size() - start);
}

/// The numbered cells of a row, as they are handed out.
std::vector<std::string> CellsOf(std::string_view row)
{
    std::vector<std::string> cells;
    const std::size_t count = ForEachCell(row, [&](std::string_view cell, std::size_t number) {
        cells.push_back(std::to_string(number) + std::string(cell));
    });
    EXPECT_EQ(count, cells.size());
    return cells;
}

TEST(TableCells, ARowIsCutAtItsTabs)
{
    const struct {
        std::string row;
        std::vector<std::string> cells;
    } rows[] = {
        {"a", {"1a"}},
        {"a\tb", {"1a", "2b"}},
        {"", {"1&nbsp;"}}, // one empty cell
        {"\t", {"1&nbsp;", "2&nbsp;"}},
        {"a\t\t b ", {"1a", "2&nbsp;", "3 b "}}, // not trimmed here
    };
    for (const auto& row : rows)
        EXPECT_EQ(CellsOf(row.row), row.cells);
}

TEST(TableCells, Codes)
{
    const struct {
        std::string cell, expanded;
    } rows[] = {
        {"^^2a", "<td rowspan=2 class=\"r1\">a</td>"},
        {"++3a", "<td colspan=3 class=\"r1\">a</td>"},
        {"##ffcc00a", "<td style=\"background-color:#ffcc00;\"  class=\"r1\">a</td>"},
        {"{{note}}a", "<td class=\"note\">a</td>"},
        {"++3", "<td colspan=3 class=\"r1\"></td>"}, // codes alone: empty, not "&nbsp;"
        {"++3  ", "<td colspan=3 class=\"r1\"></td>"},
        {"{{note}}", "<td class=\"note\"></td>"},
        {"^^12", "<td rowspan=1 class=\"r1\">2</td>"}, // one digit
        {"^^xy", "<td rowspan=x class=\"r1\">y</td>"}, // or whatever stands there
        {"^^2##ffcc00{{note}}Total",
         "<td rowspan=2 style=\"background-color:#ffcc00;\"  class=\"note\">Total</td>"},
        {"{{note}}##ffcc00++2^^3 Total ", // any order; spans as read
         "<td colspan=2 rowspan=3 style=\"background-color:#ffcc00;\"  class=\"note\">Total</td>"},
        {"^^1^^2a", "<td rowspan=1 rowspan=2 class=\"r1\">a</td>"},
        {"##111111##222222a", "<td style=\"background-color:#222222;\"  class=\"r1\">a</td>"},
        {"{{a}}{{b}}c", "<td class=\"b\">c</td>"},
        {"{{}}a", "<td class=\"\">a</td>"},
        {"{{a}b}}c", "<td class=\"a}b\">c</td>"},
        {"{{a}}}b", "<td class=\"a\">}b</td>"}, // the first "}}"
        {"{{ n }}a", "<td class=\" n \">a</td>"},
        {"^^", "<td rowspan= class=\"r1\"></td>"}, // nothing left for the argument
        {"++", "<td colspan= class=\"r1\"></td>"},
        {"##", "<td style=\"background-color:#;\"  class=\"r1\"></td>"},
        {"##12", "<td style=\"background-color:#12;\"  class=\"r1\"></td>"},
        {"##12345 a", "<td style=\"background-color:#12345 ;\"  class=\"r1\">a</td>"},
        {" ^^2a", "<td class=\"r1\">^^2a</td>"}, // a leading blank hides a code
        {"^^2 ++3a", "<td rowspan=2 class=\"r1\">++3a</td>"},
        {"a^^2", "<td class=\"r1\">a^^2</td>"},
        {"^2+3#4{5}", "<td class=\"r1\">^2+3#4{5}</td>"},
        {"a{{b", "<td class=\"r1\">a{{b</td>"}, // a class counts at the head alone
    };
    for (const auto& row : rows)
        EXPECT_EQ(FirstCell(row.cell), row.expanded) << row.cell;
}

TEST(TableCells, AClassCodeWithoutItsEndIsFatal)
{
    for (const std::string cell : {"{{", "{{note", "{{note}", "++2{{x", "a\t{{b\t}}"}) {
        BlockDesk desk({cell, "</zutable>"});
        EXPECT_EQ(ErrorOf([&] { desk.Expand("<zutable>"); }), ErrorKind::invalid_argument) << cell;
        EXPECT_THAT(desk.reporter.shown, IsEmpty()) << cell;
    }
}

} // namespace
} // namespace kiv
