#include "inspect/directive_slips.h"

#include "builder/at_variables.h"
#include "builder/line_triggers.h"
#include "builder/page_directives.h"
#include "builder/page_list_parser.h"
#include "builder/page_list_reader.h"
#include "builder/page_record.h"
#include "builder/server_scripts.h"
#include "inspect/site_view.h"
#include "inspect/word_slips.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <string_view>

namespace kiv {

namespace {

constexpr std::string_view kWordBlanks = " \t\xA0";

std::string_view CutBlanks(std::string_view text)
{
    const std::size_t from = text.find_first_not_of(kWordBlanks);
    return from == npos ? std::string_view() : text.substr(from);
}

/// Where in the page list a line stands, which tells how likely it is meant for a directive.
enum class Zone {
    body,  // text may stand here
    head,  // among the lines with "@" right behind a page's first
    fixed, // nothing but directives has any effect here: above the first page, a page's second line
};

bool BeginsTitle(std::string_view line)
{
    return StartsWithNoCase(line, "@TITLE =") || StartsWithNoCase(line, "@CROSS =");
}

/// A line with "@" and a word, taken apart.
struct AtLine {
    std::size_t signs = 0; // "@" before the word
    bool is_moved = false; // blanks stand before the "@" or behind it
    std::string_view word;
    char sign = '\0'; // "=" or ":" behind the word; '\0': neither
    std::string_view value;
};

/// `word` is "" for a line without.
AtLine TakeApart(std::string_view line)
{
    AtLine parts;
    std::string_view rest = CutBlanks(line);
    parts.signs = std::min(rest.find_first_not_of('@'), rest.size());
    if (parts.signs == 0)
        return parts;
    rest.remove_prefix(parts.signs);
    const std::string_view head = CutBlanks(rest);
    parts.is_moved = !line.starts_with('@') || head.size() != rest.size();
    parts.word = HeadWord(head);
    rest = CutBlanks(head.substr(parts.word.size()));
    if (!rest.empty() && (rest[0] == '=' || rest[0] == ':')) {
        parts.sign = rest[0];
        rest = CutBlanks(rest.substr(1));
    }
    parts.value = rest;
    return parts;
}

/// A directive: "@FILE =" is "FILE" with a value behind "=", "@REDIRECT" has one without "=",
/// "@NAKED" has none.
struct Form {
    std::string_view word;
    std::string_view tail;    // " =", ":" or ""
    bool takes_value = false; // behind the word and its tail
};

/// `line` with a blank at `at`; "" when it has one there, or a sign that parts the two, or ends.
std::string WithBlank(std::string_view line, std::size_t at)
{
    constexpr std::string_view kParting = " \t\xA0=:";
    if (at >= line.size() || kParting.find(line[at]) != npos)
        return {};
    return Joined({line.substr(0, at), " ", line.substr(at)});
}

/// The words of the builder's tables, taken apart once for a look at a site.
class Words {
  public:
    Words()
    {
        for (const std::string_view word : ListDirectiveWords())
            AddForm(word);
        for (const std::string_view word : PageDirectiveWords())
            AddForm(word);
        for (const std::string_view word : ServerScriptWords())
            AddForm(word);
        for (const std::string_view name : AtVariableNames())
            variables_.push_back(name);
    }

    /// Whether the build takes a line that begins so.
    bool IsTaken(std::string_view line) const
    {
        const auto begins = [&](std::string_view word) { return StartsWithNoCase(line, word); };
        return std::ranges::any_of(taken_, begins) || begins(kStopMark) || begins(kStartMark) ||
               begins(kYearEndMark);
    }

    /// Whether the line begins with an at-variable.
    bool BeginsWithVariable(std::string_view line) const
    {
        return std::ranges::any_of(
            variables_, [&](std::string_view name) { return StartsWithNoCase(line, name); });
    }

    /// The line with the blank behind its "=" that its value begins behind; "": it has one, or
    /// needs none.
    std::string WithBlank(std::string_view line) const
    {
        for (const std::string_view word : taken_)
            if (word.ends_with('=') && StartsWithNoCase(line, word))
                return kiv::WithBlank(line, word.size());
        return {};
    }

    const Form* Known(std::string_view word) const
    {
        const auto form = std::ranges::find_if(
            forms_, [&](const Form& known) { return EqualsNoCase(known.word, word); });
        return form == forms_.end() ? nullptr : &*form;
    }

    const Form* Near(std::string_view word, std::size_t shortest) const
    {
        const std::string_view near = SlipOf(word, names_, shortest);
        return near.empty() ? nullptr : Known(near);
    }

