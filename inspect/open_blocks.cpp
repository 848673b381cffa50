#include "inspect/open_blocks.h"

#include "blocks/dispatcher.h"
#include "builder/page_list_parser.h"
#include "builder/page_list_reader.h"
#include "inspect/word_slips.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

namespace kiv {

namespace {

constexpr std::string_view kIncludedTable = "<zutab";
constexpr std::string_view kTable = "<zutable";
constexpr std::string_view kPlay = "<zuplaywright>";

/// What a block of this tag is; none for a tag that no build knows.
std::optional<BlockTagForm> FormOf(const SourceText& source, std::string_view tag)
{
    const std::string known =
        !source.is_page_list && tag.starts_with(kIncludedTable) ? "<zutable>" : LowerCase(tag);
    for (const BlockTagForm& form : BlockTagForms())
        if (form.tag == known)
            return form;
    return std::nullopt;
}

bool Ends(const BlockTagForm& form, std::string_view line)
{
    if (form.tag.starts_with(kTable) && line.starts_with("h:"))
        line.remove_prefix(2);
    return std::ranges::any_of(form.ends,
                               [&](std::string_view end) { return line.starts_with(end); });
}

/// A line with which another page or block of several lines begins.
bool BeginsAnother(const SourceText& source, std::string_view line)
{
    if (StartsWithNoCase(line, kPageStart))
        return true;
    if (!line.starts_with("<zu"))
        return false;
    const std::size_t end = line.find('>');
    const std::optional<BlockTagForm> form =
        end == npos ? std::nullopt : FormOf(source, line.substr(0, end + 1));
    return form && !form->is_one_line;
}

/// Looks at one block of several lines.
class BlockReader {
  public:
    BlockReader(const SourceText& source, const BlockTagForm& form, const SourceLines& lines)
        : source_(source), form_(form), lines_(lines)
    {
    }

    /// The line above which the end is missing; 0: it is there, or the block was broken off for
    /// another reason.
    int Missing() const
    {
        for (int line = lines_.first + 1; line <= lines_.last; ++line)
            if (BeginsAnother(source_, source_.Line(line)) && !IsInPlay(line))
                return Above(line);
        return Ends(form_, source_.Line(lines_.last)) || EndsLater() ? 0 : Above(lines_.last);
    }

  private:
    /// A play that another block has broken off may still have its own end.
    bool IsInPlay(int line) const
    {
        return form_.tag == kPlay && source_.Line(line).starts_with("<zu") && EndsLater();
    }

    bool EndsLater() const
    {
        const auto count = static_cast<int>(source_.lines.size());
        for (int line = lines_.last; line <= count; ++line) {
            const std::string_view text = source_.Line(line);
            const bool is_other = form_.tag == kPlay ? StartsWithNoCase(text, kPageStart)
                                                     : BeginsAnother(source_, text);
            if (is_other || Ends(form_, text))
                return !is_other;
        }
        return false;
    }

    /// In a block an empty line or a remark is a row.
    int Above(int line) const
    {
        while (line - 1 > lines_.first &&
               (source_.Line(line - 1).empty() || source_.Line(line - 1).starts_with(';')))
            --line;
        return line;
    }

    const SourceText& source_;
    const BlockTagForm& form_;
    const SourceLines& lines_;
};

/// An end tag of the block that is misspelled, or of another block.
void TakeWrittenEnd(const SourceText& source, OpenBlock& block)
{
    const std::string_view name = HeadWord(std::string_view(block.end).substr(2));
    for (int line = block.lines.first + 1; line <= block.end_before; ++line) {
        const std::string_view text = source.Line(line);
        if (!text.starts_with("</"))
            continue;
        const std::string_view written = HeadWord(text.substr(2));
        if (!EqualsNoCase(written, name) && !IsSlipOf(written, name, name.size() - 2))
            continue;
        block.written = text.substr(0, text.find('>') == npos ? npos : text.find('>') + 1);
        block.written_line = line;
        return;
    }
}

/// Whether the block has one of `lines` behind its tag that is such a line.
template <typename IsOne>
bool Takes(const SourceText& source, const SourceLines& lines, IsOne is_one)
{
    for (int line = lines.first + 1; line <= lines.last; ++line)
        if (is_one(source.Line(line)))
            return true;
    return false;
}

/// The block as it stands open; none when it is closed.
std::optional<OpenBlock> OpenBlockOf(const SourceText& source, const BlockLines& block)
{
    const std::optional<BlockTagForm> form = FormOf(source, block.tag);
    if (!form)
        return std::nullopt;
    OpenBlock open{block.lines, block.tag, "</" + std::string(form->tag.substr(1))};
    if (form->is_one_line) {
        const bool is_closed = std::ranges::any_of(form->ends, [&](std::string_view end) {
            return Contains(source.Line(block.lines.first), end);
        });
        return is_closed ? std::nullopt : std::optional(std::move(open));
    }
    open.end_before = BlockReader(source, *form, block.lines).Missing();
    if (open.end_before == 0)
        return std::nullopt;
    TakeWrittenEnd(source, open);
    const SourceLines inside{block.lines.source, block.lines.first, block.lines.last - 1};
    open.takes_pages = Takes(source, inside, [](std::string_view line) {
        return StartsWithNoCase(line, kPageStart); // one that ends the block begins a page
    });
    open.takes_switch = Takes(source, block.lines, [](std::string_view line) {
        return IsYearEnd(line) || StartsWithNoCase(line, kStopMark);
    });
    return open;
}

bool IsAnyOf(std::string_view name, std::span<const std::string_view> names)
{
    return std::ranges::find(names, name) != names.end();
}

} // namespace

std::vector<OpenBlock> OpenBlocks(const SiteView& site)
{
    std::vector<OpenBlock> open;
    for (const BlockLines& block : site.blocks)
        if (std::optional<OpenBlock> one = OpenBlockOf(site.sources[block.lines.source], block))
            open.push_back(*std::move(one));
    return open;
}

bool IsOfOpenBlock(const SiteView& site, const std::vector<OpenBlock>& blocks,
                   const Finding& finding)
{
    constexpr std::string_view kOfLines[] = {"row-without-tab",  "build-warning", "misspelled-tag",
                                             "left-over",        "eoy-open",      "stop-open",
                                             "quiz-doubled-mark"};
    constexpr std::string_view kOfSwitches[] = {"eoy-open", "stop-open"};
    const int line = finding.where.line;
    return std::ranges::any_of(blocks, [&](const OpenBlock& block) {
        if (site.sources[block.lines.source].path != finding.where.file || line < block.lines.first)
            return false;
        return line <= block.lines.last ? IsAnyOf(finding.name, kOfLines)
                                        : block.takes_switch && IsAnyOf(finding.name, kOfSwitches);
    });
}

} // namespace kiv
