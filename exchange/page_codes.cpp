#include "exchange/page_codes.h"

#include "builder/at_variables.h"
#include "exchange/protected_line.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <initializer_list>

namespace kiv {

namespace {

constexpr std::array<std::string_view, kCodes> kNames = {
    "@PREVTITLE", "@NEXTTITLE", "@TITLE", "@PREV", "@NEXT", "@THIS", "@FILE", "@XOFY_X", "@XOFY_Y",
};

using CodeSet = std::initializer_list<Code>;

constexpr CodeSet kTitles = {Code::prev_title, Code::next_title, Code::title};
constexpr CodeSet kOwnTitle = {Code::title};
constexpr CodeSet kFiles = {Code::prev, Code::next, Code::file, Code::stem};
constexpr CodeSet kTexts = {Code::prev_title, Code::next_title, Code::title, Code::prev,
                            Code::next,       Code::file,       Code::stem};
constexpr CodeSet kNumbers = {Code::number, Code::count};

bool IsWordCharacter(char c)
{
    return (c >= '0' && c <= '9') || (AsciiUpper(c) >= 'A' && AsciiUpper(c) <= 'Z') || c == '_' ||
           (static_cast<unsigned char>(c) & 0x80U) != 0;
}

/// Whether `value` stands at `at` and is no part of a longer word.
bool StandsAt(std::string_view line, std::size_t at, std::string_view value)
{
    if (value.empty() || !line.substr(at).starts_with(value))
        return false;
    const std::size_t end = at + value.size();
    const bool begins = at == 0 || !IsWordCharacter(line[at - 1]) || !IsWordCharacter(value[0]);
    return begins &&
           (end == line.size() || !IsWordCharacter(line[end]) || !IsWordCharacter(value.back()));
}

/// The variable of a set whose value stands there, the one with the longest value.
std::optional<Code> CodeAt(std::string_view line, std::size_t at, const CodeValues& values,
                           CodeSet codes)
{
    std::optional<Code> best;
    for (const Code code : codes)
        if (StandsAt(line, at, values[code]) &&
            (!best || values[code].size() > values[*best].size()))
            best = code;
    return best;
}

CodedLine Told(std::string_view line, const CodeValues& values, CodeSet codes)
{
    CodedLine told;
    for (std::size_t at = 0; at < line.size();) {
        if (const std::optional<Code> code = CodeAt(line, at, values, codes)) {
            told.AddCode(*code);
            at += values[*code].size();
        } else {
            told.AddText(line[at++]);
        }
    }
    return told;
}

/// "3 of 12": numbers alone are most often something else.
bool TellsPlace(std::string_view line, const CodeValues& values)
{
    const std::string& number = values[Code::number];
    const std::string& count = values[Code::count];
    return Contains(line, number + " of " + count) || Contains(line, number + "/" + count) ||
           Contains(line, number + " / " + count);
}

/// Whether the variables of a line with `text` are those that begin at `starts`, and no other.
bool HasOnly(std::string_view text, const std::vector<std::pair<std::size_t, Code>>& starts)
{
    static const std::vector<std::string_view> names = AtVariableNames();
    for (std::size_t at = text.find_first_of(kAtVariableStarts); at != npos;
         at = text.find_first_of(kAtVariableStarts, at + 1)) {
        const auto name = std::ranges::find_if(
            names, [&](std::string_view each) { return StartsWithNoCase(text.substr(at), each); });
        const auto start = std::ranges::find(starts, at, &std::pair<std::size_t, Code>::first);
        if ((name == names.end()) != (start == starts.end()) ||
            (name != names.end() && *name != CodeName(start->second)))
            return false;
    }
    return true;
}

} // namespace

std::string ShownEntry(const MenuEntry& entry, bool is_on_its_page)
{
    std::string shown = is_on_its_page ? entry.form->yes : entry.form->no;
    ReplaceEach(shown, "!2", entry.says); // the last field is the first that is put in
    ReplaceEach(shown, "!1", entry.page);
    return shown;
}

std::string_view CodeName(Code code)
{
    return kNames[static_cast<std::size_t>(code)];
}

void CodedLine::AddText(char c)
{
    if (parts_.empty() || parts_.back().code || parts_.back().entry)
        parts_.emplace_back();
    parts_.back().text += c;
}

std::optional<std::string> CodedLine::On(const CodeValues& values) const
{
    std::string line;
    for (const Part& part : parts_) {
        if ((part.code && values[*part.code].empty()) || (part.entry && values.menu_name.empty()))
            return std::nullopt;
        line += part.code    ? values[*part.code]
                : part.entry ? ShownEntry(*part.entry, part.entry->page == values.menu_name)
                             : part.text;
    }
    return line;
}

void CodedLine::AddForms(std::vector<const MenuForm*>& forms) const
{
    for (const Part& part : parts_)
        if (part.entry)
            forms.push_back(part.entry->form.get());
}

std::optional<std::string> CodedLine::Source() const
{
    if (!HasCodes())
        return ProtectedLine(Plain());
    std::string source;
    std::vector<std::pair<std::size_t, Code>> starts;
    for (const Part& part : parts_) {
        if (part.code) {
            starts.emplace_back(source.size(), *part.code);
            source += CodeName(*part.code);
        } else if (part.entry) {
            Append(source, {"??", std::to_string(part.entry->form->number), "[", part.entry->page,
                            "|", part.entry->says, "]"});
        } else if (const std::optional<std::string> text = ProtectedPart(part.text)) {
            source += *text;
        } else {
            return std::nullopt;
        }
    }
    if (!HasOnly(source, starts) || CannotBegin(source))
        return std::nullopt;
    return ProtectedStart(source);
}

std::vector<CodedLine> WaysToTell(std::string_view line, const CodeValues& values)
{
    std::vector<CodedLine> ways{CodedLine(std::string(line))};
    if (line.size() > kLongestSaidLine)
        return ways;
    const auto add = [&](CodeSet codes) {
        CodedLine told = Told(line, values, codes);
        if (told.HasCodes() && told.Source())
            ways.push_back(std::move(told));
    };
    add(kTexts);
    add(kFiles);
    add(kTitles);
    add(kOwnTitle);
    if (TellsPlace(line, values))
        add(kNumbers);
    return ways;
}

} // namespace kiv
