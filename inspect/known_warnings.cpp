#include "inspect/known_warnings.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

/// A text that begins or ends so, and what to do.
struct KnownWarning {
    std::string_view words;
    std::string_view what_to_do;
};

constexpr KnownWarning kKnown[] = {
    {"Oops! Missing close '>' in: ", "end the tag by a \">\""},
    {"Forgot to close your zutable!",
     "put a blank before the \"@\", or \"</zutable>\" above this line"},
    {"BIG OOPS! zutable!!", "put a blank before the \"@\", or \"</zutable>\" above this line"},
    {"BIG OOPS! zutimeline", "put a blank before the \"@\", or \"</zutimeline1>\" above this line"},
    {"Oops! zutimeline", "write each line of a timeline as \"date|text\", and leave none empty"},
    {"Oops! Missing zuequation close!", "put \"</zuequation>\" into the same line"},
    {"BIG OOPS! Missing close zuplaywright",
     "put a blank before the \"@\", or \"</zuplaywright>\" above this line"},
    {"Oops! zuplaywright error before: ", "end the play before another block begins"},
    {"Oops! zuquiz2", "write each answer as \"text|what it says to it\", and leave no line empty"},
    {"You can't do <zu... stuff inside ++ files",
     "move the block into the page list; of blocks, an included file may have tables alone"},
    {"You messed up your !!pop", "write it as \"!!pop[name|page|width|height]\""},
    {"Something's wrong here: ",
     "give !!pop[ four fields, or one address that begins with \"http\" or holds \".htm\""},
    {"FLV!! is flawed", "write it as \"!!flv[server|file|width|height]\""},
    {"Oops! _html.txt doesn't exist!", "another program took it away: check again"},
    {"Oops! _template.txt doesn't exist!", "another program took it away: check again"},
};

constexpr std::size_t kLongestLine = 200;

} // namespace

std::string_view WhatToDoAbout(std::string_view warning)
{
    const auto* const known = std::ranges::find_if(kKnown, [&](const KnownWarning& one) {
        return warning.starts_with(one.words) || warning.ends_with(one.words);
    });
    return known == std::end(kKnown) ? std::string_view() : known->what_to_do;
}

std::string OneLine(std::string_view warning)
{
    std::string line;
    while (!warning.empty())
        line.append(line.empty() ? "" : " ").append(TakeLine(warning));
    return line.size() > kLongestLine ? line.substr(0, kLongestLine) + "..." : line;
}

} // namespace kiv
