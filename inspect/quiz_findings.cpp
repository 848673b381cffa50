// Marks of a scripted quiz that the merge takes for its own.
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

/// Of the marks that a quiz leaves for its script, those that begin a numbered variable, too.
constexpr std::string_view kMarks[] = {"$$", "%%"};

/// The first of them that stands before a digit which the merge knows, with it: "%%3".
std::string_view TakenMark(std::string_view line)
{
    for (std::size_t at = 0; at + 2 < line.size(); ++at) {
        const bool is_mark = std::ranges::find(kMarks, line.substr(at, 2)) != std::end(kMarks);
        if (is_mark && line[at + 2] >= '1' && line[at + 2] <= '9')
            return line.substr(at, 3);
    }
    return {};
}

} // namespace

void FindDoubledQuizMarks(const SiteView& site, FindingSink& sink)
{
    for (const BlockLines& block : site.blocks) {
        if (!EqualsNoCase(block.tag, "<zuquiz1>"))
            continue;
        const SourceText& source = site.sources[block.lines.source];
        for (int line = block.lines.first + 1; line < block.lines.last; ++line) {
            const std::string_view mark = TakenMark(source.Line(line));
            if (!mark.empty())
                sink.Add(site.PlaceOf(source, line),
                         Joined({mark, " in a quiz is taken for a numbered variable and never "
                                       "reaches the quiz's script"}),
                         Joined({"put a blank between the mark and the digit: ", mark.substr(0, 2),
                                 " ", mark.substr(2)}));
        }
    }
}

} // namespace kiv
