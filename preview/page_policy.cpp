#include "preview/page_policy.h"

#include "text/text.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kSpace = " \t\r\n\f";
// Stands for a quote that is written as a reference, whose ";" would end a directive.
constexpr std::string_view kQuote = "\x01";

struct Attribute {
    std::string_view name;
    std::size_t at = 0; // the value's place
    std::size_t size = 0;
};

std::size_t EndOf(std::string_view text, std::string_view ends, std::size_t from)
{
    return std::min(text.find_first_of(ends, from), text.size());
}

/// The attribute at `at`, which moves behind it.
Attribute TakeAttribute(std::string_view tag, std::size_t& at)
{
    Attribute attribute;
    const std::size_t name_end = EndOf(tag, " \t\r\n\f/=>", at + 1);
    attribute.name = tag.substr(at, name_end - at);
    at = name_end;
    const std::size_t equals = tag.find_first_not_of(kSpace, name_end);
    if (equals == npos || tag[equals] != '=')
        return attribute;
    at = std::min(tag.find_first_not_of(kSpace, equals + 1), tag.size());
    const bool is_quoted = at < tag.size() && (tag[at] == '"' || tag[at] == '\'');
    attribute.at = at + (is_quoted ? 1 : 0);
    const std::size_t end =
        is_quoted ? EndOf(tag, tag.substr(at, 1), at + 1) : EndOf(tag, " \t\r\n\f>", at);
    attribute.size = end - attribute.at;
    at = std::min(end + (is_quoted ? 1 : 0), tag.size());
    return attribute;
}

/// The words of a directive: its name, then its sources.
std::vector<std::string_view> PolicyWords(std::string_view directive)
{
    std::vector<std::string_view> words;
    for (std::size_t at = directive.find_first_not_of(kSpace); at != npos;) {
        const std::size_t end = EndOf(directive, kSpace, at);
        words.push_back(directive.substr(at, end - at));
        at = directive.find_first_not_of(kSpace, end);
    }
    return words;
}

bool IsNone(std::string_view word)
{
    return EqualsNoCase(word, "'none'") ||
           EqualsNoCase(word, std::string(kQuote).append("none").append(kQuote));
}

bool IsAny(std::string_view name, std::initializer_list<std::string_view> names)
{
    for (const std::string_view other : names)
        if (EqualsNoCase(name, other))
            return true;
    return false;
}

std::string Loosened(std::string_view directive, std::string_view own, std::string_view nonce)
{
    const std::vector<std::string_view> words = PolicyWords(directive);
    const bool is_of_script =
        !words.empty() && IsAny(words[0], {"default-src", "script-src", "script-src-elem"});
    if (!is_of_script && (words.empty() || !IsAny(words[0], {"connect-src"})))
        return std::string(directive);
    std::string loose(words[0]);
    bool is_strict = false; // then addresses do not count
    for (std::size_t i = 1; i < words.size(); ++i) {
        is_strict = is_strict || ContainsNoCase(words[i], "strict-dynamic");
        if (!IsNone(words[i]))
            loose.append(" ").append(words[i]);
    }
    loose.append(" ").append(own);
    if (is_of_script && is_strict)
        loose.append(" ").append(kQuote).append("nonce-").append(nonce).append(kQuote);
    return loose;
}

} // namespace

PolicySpot PolicyIn(std::string_view tag)
{
    PolicySpot spot;
    bool is_policy = false;
    for (std::size_t at = 0; (at = tag.find_first_not_of(" \t\r\n\f/>", at)) != npos;) {
        const Attribute attribute = TakeAttribute(tag, at);
        const std::string_view value = tag.substr(attribute.at, attribute.size);
        if (EqualsNoCase(attribute.name, "http-equiv"))
            is_policy = EqualsNoCase(value, "Content-Security-Policy");
        else if (EqualsNoCase(attribute.name, "content"))
            spot = {attribute.at, attribute.size};
    }
    return is_policy ? spot : PolicySpot{};
}

std::string LoosenedPolicy(std::string_view policy, std::string_view own, std::string_view nonce)
{
    std::string plain(policy);
    for (const std::string_view reference : {"&#39;", "&apos;", "&#x27;", "&#X27;"})
        ReplaceEach(plain, reference, kQuote);
    std::string loose;
    for (const std::string_view directive : Split(plain, ';'))
        loose.append(loose.empty() ? "" : ";").append(Loosened(directive, own, nonce));
    ReplaceEach(loose, kQuote, "&#39;");
    return loose;
}

} // namespace kiv
