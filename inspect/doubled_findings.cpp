#include "inspect/doubled_findings.h"

#include "builder/page_record.h"
#include "text/text.h"

#include <algorithm>
#include <span>

namespace kiv {

namespace {

/// `name` is told by `better`, too, and with more of what to do.
struct Doubled {
    std::string_view name;
    std::string_view better;
    std::string_view beginning = {}; // of the text of `name`; "": both speak of the same word
};

constexpr Doubled kDoubled[] = {
    {"left-over", "misspelled-variable"},
    {"left-over", "misspelled-directive"},
    {"left-over", "misspelled-macro"},
    {"left-over", "misspelled-tag"},
    {"left-over", "undefined-number"},
    {"left-over", "unclosed-bracket"},
    {"left-over", "unknown-reference"},
    {"left-over", "build-warning"},
    {"dead-link", "unknown-reference"},
    {"undefined-number", "quiz-doubled-mark"},
    {"link-to-stale-page", "unknown-reference"},
    {"left-over", "misplaced-directive"},
    {"left-over", "missing-field"},
    {"build-warning", "undefined-number", "blunder in: [["},
    {"build-error", "undefined-number", "the wrapper [["},
};

/// Findings of one line that are held against each other.
constexpr std::size_t kMostCompared = 200;

/// The first words in double quotes; "" for none.
std::string_view QuotedWords(std::string_view text)
{
    const std::size_t begin = text.find('"');
    const std::size_t end = begin == npos ? npos : text.find('"', begin + 1);
    return end == npos ? std::string_view() : text.substr(begin + 1, end - begin - 1);
}

/// Whether a warning of the build, whose text is fixed, is of the construct that is left over.
bool IsOfConstruct(std::string_view construct, std::string_view warning)
{
    return (StartsWithNoCase(construct, "<zu") && Contains(warning, "<zu")) ||
           (StartsWithNoCase(construct, "!!flv") && warning.starts_with("FLV!!"));
}

/// Pairs whose texts name what they are about each in its own way.
bool SaysSame(const Finding& other, const Finding& finding)
{
    const std::string_view words = QuotedWords(finding.text);
    if (finding.name == "left-over" && other.name == "build-warning")
        return IsOfConstruct(words, other.text);
    // A reference makes a link of the name that it gives, with an extension.
    return finding.name == "dead-link" && other.name == "unknown-reference" &&
           Before(words, '.') == QuotedWords(other.text);
}

/// The mark of a numbered construct, "%%5" or "[[1", that a text speaks of; "" for none.
std::string_view NumberMark(std::string_view text)
{
    for (const std::string_view mark : kFamilyMark)
        for (std::size_t at = text.find(mark); at != npos; at = text.find(mark, at + 1))
            if (at + 2 < text.size() && text[at + 2] >= '0' && text[at + 2] <= '9')
                return text.substr(at, 3);
    return {};
}

/// Whether both texts speak of one word: what the one has in quotes, or its mark.
bool SpeaksOfTheSame(std::string_view other, std::string_view text)
{
    std::string_view word = QuotedWords(text);
    if (word.empty())
        word = NumberMark(text);
    return !word.empty() && ContainsNoCase(other, word);
}

bool SaysBetter(const Finding& other, const Finding& finding)
{
    return SaysSame(other, finding) || std::ranges::any_of(kDoubled, [&](const Doubled& pair) {
               if (pair.name != finding.name || pair.better != other.name)
                   return false;
               return pair.beginning.empty() ? SpeaksOfTheSame(other.text, finding.text)
                                             : finding.text.starts_with(pair.beginning) &&
                                                   Contains(other.text, NumberMark(finding.text));
           });
}

bool IsSamePlace(const Finding& one, const Finding& other)
{
    return one.where.line == other.where.line && one.where.file == other.where.file;
}

/// Whether a finding can be said better by another, or can say another better.
bool IsInAPair(const Finding& finding)
{
    return std::ranges::any_of(kDoubled, [&](const Doubled& pair) {
        return pair.name == finding.name || pair.better == finding.name;
    });
}

/// The findings of a line that are said better by others of it; there may be thousands.
std::vector<const Finding*> SaidBetter(std::span<const Finding> line)
{
    std::vector<const Finding*> pairs;
    for (const Finding& finding : line)
        if (IsInAPair(finding) && pairs.size() < kMostCompared)
            pairs.push_back(&finding);
    std::vector<const Finding*> said;
    for (const Finding* const finding : pairs)
        if (std::ranges::any_of(pairs,
                                [&](const Finding* other) { return SaysBetter(*other, *finding); }))
            said.push_back(finding);
    return said;
}

} // namespace

void DropDoubled(std::vector<Finding>& findings)
{
    std::vector<Finding> kept;
    for (auto begin = findings.begin(); begin != findings.end();) {
        const auto end = std::find_if_not(begin, findings.end(), [&](const Finding& other) {
            return IsSamePlace(*begin, other);
        });
        const std::vector<const Finding*> said = SaidBetter({begin, end});
        for (auto at = begin; at != end; ++at)
            if (std::ranges::find(said, &*at) == said.end())
                kept.push_back(std::move(*at));
        begin = end;
    }
    findings = std::move(kept);
}

} // namespace kiv