  private:
    void AddForm(std::string_view line)
    {
        const std::string_view word = HeadWord(line.substr(1));
        const std::string_view tail = line.substr(1 + word.size());
        taken_.push_back(line);
        forms_.push_back({word, tail, !tail.empty() || TakesValue(line)});
        names_.push_back(word);
    }

    std::vector<std::string_view> taken_;
    std::vector<Form> forms_;
    std::vector<std::string_view> names_; // of the forms
    std::vector<std::string_view> variables_;
};

std::string WithValue(std::string head, std::string_view value)
{
    if (!value.empty())
        head.append(" ").append(value);
    return head;
}

/// The line as it should be.
std::string Written(const Form& form, std::string_view value)
{
    return WithValue(Joined({"@", form.word, form.tail.ends_with(' ') ? " =" : form.tail}), value);
}

/// Looks at one line.
class LineReader {
  public:
    LineReader(const Words& words, std::string_view line, std::string_view next, Zone zone)
        : words_(words), line_(line), next_(next), zone_(zone), parts_(TakeApart(line))
    {
    }

    /// The line that was meant; "": it is none of these.
    std::string Meant() const
    {
        if (words_.IsTaken(line_))
            return {};
        if (std::string switched = MeantSwitch(); !switched.empty())
            return switched;
        if (parts_.signs != 1)
            return MeantSigns();
        if (parts_.word.empty())
            return {};
        if (const Form* const form = words_.Known(parts_.word))
            return IsMeant(*form) ? Written(*form, parts_.value) : std::string();
        if (const Form* const form = MeantTorn())
            return Written(*form, {});
        return MeantSlip();
    }

    /// The switch that was meant; "": it is one, or nothing like it.
    std::string MeantSwitch() const
    {
        constexpr std::string_view kSwitches[] = {kStopMark, kStartMark, kYearEndMark};
        if (words_.IsTaken(line_) || parts_.signs == 0 || parts_.sign != '\0' ||
            !parts_.value.empty())
            return {};
        for (const std::string_view known : kSwitches) {
            const std::string_view word = known.substr(2);
            if (EqualsNoCase(parts_.word, word) ||
                (parts_.signs == 2 && IsSlipOf(parts_.word, word, 3)))
                return std::string(known);
        }
        return {};
    }

  private:
    /// Text stands nowhere between such a line and a page's title.
    bool BeginsPage(const Form& form) const
    {
        return EqualsNoCase(form.word, "FILE") && BeginsTitle(next_);
    }

    /// "FILE = visit" and "@@FILE = visit".
    std::string MeantSigns() const
    {
        const bool is_bare = parts_.signs == 0;
        const std::string with_sign = Joined({"@", line_});
        const AtLine parts = is_bare ? TakeApart(with_sign) : parts_;
        const Form* const form = words_.Known(parts.word);
        if (form == nullptr || parts.signs > 2 || parts.sign != '=' || !form->tail.ends_with('=') ||
            (is_bare && !IsUpperCase(parts.word)))
            return {};
        return zone_ == Zone::fixed || BeginsPage(*form)
                   ? Written(*form, CutBlanks(line_.substr(line_.find('=') + 1)))
                   : std::string();
    }

    /// The directive of which a blank has made two words, as in "@NO INDEX"; null: none.
    const Form* MeantTorn() const
    {
        if (parts_.sign != '\0' || HeadWord(parts_.value).size() != parts_.value.size() ||
            (zone_ == Zone::body && !IsUpperCase(line_)))
            return nullptr;
        const Form* const form = words_.Known(Joined({parts_.word, parts_.value}));
        return form != nullptr && form->tail.empty() ? form : nullptr;
    }

    bool ValueMayFollow(const Form& form) const { return form.takes_value || parts_.value.empty(); }

    /// Whether a value behind "=" is no text: the word is in capitals, as one writes it there.
    bool IsShouted() const { return parts_.sign == '=' && IsUpperCase(parts_.word); }

    /// Whether the line is nothing but a word in capitals.
    bool IsWordAlone() const
    {
        return parts_.word.size() > 4 && parts_.word.size() + 1 == line_.size() &&
               IsUpperCase(parts_.word);
    }

    /// Whether a line with the very word of a directive was meant for it.
    bool IsMeant(const Form& form) const
    {
        if (form.tail == ":")
            return parts_.sign == ':' && parts_.is_moved;
        if (form.tail.empty())
            return zone_ != Zone::body && parts_.sign == '\0' && ValueMayFollow(form);
        if (zone_ == Zone::fixed || BeginsPage(form))
            return true;
        const bool is_variable = words_.BeginsWithVariable(CutBlanks(line_));
        if (zone_ == Zone::head)
            return parts_.sign != '\0' || !is_variable;
        return parts_.sign == '=' && (!parts_.is_moved || words_.IsTaken(next_));
    }

