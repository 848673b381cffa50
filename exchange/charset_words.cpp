#include "exchange/charset_words.h"

#include "text/text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kiv {

namespace {

constexpr std::string_view kLabelCharacters =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_:.";
constexpr std::array<std::string_view, 10> kWindowsLabels = {
    "windows-1252", "cp1252", "x-cp1252", "iso-8859-1", "iso8859-1",
    "iso_8859-1",   "latin1", "l1",       "us-ascii",   "ascii",
};
constexpr std::array<std::string_view, 2> kUtf8Labels = {"utf-8", "utf8"};

/// Where a declaration begins, what ends it, and the word behind which the set stands.
struct Form {
    std::string_view opener;
    char end;
    std::string_view word;
};
constexpr std::array<Form, 3> kForms = {{
    {"<meta", '>', "charset"},
    {"<?xml", '>', "encoding"},
    {"@charset", ';', "@charset"},
}};

struct Span {
    std::size_t at = npos;
    std::size_t size = 0;
};

/// The name of the set behind a form's word in `text`, as far as `end`; `npos` where there is none.
Span LabelIn(std::string_view text, std::size_t from, std::size_t end, const Form& form)
{
    const std::size_t word = FindNoCase(text.substr(0, end), form.word, from);
    if (word == npos)
        return {};
    const std::size_t at = text.find_first_not_of(" \t\r\n=\"'", word + form.word.size());
    if (at == npos || at >= end)
        return {};
    const std::size_t after = std::min(text.find_first_not_of(kLabelCharacters, at), end);
    return {at, after - at};
}

bool IsToChange(std::string_view label, Encoding to)
{
    const auto is = [&](std::string_view known) { return EqualsNoCase(label, known); };
    return to == Encoding::utf8 ? std::ranges::any_of(kWindowsLabels, is)
                                : std::ranges::any_of(kUtf8Labels, is);
}

void ChangeForm(std::string& text, const Form& form, Encoding to, ChangedWords& words)
{
    const std::string_view wanted = to == Encoding::utf8 ? "utf-8" : "windows-1252";
    std::size_t from = 0;
    while ((from = FindNoCase(text, form.opener, from)) != npos) {
        const std::size_t end = std::min(text.find(form.end, from), text.size());
        const Span label = LabelIn(text, from, end, form);
        from += form.opener.size();
        if (label.at == npos || label.size == 0)
            continue;
        ++words.declarations;
        if (!IsToChange(std::string_view(text).substr(label.at, label.size), to))
            continue;
        text.replace(label.at, label.size, wanted);
        ++words.changed;
    }
}

} // namespace

ChangedWords ChangeCharsetWords(std::string& text, Encoding to)
{
    ChangedWords words;
    for (const Form& form : kForms)
        ChangeForm(text, form, to, words);
    return words;
}

} // namespace kiv
