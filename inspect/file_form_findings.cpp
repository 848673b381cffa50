// What editors do to a whole file.
#include "inspect/file_form.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

/// What stands in the first line, which begins with the mark now.
std::string_view FirstLineWords(const SourceText& source)
{
    if (source.is_page_list)
        return "its first line is text, whatever it was meant for";
    if (source.is_template)
        return "its first line is text, whatever it was meant for, and every page begins with "
               "these bytes";
    return "these three bytes stand in the middle of the page";
}

/// The lines that hold a CR, which is not the one of their end.
std::vector<int> LinesWithCr(const SourceText& source)
{
    std::vector<int> numbers;
    for (int number = 1; number <= static_cast<int>(source.lines.size()); ++number)
        if (Contains(source.Line(number), "\r"))
            numbers.push_back(number);
    return numbers;
}

void TellOfCr(const SiteView& site, const SourceText& source, FindingSink& sink)
{
    const std::vector<int> lines = LinesWithCr(source);
    if (lines.empty())
        return;
    constexpr std::string_view kWhatToDo = "save the file with CR LF or LF at the line ends";
    if (HasOnlyLoneCr(source.bytes))
        return sink.Add(
            site.PlaceOf(source, 1),
            "the lines end in a CR alone, which does not end a line: the whole file is one",
            std::string(kWhatToDo));
    const auto count = static_cast<long long>(lines.size());
    sink.Add(site.PlaceOf(source, lines.front()),
             Joined({Decimal(count), count == 1 ? " line holds" : " lines hold",
                     " a CR without LF, which does not end a line"}),
             std::string(kWhatToDo));
}

} // namespace

void FindByteOrderMarks(const SiteView& site, FindingSink& sink)
{
    for (const SourceText& source : site.sources)
        if (HasByteOrderMark(source.bytes))
            sink.Add(site.PlaceOf(source, 1),
                     Joined({"the file begins with a byte order mark: ", FirstLineWords(source)}),
                     "save it without a byte order mark");
}

void FindUtf16(const SiteView& site, FindingSink& sink)
{
    for (const SourceText& source : site.sources)
        if (IsUtf16(source.bytes))
            sink.Add(site.PlaceOf(source, 1),
                     "the file is UTF-16, two bytes a character: nothing in it is understood",
                     "save it as Windows-1252, or as UTF-8 where the pages say so");
}

void FindLoneCarriageReturns(const SiteView& site, FindingSink& sink)
{
    for (const SourceText& source : site.sources)
        if (!IsUtf16(source.bytes))
            TellOfCr(site, source, sink);
}

} // namespace kiv