    std::string MeantSlip() const
    {
        const bool is_likely = zone_ != Zone::body || (IsShouted() && words_.IsTaken(next_));
        const std::size_t shortest = is_likely && parts_.sign != '\0' ? 3 : 4;
        const Form* const form = words_.Near(parts_.word, shortest);
        if (form == nullptr || words_.BeginsWithVariable(CutBlanks(line_)))
            return {};
        bool is_meant = false;
        if (form->tail == ":")
            is_meant = parts_.sign == ':' && IsUpperCase(parts_.word);
        else if (form->tail.empty())
            is_meant =
                zone_ == Zone::body ? IsWordAlone() : parts_.sign == '\0' && ValueMayFollow(*form);
        else if (parts_.sign != '\0')
            is_meant = zone_ != Zone::body || IsShouted();
        else
            is_meant = zone_ == Zone::fixed;
        return is_meant ? Written(*form, parts_.value) : std::string();
    }

    const Words& words_;
    std::string_view line_;
    std::string_view next_;
    Zone zone_;
    AtLine parts_;
};

/// Whether the line is a definition: its fifth character is "=".
bool IsDefinition(std::string_view line)
{
    return line.size() > 4 && line[4] == '=' &&
           std::ranges::find(kFamilyMark, line.substr(0, 2)) != kFamilyMark.end();
}

/// "??1 <li>|<b>", which lacks its "="; `behind` is what follows the two signs.
std::string MeantWithoutSign(std::string_view mark, std::string_view behind)
{
    const std::string_view value =
        CutBlanks(behind.substr(std::min<std::size_t>(1, behind.size())));
    const bool has_number = behind.size() > 1 && behind[0] >= '0' && behind[0] <= '9';
    const bool is_parted = has_number && value.size() + 1 < behind.size();
    return is_parted && !value.empty() ? Joined({mark, behind.substr(0, 1), " = ", value})
                                       : std::string();
}

/// A line that begins with the two signs of a definition, taken apart.
struct DefinitionLine {
    explicit DefinitionLine(std::string_view line) : text(CutBlanks(line))
    {
        behind = CutBlanks(text.substr(std::min<std::size_t>(2, text.size())));
        number = behind.substr(0, behind.find_first_not_of("0123456789"));
        rest = CutBlanks(behind.substr(number.size()));
    }
    std::string_view Mark() const { return text.substr(0, 2); }
    bool HasMark() const { return std::ranges::find(kFamilyMark, Mark()) != kFamilyMark.end(); }
    /// Numbers are 0 to 9, with or without a "0" before them.
    bool HasNumber() const
    {
        return number.size() == 1 || (number.size() == 2 && number.starts_with('0'));
    }

    std::string_view text; // without blanks before it
    std::string_view behind;
    std::string_view number; // that stands there: digits, or ""
    std::string_view rest;   // behind the number
};

/// The definition that a line such as "!!1= x" was meant for; "": it is one, or nothing like it.
/// `is_fixed`: nothing but definitions and directives has any effect there.
std::string MeantDefinition(std::string_view line, bool is_fixed)
{
    const DefinitionLine parts(line);
    if (!parts.HasMark() || IsDefinition(line))
        return {};
    if (is_fixed && !parts.rest.starts_with('='))
        return MeantWithoutSign(parts.Mark(), parts.behind);
    if (!parts.HasNumber() || !parts.rest.starts_with('='))
        return {};
    return WithValue(Joined({parts.Mark(), parts.number, parts.number.size() == 1 ? " =" : "="}),
                     CutBlanks(parts.rest.substr(1)));
}

/// Whether a line such as "@@12 = x" was meant for the definition of a number that there is not.
bool NumbersTooFar(std::string_view line)
{
    const DefinitionLine parts(line);
    return parts.HasMark() && !IsDefinition(line) && parts.number.size() > 1 &&
           !parts.HasNumber() && parts.rest.starts_with('=');
}

constexpr std::string_view kWhichNumbers = "numbers go from 1 to 9: take one that is free";

bool IsDefined(const SiteView& site, std::string_view definition)
{
    return std::ranges::any_of(site.definitions, [&](const NumberDefinition& known) {
        return known.mark == definition.substr(0, 3);
    });
}

class SourceReader {
  public:
    SourceReader(const SiteView& site, const SourceText& source) : site_(site), source_(source) {}

    std::vector<DirectiveSlip> Slips()
    {
        const std::size_t end = source_.IsOfPageList() ? source_.lines.size() : 0;
        for (index_ = 0; index_ < end; ++index_)
            LookAt(source_.lines[index_], source_.PartsOf(index_));
        return std::move(slips_);
    }

