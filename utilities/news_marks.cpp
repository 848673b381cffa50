#include "utilities/news_marks.h"

#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

/// The line of a mark that is there, 1-based; 0 when it is not.
int LineOf(std::string_view mark, std::string_view page_list)
{
    const std::size_t at = page_list.find(mark);
    if (at == npos)
        return 0;
    const std::string_view above = page_list.substr(0, at);
    return 1 + static_cast<int>(std::count(above.begin(), above.end(), '\n'));
}

/// Tells that a list has no place for `what`, and what came of that.
void NoteNoPlace(Reporter& reporter, const NewsList& list, std::string_view mark,
                 std::string_view what, std::string_view outcome)
{
    const Place where = {list.path, LineOf(mark, list.bytes), {}};
    if (where.line == 0)
        reporter.Withhold(
            Joined({"There is no line \"", mark, "\": ", what, outcome}), where,
            Joined({"Put a line \"", mark, "\" where ", what,
                    " belongs, and save the list with the line ends of Windows, CR LF."}));
    else
        reporter.Withhold(
            Joined({"No CR LF stands right behind \"", mark, "\": ", what, outcome}), where,
            "Let the mark end its line, and save the list with the line ends of Windows, "
            "CR LF.");
}

/// "C:\temp\_html.txt has its line and its page".
std::string Got(const NewsList& list, bool has_line, bool has_entry)
{
    std::string text = Joined({list.path, " has "});
    if (has_line && has_entry)
        return text + "its line and its page";
    if (has_line)
        return text + (list.is_home ? "its line" : "its line, but no place for its page");
    if (has_entry)
        return text + "its page, but no place for its line";
    return text + (list.is_home ? "no place for its line" : "no place for its line and its page");
}

/// Notes what a list had no place for and returns what it has got.
std::string TellList(Reporter& reporter, const NewsList& list)
{
    const NewsMark line = FindNewsMark(list.bytes, kNewsLineMark);
    const NewsMark entry = FindNewsMark(list.bytes, kNewsEntryMark);
    constexpr std::string_view kNotInList = " is not in this list";
    const bool heads_article = line == NewsMark::absent && !list.is_home;
    if (line != NewsMark::found)
        NoteNoPlace(reporter, list, kNewsLineMark, "the news line",
                    heads_article ? " stands at the head of the article instead" : kNotInList);
    if (entry != NewsMark::found && !list.is_home)
        NoteNoPlace(reporter, list, kNewsEntryMark, "the page of the item", kNotInList);
    return Got(list, line == NewsMark::found, entry == NewsMark::found && !list.is_home);
}

} // namespace

std::string NewsMarkLine(std::string_view mark)
{
    return Joined({mark, kCrLf});
}

NewsMark FindNewsMark(std::string_view page_list, std::string_view mark)
{
    if (Contains(page_list, NewsMarkLine(mark)))
        return NewsMark::found;
    return Contains(page_list, mark) ? NewsMark::unusable : NewsMark::absent;
}

void TellNews(Reporter& reporter, std::string_view article, const std::vector<NewsList>& lists)
{
    std::string status = Joined({"News item written to ", article});
    for (const NewsList& list : lists)
        Append(status, {"; ", TellList(reporter, list)});
    reporter.Status(status);
}

} // namespace kiv
