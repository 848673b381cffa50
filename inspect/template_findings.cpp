// The line of the template where a page's text goes.
#include "inspect/file_form.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/word_slips.h"
#include "platform/drive_path.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <iterator>

namespace kiv {

namespace {

constexpr std::string_view kBodyMark = "<!--BODY HERE-->";

/// The lines of a file that has them, 1-based like the lines of sources.
bool IsMark(std::string_view line)
{
    return EqualsNoCase(line, kBodyMark);
}

/// A line that is neither a comment nor an include.
bool IsText(std::string_view line)
{
    return !line.starts_with(';') && !line.starts_with('+');
}

const SourceText* SourceAt(const SiteView& site, std::string_view name)
{
    const std::string folder = AbsolutePath(site.folder, {}); // without its last "\"
    const std::string path = AbsolutePath(name, folder);
    const auto found = std::ranges::find_if(
        site.sources, [&](const SourceText& source) { return EqualsNoCase(source.path, path); });
    return found == site.sources.end() ? nullptr : &*found;
}

/// The file that is the template: another one where the first line names it. Null when there is
/// none whose lines can be told apart.
const SourceText* TrueTemplate(const SiteView& site)
{
    const SourceText* source = site.Template();
    if (source != nullptr && !source->lines.empty() && source->lines.front().starts_with("++"))
        source = SourceAt(site, FromChar(source->lines.front(), 3));
    return source == nullptr || IsUtf16(source->bytes) || HasOnlyLoneCr(source->bytes) ? nullptr
                                                                                       : source;
}

/// The lines of the template that are marks, 1-based.
std::vector<int> MarkLines(const SourceText& source)
{
    std::vector<int> numbers;
    for (std::size_t index = 0; index < source.lines.size(); ++index)
        if (IsMark(source.lines[index]))
            numbers.push_back(static_cast<int>(index) + 1);
    return numbers;
}

/// The first line that `fits`, 1-based; 0 when there is none.
template <typename Fits>
int FirstLine(const SourceText& source, Fits fits)
{
    const auto found = std::ranges::find_if(source.lines, fits);
    return found == source.lines.end()
               ? 0
               : static_cast<int>(std::distance(source.lines.begin(), found)) + 1;
}

/// Where the mark stands in a line with something else; 0: nowhere.
int MarkAmongOthers(const SourceText& source)
{
    return FirstLine(source, [](std::string_view line) {
        return IsText(line) && ContainsNoCase(line, kBodyMark);
    });
}

/// A line that was most likely meant to be the mark; 0: none.
int MarkMeant(const SourceText& source)
{
    return FirstLine(source, [](std::string_view line) {
        if (!IsText(line) || !Contains(line, "<!") || line.size() > 2 * kBodyMark.size())
            return false;
        const std::string letters = Letters(line);
        const std::string_view words[] = {"BODYHERE", "INSERTBODYHERE"};
        return !Nearest(letters, words).empty();
    });
}

/// An include of the template in which the mark stands; null: none does.
const SourceText* IncludeWithMark(const SiteView& site, const SourceText& source)
{
    for (const std::string_view line : source.lines) {
        const std::size_t plus = line.find('+');
        if (plus == npos || (plus > 0 && line[plus - 1] != ':'))
            continue;
        for (const std::size_t first : {plus + 1, plus + 2}) {
            const SourceText* include = SourceAt(site, line.substr(std::min(first, line.size())));
            if (include != nullptr && !MarkLines(*include).empty())
                return include;
        }
    }
    return nullptr;
}

/// A template of comments alone is none on purpose: pages hold their body alone.
bool SaysAnything(const SourceText& source)
{
    return std::ranges::any_of(source.lines, [](std::string_view line) {
        return !line.starts_with(';') && !Trim(line).empty();
    });
}

} // namespace

void FindNoBodyMark(const SiteView& site, FindingSink& sink)
{
    const SourceText* source = TrueTemplate(site);
    if (source == nullptr || !SaysAnything(*source) || !MarkLines(*source).empty() ||
        MarkAmongOthers(*source) > 0)
        return;
    const std::string text =
        Joined({"the template has no line ", kBodyMark, ", so no page gets anything from it"});
    if (const SourceText* include = IncludeWithMark(site, *source))
        sink.Add(site.PlaceOf(*include, MarkLines(*include).front()), text,
                 "put the line into the template itself: in an included file it does not count");
    else if (const int line = MarkMeant(*source); line > 0)
        sink.Add(site.PlaceOf(*source, line), text, Joined({"write this line as ", kBodyMark}));
    else
        sink.Add(site.PlaceOf(*source, 0), text,
                 Joined({"put a line ", kBodyMark, " where a page's text should go"}));
}

void FindBodyMarkNotAlone(const SiteView& site, FindingSink& sink)
{
    const SourceText* source = TrueTemplate(site);
    if (source == nullptr || !MarkLines(*source).empty())
        return;
    if (const int line = MarkAmongOthers(*source); line > 0)
        sink.Add(site.PlaceOf(*source, line),
                 Joined({kBodyMark, " is not alone on its line, so it does not count, and no page "
                                    "gets anything from the template"}),
                 "put it on a line of its own, without blanks");
}

void FindBodyMarkTwice(const SiteView& site, FindingSink& sink)
{
    const SourceText* source = TrueTemplate(site);
    if (source == nullptr)
        return;
    const std::vector<int> marks = MarkLines(*source);
    for (std::size_t index = 1; index < marks.size(); ++index)
        sink.Add(site.PlaceOf(*source, marks[index]),
                 Joined({"a second ", kBodyMark,
                         ": no page gets the lines between this one and that of line ",
                         Decimal(marks[index - 1])}),
                 "take one of the two out");
}

} // namespace kiv