  private:
    void LookAt(std::string_view line, const LineParts& parts)
    {
        if (!parts.IsRead())
            return LookForSwitch(line);
        const Zone zone = ZoneOf(line, parts);
        if (std::string whole = WithBlank(line, parts); !whole.empty())
            slips_.push_back({static_cast<int>(index_) + 1, std::move(whole), true});
        if (parts.HasRole())
            return;
        const int number = static_cast<int>(index_) + 1;
        if (std::string meant = MeantLine(line, zone); !meant.empty())
            slips_.push_back({number, std::move(meant)});
        else if (zone != Zone::body && NumbersTooFar(line) &&
                 (zone == Zone::fixed || !IsDefined(site_, CutBlanks(line))))
            slips_.push_back({number, {}, false, std::string(kWhichNumbers)});
    }

    std::string MeantLine(std::string_view line, Zone zone) const
    {
        const std::string_view next =
            index_ + 1 < source_.lines.size() ? source_.lines[index_ + 1] : std::string_view();
        std::string meant = MeantBy(line, next, zone);
        if (meant.empty() && zone != Zone::body) {
            meant = MeantDefinition(line, zone == Zone::fixed);
            if (zone == Zone::head && IsDefined(site_, meant))
                meant.clear(); // its use, with "=" behind it
        }
        return meant.empty() ? MeantInclude(line) : meant;
    }

    /// "+part.txt", which lacks its second "+".
    std::string MeantInclude(std::string_view line) const
    {
        const bool is_single = line.size() > 1 && line[0] == '+' && line[1] != '+';
        const bool is_file = is_single && source_.is_page_list &&
                             line.find_first_of("<>|\"*?") == npos &&
                             site_.files.FileExists(site_.folder + std::string(line.substr(1)));
        return is_file ? Joined({"+", line}) : std::string();
    }

    /// Of a line that is taken, though its value lacks its first character.
    std::string WithBlank(std::string_view line, const LineParts& parts) const
    {
        constexpr std::size_t kSignAt = 4; // 0-based, of the "=" of a definition
        const bool is_taken =
            parts.HasRole() || parts.Has(LinePart::page_start) || parts.Has(LinePart::title);
        if (!is_taken)
            return {};
        const bool is_number =
            std::ranges::find(kFamilyMark, line.substr(0, 2)) != kFamilyMark.end();
        if (!is_number)
            return words_.WithBlank(line);
        const bool is_definition =
            parts.Has(LinePart::before_pages) && line.size() > kSignAt && line[kSignAt] == '=';
        return is_definition ? kiv::WithBlank(line, kSignAt + 1) : std::string();
    }

    /// A stretch that is not read goes on to its second switch, or to one that was meant for it.
    void LookForSwitch(std::string_view line)
    {
        if (!line.starts_with("@@"))
            return;
        if (std::string meant = LineReader(words_, line, {}, Zone::body).MeantSwitch();
            !meant.empty())
            slips_.push_back({static_cast<int>(index_) + 1, std::move(meant)});
    }

    /// Behind "ASP:" and its kin, script for the server alone is taken.
    std::string MeantBy(std::string_view line, std::string_view next, Zone zone) const
    {
        if ((ScanLine(line) & kPrefix) == 0)
            return LineReader(words_, line, next, zone).Meant();
        const std::size_t prefix = line.find(':') + 1;
        const std::string meant = LineReader(words_, line.substr(prefix), next, zone).Meant();
        const Form* const form =
            meant.empty() ? nullptr : words_.Known(HeadWord(std::string_view(meant).substr(1)));
        return form == nullptr || form->tail != ":" ? "" : Joined({line.substr(0, prefix), meant});
    }

    /// A head goes on as long as its lines begin with "@" or are empty.
    Zone ZoneOf(std::string_view line, const LineParts& parts)
    {
        if (parts.Has(LinePart::before_pages) || parts.Has(LinePart::title)) {
            is_head_ = parts.Has(LinePart::title);
            return Zone::fixed;
        }
        const std::string_view text = CutBlanks(line);
        is_head_ = parts.Has(LinePart::page_start) ||
                   (is_head_ && (text.empty() || text.starts_with('@')));
        return is_head_ ? Zone::head : Zone::body;
    }

    const SiteView& site_;
    const SourceText& source_;
    const Words words_;
    std::vector<DirectiveSlip> slips_;
    std::size_t index_ = 0; // of the line in work
    bool is_head_ = false;
};

} // namespace

std::vector<DirectiveSlip> DirectiveSlips(const SiteView& site, const SourceText& source)
{
    return SourceReader(site, source).Slips();
}

} // namespace kiv
