// Rows of tables whose cells are not parted by TABs.
#include "blocks/table_cells.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace kiv {

namespace {

struct Row {
    int line = 0; // 1-based
    std::string_view text;
    bool HasTab() const { return Contains(text, "\t"); }
};

bool IsTable(const BlockLines& block)
{
    return StartsWithNoCase(block.tag, "<zutab");
}

/// A line above the rows that sets something for the whole table.
bool IsSetting(std::string_view line)
{
    constexpr std::string_view kSettings[] = {"class:", "width:", "align:", "cols:"};
    return std::ranges::any_of(
        kSettings, [&](std::string_view setting) { return StartsWithNoCase(line, setting); });
}

/// The title of a table in an included file, which looks like a row of headings elsewhere.
bool IsTitle(const SourceText& source, std::string_view line)
{
    return !source.is_page_list && line.starts_with("h:");
}

/// The rows between the line of the tag and the end line.
std::vector<Row> RowsOf(const SiteView& site, const BlockLines& block)
{
    const SourceText& source = site.sources[block.lines.source];
    std::vector<Row> rows;
    for (int line = block.lines.first + 1; line < block.lines.last; ++line) {
        const std::string_view text = source.Line(line);
        const bool is_row = !rows.empty() || (!IsSetting(text) && !IsTitle(source, text));
        if (is_row)
            rows.push_back({line, text});
    }
    return rows;
}

/// How many columns and rows a cell takes up.
struct Span {
    int columns = 1;
    int rows = 1;
};

Span SpanOf(std::string_view cell)
{
    const auto number_behind = [](std::string_view text, std::string_view word) {
        const std::size_t at = text.find(word);
        return at == npos ? 1 : std::max(1, NumericHead(text.substr(at + word.size())));
    };
    CellCodes codes;
    try {
        TakeCellCodes(cell, codes, ClassCode::braces);
    } catch (const RunError&) {
        return {}; // the build ends in it
    }
    return {number_behind(codes.spans, "colspan="), number_behind(codes.spans, "rowspan=")};
}

std::string_view WithoutHeaderMark(std::string_view row)
{
    return row.starts_with("h:") ? row.substr(2) : row;
}

/// Goes through the rows of a table from the top and knows how wide each is.
class RowWidths {
  public:
    /// The columns of the next row: its own and those that cells above reach down into.
    int Next(std::string_view row)
    {
        int columns = 0;
        for (auto& [width, rows] : reaching_)
            columns += rows-- > 0 ? width : 0;
        std::erase_if(reaching_, [](const auto& reach) { return reach.second <= 0; });
        ForEachCell(WithoutHeaderMark(row), [&](std::string_view cell, std::size_t) {
            const Span span = SpanOf(cell);
            columns += span.columns;
            if (span.rows > 1)
                reaching_.emplace_back(span.columns, span.rows - 1);
        });
        return columns;
    }

  private:
    std::vector<std::pair<int, int>> reaching_; // columns, and the rows that they still go down
};

/// Whether two blanks or more part words where a TAB may have been meant. Those behind the end of a
/// sentence are a habit of typing.
bool HasBlanksForTab(std::string_view row)
{
    row = Trim(row);
    for (std::size_t at = row.find("  "); at != npos; at = row.find("  ", at)) {
        if (!Contains(".!?:;", row.substr(at - 1, 1)))
            return true;
        at = row.find_first_not_of(' ', at);
    }
    return false;
}

constexpr std::string_view kWhatToDo = "put one TAB between cells";

/// A heading over all columns, or a setting that came too late. One with blanks where TABs may have
/// been meant is a row like others.
bool IsMarked(std::string_view row)
{
    return IsSetting(row) || (row.starts_with("h:") && !HasBlanksForTab(row));
}

/// Whether its one cell is meant to be all of the row: it is a heading, it spans columns, or cells
/// of rows above reach down into it. `narrowest` is the fewest columns of the rows that have a TAB.
bool IsWhole(const Row& row, int columns, int narrowest)
{
    return IsMarked(row.text) || columns >= narrowest ||
           SpanOf(WithoutHeaderMark(row.text)).columns > 1;
}

std::string_view WhatIsWrong(std::string_view row)
{
    if (row.empty())
        return "an empty line in a table is a row with one empty cell";
    return HasBlanksForTab(row) ? "this row has blanks where others of its table have a TAB"
                                : "this row has no TAB, but others of its table have one";
}

void LookAtRows(const SiteView& site, const SourceText& source, const std::vector<Row>& rows,
                FindingSink& sink)
{
    RowWidths widths;
    std::vector<int> columns;
    int narrowest = std::numeric_limits<int>::max();
    for (const Row& row : rows) {
        columns.push_back(widths.Next(row.text));
        if (row.HasTab())
            narrowest = std::min(narrowest, columns.back());
    }
    for (std::size_t index = 0; index < rows.size(); ++index)
        if (const Row& row = rows[index]; !row.HasTab() && !IsWhole(row, columns[index], narrowest))
            sink.Add(site.PlaceOf(source, row.line), std::string(WhatIsWrong(row.text)),
                     std::string(row.text.empty() ? "take the line out" : kWhatToDo));
}

/// A table without any TAB: blanks in most of its rows were meant to be some.
void LookForBlanks(const SiteView& site, const SourceText& source, const std::vector<Row>& rows,
                   FindingSink& sink)
{
    const auto has_blanks = [](const Row& row) { return HasBlanksForTab(row.text); };
    const auto count = std::ranges::count_if(rows, has_blanks);
    if (static_cast<std::size_t>(count) * 2 <= rows.size())
        return;
    sink.Add(site.PlaceOf(source, std::ranges::find_if(rows, has_blanks)->line),
             Joined({"no row of this table has a TAB, but ", Decimal(count), " of ",
                     Decimal(static_cast<long long>(rows.size())),
                     " have blanks where one may be meant"}),
             std::string(kWhatToDo));
}

} // namespace

void FindRowsWithoutTab(const SiteView& site, FindingSink& sink)
{
    for (const BlockLines& block : site.blocks) {
        if (!IsTable(block))
            continue;
        const SourceText& source = site.sources[block.lines.source];
        const std::vector<Row> rows = RowsOf(site, block);
        if (std::ranges::any_of(rows, &Row::HasTab))
            LookAtRows(site, source, rows, sink);
        else
            LookForBlanks(site, source, rows, sink);
    }
}

} // namespace kiv
