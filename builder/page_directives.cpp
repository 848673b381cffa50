#include "builder/page_directives.h"

#include "builder/build_state.h"
#include "builder/text_helpers.h"
#include "text/table_column.h"
#include "text/text.h"

#include <algorithm>
#include <string>

namespace kiv {

namespace {

/// One directive. `word` is compared, whatever its case, with the head of the line; the value
/// stands from character `value_from` (1-based) on.
struct Directive {
    std::string_view word;
    std::size_t value_from;
    void (*take)(BuildState& state, PageRecord& page, std::string_view value);
    PageField field;
    bool keeps_line = false;
};

template <const char* Mode>
void SetMode(BuildState&, PageRecord& page, std::string_view)
{
    page.mode = Mode;
}

constexpr char kTightNoTemplate[] = "tightnotemplate";
constexpr char kTightPrint[] = "tightprint";
constexpr char kNoTemplate[] = "notemplate";
constexpr char kNoBodyTemplate[] = "nobodytemplate";
constexpr char kNaked[] = "naked";
constexpr char kTemplateTop[] = "templatetop";
constexpr char kTemplateBottom[] = "templatebottom";

template <std::string PageRecord::*Field>
void SetField(BuildState&, PageRecord& page, std::string_view value)
{
    page.*Field = value;
}

template <std::string PageRecord::*Field>
void SetDecoded(BuildState&, PageRecord& page, std::string_view value)
{
    page.*Field = DecodeLineBreaks(value);
}

void SetSiteRoot(BuildState& state, PageRecord&, std::string_view value)
{
    state.SiteRoot = value;
}

void SetTitle(BuildState& state, PageRecord& page, std::string_view value)
{
    page.title = value;
    ExpandTitleVariables(page.title, state.NumberedVariables[Family::at]);
}

void SetNoindex(BuildState&, PageRecord& page, std::string_view)
{
    page.noindex = true;
}

void SetRedirect(BuildState&, PageRecord& page, std::string_view target)
{
    page.mode = ">" + std::string(target);
}

void SetRedirect2(BuildState&, PageRecord& page, std::string_view target)
{
    page.mode = ">>" + std::string(target);
}

/// In the order in which they are tested: "@REDIRECT2" before "@REDIRECT".
constexpr Directive kDirectives[] = {
    {"@ROOT =", 9, SetSiteRoot, PageField::root, true},
    {"@TITLE =", 10, SetTitle, PageField::title, true},
    {"@NOINDEX", 9, SetNoindex, PageField::noindex},
    {"@TIGHTNOTEMPLATE", 17, SetMode<kTightNoTemplate>, PageField::mode},
    {"@KEYWORDS = ", 13, SetField<&PageRecord::keywords>, PageField::keywords},
    {"@DESCRIPTION = ", 16, SetField<&PageRecord::description>, PageField::description},
    {"@TIGHTPRINT", 12, SetMode<kTightPrint>, PageField::mode},
    {"@NOTEMPLATE", 12, SetMode<kNoTemplate>, PageField::mode},
    {"@NOBODYTEMPLATE", 16, SetMode<kNoBodyTemplate>, PageField::mode},
    {"@NAKED", 7, SetMode<kNaked>, PageField::mode},
    {"@ID =", 7, SetField<&PageRecord::id>, PageField::id},
    {"@GROUP =", 10, SetField<&PageRecord::group>, PageField::group},
    {"@TEMPLATETOP", 13, SetMode<kTemplateTop>, PageField::mode},
    {"@TEMPLATEBOTTOM", 16, SetMode<kTemplateBottom>, PageField::mode},
    {"@REDIRECT2", 12, SetRedirect2, PageField::mode},
    {"@REDIRECT", 11, SetRedirect, PageField::mode},
    {"@CROSS =", 10, SetField<&PageRecord::title>, PageField::title},
    {"@VAR1 =", 9, SetDecoded<&PageRecord::var1>, PageField::var1},
    {"@VAR2 =", 9, SetDecoded<&PageRecord::var2>, PageField::var2},
};

} // namespace

std::vector<std::string_view> PageDirectiveWords()
{
    return ColumnOf(kDirectives, &Directive::word);
}

bool TakesValue(std::string_view word)
{
    // Some character stands between the word and its value; that of "@NAKED" would be right behind
    // it.
    return std::ranges::any_of(kDirectives, [&](const Directive& directive) {
        return directive.word == word && directive.value_from > word.size() + 1;
    });
}

TakenDirective TakePageDirective(BuildState& state, int page_number, std::string_view& line)
{
    if (!line.starts_with('@'))
        return {};
    // The first word that fits takes the line: no other fits it, emptied or kept.
    const char second = line.size() > 1 ? AsciiUpper(line[1]) : '\0';
    for (const Directive& directive : kDirectives)
        if (directive.word[1] == second && StartsWithNoCase(line, directive.word)) {
            directive.take(state, state.PageTable[page_number],
                           FromChar(line, directive.value_from));
            if (!directive.keeps_line)
                line = {};
            return {directive.word, directive.field};
        }
    return {};
}

} // namespace kiv
