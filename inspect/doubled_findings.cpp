#include "inspect/doubled_findings.h"

#include "text/text.h"

#include <algorithm>
#include <span>

namespace kiv {

namespace {

/// `name` is told by `better`, too, and with more of what to do.
struct Doubled {
    std::string_view name;
    std::string_view better;
};

constexpr Doubled kDoubled[] = {
    {"left-over", "misspelled-variable"},
    {"left-over", "misspelled-directive"},
    {"left-over", "misspelled-macro"},
    {"left-over", "misspelled-tag"},
    {"left-over", "undefined-number"},
    {"left-over", "unclosed-bracket"},
    {"left-over", "unknown-reference"},
    {"undefined-number", "quiz-doubled-mark"},
    {"link-to-stale-page", "unknown-reference"},
    {"left-over", "misplaced-directive"},
    {"left-over", "missing-field"},
    {"build-warning", "undefined-number"},
    {"build-error", "undefined-number"},
};

/// The first words in double quotes; "" for none.
std::string_view QuotedWords(std::string_view text)
{
    const std::size_t begin = text.find('"');
    const std::size_t end = begin == npos ? npos : text.find('"', begin + 1);
    return end == npos ? std::string_view() : text.substr(begin + 1, end - begin - 1);
}

bool SaysBetter(const Finding& other, const Finding& finding)
{
    const auto is_pair = [&](const Doubled& pair) {
        return pair.name == finding.name && pair.better == other.name;
    };
    const std::string_view words = QuotedWords(finding.text);
    return std::ranges::any_of(kDoubled, is_pair) &&
           (words.empty() || ContainsNoCase(other.text, words));
}

bool IsSamePlace(const Finding& one, const Finding& other)
{
    return one.where.line == other.where.line && one.where.file == other.where.file;
}

} // namespace

void DropDoubled(std::vector<Finding>& findings)
{
    std::vector<Finding> kept;
    for (auto begin = findings.begin(); begin != findings.end();) {
        const auto end = std::find_if_not(begin, findings.end(), [&](const Finding& other) {
            return IsSamePlace(*begin, other);
        });
        const std::span<const Finding> line(begin, end);
        for (const Finding& finding : line)
            if (std::ranges::none_of(
                    line, [&](const Finding& other) { return SaysBetter(other, finding); }))
                kept.push_back(finding);
        begin = end;
    }
    findings = std::move(kept);
}

} // namespace kiv
