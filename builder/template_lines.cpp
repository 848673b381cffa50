#include "builder/template_lines.h"

#include "builder/build_state.h"
#include "builder/navigation_lists.h"
#include "builder/template_merge.h"
#include "builder/trace_words.h"
#include "builder/write_line.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace kiv {

/// A line with `mark` becomes the tag of that name, where the page has a value for it.
struct MetaTag {
    std::string_view mark;
    std::string_view name;
    std::string PageRecord::*content;
    PageField field;
};

namespace {

constexpr MetaTag kMetaTags[] = {
    {R"(<META NAME="keywords")", "keywords", &PageRecord::keywords, PageField::keywords},
    {R"(<META NAME="description")", "description", &PageRecord::description,
     PageField::description},
};

void AppendMeta(std::string& text, const MetaTag& tag, std::string_view content)
{
    Append(text, {"<meta NAME=\"", tag.name, "\" CONTENT=\"", content, "\">"});
}

/// Returns whether the line became the tag.
bool FillMeta(MergedLine& line, const MetaTag& tag)
{
    const std::string& content = line.build.CurrentRecord().*tag.content;
    if (content.empty() || !ContainsNoCase(line.text, tag.mark))
        return false;
    line.bound.AddSource(content.size());
    line.text.clear();
    AppendMeta(line.text, tag, content);
    if (line.tracer != nullptr) [[unlikely]] {
        const SourceSpan from =
            line.tracer->Known().Field(line.build.state.page.number, tag.field).place;
        line.tracer->Note(
            "<META NAME=", Joined({"the page's ", tag.name, ", ", line.tracer->PlaceText(from)}),
            line.text, from);
    }
    return true;
}

bool FillMetas(MergedLine& line)
{
    bool found = false;
    for (const MetaTag& tag : kMetaTags)
        found |= FillMeta(line, tag);
    return found;
}

/// "=1=" and its kin keep a line on some pages only.
bool FilterByPosition(MergedLine& line)
{
    const BuildState& state = line.build.state;
    const std::optional<bool> keep = StandsHere(line.text[1], state);
    if (!keep)
        return false;
    const std::string code = line.text.substr(0, kPositionCode);
    line.text.erase(0, *keep ? kPositionCode : npos);
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->Note(code, PositionWords(code[1], *keep, state.page.number, state.PageCount),
                          line.text);
    return true;
}

bool PlaceDropDown(MergedLine& line)
{
    if (!EqualsNoCase(line.text, "<!--DROPDOWN HERE-->"))
        return false;
    WritePageDropDown(line.build, line.tracer);
    const std::string mark = std::exchange(line.text, {});
    if (line.tracer != nullptr) [[unlikely]]
        line.tracer->Note(mark, "the list stands before it, and nothing is left of it", line.text);
    return true;
}

/// In the format's order; the merge comes after them.
constexpr Step kTemplateSteps[] = {
    {kMeta, FillMetas},
    {kPrefix, FilterByPass},
    {kPosition, FilterByPosition},
    {kMarker, PlaceDropDown},
};

} // namespace

std::optional<bool> StandsHere(char code, const BuildState& state)
{
    const bool first = state.page.number == 1;
    const bool last = state.page.number == state.PageCount;
    switch (code) {
    case '1':
        return first;
    case '2':
        return !first;
    case '5':
        return !first && !last;
    case '8':
        return !last;
    case '9':
        return last;
    default:
        return std::nullopt;
    }
}

std::vector<const MetaTag*> MetaTagsIn(std::string_view line)
{
    std::vector<const MetaTag*> tags;
    for (const MetaTag& tag : kMetaTags)
        if (ContainsNoCase(line, tag.mark))
            tags.push_back(&tag);
    return tags;
}

MetaWriting WriteMetaTag(std::span<const MetaTag* const> tags, const PageRecord& page,
                         std::string& output)
{
    const auto has_value = [&](const MetaTag* tag) { return !(page.*tag->content).empty(); };
    const auto first = std::ranges::find_if(tags, has_value);
    if (first == tags.end())
        return MetaWriting::stays;
    const std::string& content = page.*(*first)->content;
    if ((ScanLine(content) & kMerged) != 0)
        return MetaWriting::has_marks;
    AppendMeta(output, **first, content);
    output.append(kCrLf);
    return MetaWriting::written;
}

void WriteTemplateLine(MergedLine& line)
{
    RunSteps(kTemplateSteps, line);
    MergeLine(line);
    if (!line.text.empty())
        WriteLine(line.build.state.output, line.text);
}

} // namespace kiv
