#include "inspect/mark_slips.h"

#include "inspect/site_view.h"
#include "inspect/word_slips.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace kiv {

namespace {

/// A mark takes the place of a list; a line of its own holds nothing else.
struct ListMark {
    std::string_view letters; // without blanks
    std::string_view line;
    bool is_of_template = false; // in a page's text it does nothing
};

constexpr ListMark kListMarks[] = {
    {"TOCHERE", "<!--TOC HERE-->"},
    {"SITEMAPHERE", "<!--SITEMAPHERE-->"},
    {"DROPDOWNHERE", "<!--DROPDOWN HERE-->", true},
};

/// The first comment of the line, with its brackets; "": there is none.
std::string_view CommentOf(std::string_view line)
{
    const std::size_t begin = line.find("<!");
    const std::size_t end = begin == npos ? npos : line.find('>', begin);
    return end == npos ? std::string_view() : line.substr(begin, end + 1 - begin);
}

/// What is left of a line when its passes and places, such as "DIR1:" and "=2=", are gone.
std::string_view WithoutConditions(std::string_view line)
{
    for (bool was_cut = true; was_cut;) {
        was_cut = false;
        for (const std::string_view pass : {"ASP:", "HTM:", "DIR1:"})
            if (StartsWithNoCase(line, pass)) {
                line.remove_prefix(pass.size());
                was_cut = true;
            }
        if (line.size() > 3 && line[0] == '=' && line[2] == '=') {
            line.remove_prefix(3);
            was_cut = true;
        }
    }
    return line;
}

/// The mark that a line was meant for; null: it is one, or nothing like it.
const ListMark* MarkMeant(std::string_view line, bool is_frame)
{
    const std::string_view comment = CommentOf(line);
    if (comment.empty())
        return nullptr;
    const std::string letters = Letters(comment);
    line = WithoutConditions(line);
    const auto is_meant = [&](const ListMark& mark) {
        return (is_frame || !mark.is_of_template) && !EqualsNoCase(line, mark.line) &&
               (letters == mark.letters ||
                IsSlipOf(letters, mark.letters, mark.letters.size() - 2));
    };
    const ListMark* const mark = std::ranges::find_if(kListMarks, is_meant);
    return mark == std::end(kListMarks) ? nullptr : mark;
}

/// Whether the line is a code such as "=3=" that no line has.
bool IsUnknownCode(std::string_view line)
{
    return line.size() > 3 && line[0] == '=' && line[2] == '=' && line[1] >= '0' &&
           line[1] <= '9' && std::string_view("12589").find(line[1]) == npos;
}

/// What a browser takes for other things than text.
class ProgramLines {
  public:
    /// Whether the line is of a program, a style sheet or a text that is shown as it stands.
    bool Take(std::string_view line)
    {
        const bool was_open = !end_.empty();
        for (const auto& [begin, end] : kEnds)
            if (!was_open && ContainsNoCase(line, begin))
                end_ = end;
        if (!end_.empty() && ContainsNoCase(line, end_)) {
            end_ = {};
            return true;
        }
        return was_open || !end_.empty();
    }

  private:
    static constexpr std::pair<std::string_view, std::string_view> kEnds[] = {
        {"<script", "</script"},     {"<style", "</style"}, {"<pre", "</pre"},
        {"<textarea", "</textarea"}, {"<%", "%>"},
    };
    std::string_view end_; // what ends the open one; "": none is
};

bool IsInBlock(const SiteView& site, const SourceText& source, int line)
{
    return std::ranges::any_of(site.blocks, [&](const BlockLines& block) {
        return &site.sources[block.lines.source] == &source && block.lines.first <= line &&
               line <= block.lines.last;
    });
}

/// " ; remark": a blank before the ";" makes text of a remark.
bool IsMovedRemark(std::string_view line)
{
    const std::size_t from = line.find_first_not_of(" \t");
    if (from == 0 || from == npos || line[from] != ';')
        return false;
    const std::string_view remark = Trim(line.substr(from + 1));
    return !remark.empty() && IsWordCharacter(remark.front());
}

/// What was meant by a line that comes to a page; no words: the line itself.
MarkSlip SlipIn(std::string_view line, bool is_frame, bool is_remark)
{
    if (const ListMark* const mark = MarkMeant(line, is_frame)) {
        const bool is_alone = Trim(line).size() == CommentOf(line).size();
        return {0, std::string(CommentOf(line)),
                Joined({"write ", mark->line, is_alone ? "" : " on a line of its own"})};
    }
    if (is_frame && IsUnknownCode(line))
        return {0, std::string(line.substr(0, 3)), "the codes are =1=, =2=, =5=, =8= and =9="};
    if (is_remark)
        return {0, std::string(line), "take out what stands before the \";\""};
    return {};
}

} // namespace

std::vector<MarkSlip> MarkSlips(const SiteView& site, const SourceText& source)
{
    std::vector<MarkSlip> slips;
    ProgramLines programs;
    for (std::size_t index = 0; index < source.lines.size(); ++index) {
        const std::string_view line = source.lines[index];
        const LineParts parts = source.PartsOf(index);
        const int number = static_cast<int>(index) + 1;
        const bool is_program = programs.Take(line);
        const bool is_frame = parts.Has(LinePart::frame);
        if (parts.HasRole() || (!parts.Has(LinePart::body) && !is_frame))
            continue;
        const bool is_remark =
            !is_program && IsMovedRemark(line) && !IsInBlock(site, source, number);
        MarkSlip slip = SlipIn(line, is_frame, is_remark);
        slip.line = number;
        if (!slip.words.empty())
            slips.push_back(std::move(slip));
    }
    return slips;
}

} // namespace kiv
