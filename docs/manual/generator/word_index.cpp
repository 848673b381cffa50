#include "docs/manual/generator/word_index.h"

#include "docs/manual/generator/prose.h"
#include "text/text.h"

#include <algorithm>
#include <stdexcept>

namespace kiv::manual {

namespace {

constexpr std::size_t kHomePlaces = 3;  // of a word on the page that tells most of it
constexpr std::size_t kOtherPlaces = 4; // on others

/// The name in a path, which the manual gives of files that have a place of their own.
std::string_view WithoutFolder(std::string_view code)
{
    return code.substr(code.rfind('\\') + 1);
}

/// Whether a code is a call of the command: "kiv-cli build", "kiv-cli build --eoy", "build [DIR]".
/// A name all alone may mean something else.
bool IsCall(std::string_view code, std::string_view command)
{
    if (code.starts_with(kProgram)) {
        code.remove_prefix(kProgram.size());
        if (code == command)
            return true;
    }
    return code.size() > command.size() && code.starts_with(command) && code[command.size()] == ' ';
}

bool IsWord(std::string_view code, std::string_view word)
{
    if (word.starts_with(kProgram))
        return IsCall(code, word.substr(kProgram.size()));
    const bool is_mark = word.ends_with('[') || word.ends_with(':') || word == "{{";
    return EqualsNoCase(Trim(code), Trim(word)) || EqualsNoCase(WithoutFolder(code), word) ||
           (is_mark && StartsWithNoCase(code, word));
}

bool TellsOf(const PageSection& section, std::string_view word)
{
    return section.heading == word ||
           std::any_of(section.codes.begin(), section.codes.end(),
                       [&](const std::string& code) { return IsWord(code, word); });
}

void AddPlaces(std::vector<WordPlace>& places, const ManualPage& page, std::string_view word,
               std::size_t most)
{
    for (const PageSection& section : page.sections) {
        if (most == 0)
            return;
        if (TellsOf(section, word)) {
            places.push_back({&page, &section});
            --most;
        }
    }
}

std::string Link(const WordPlace& place)
{
    const PageSection& section = *place.section;
    std::string link = "<a href=\"" + place.page->name + ".htm";
    if (!section.id.empty())
        link += "#" + section.id;
    link += "\">" + Escaped(place.page->title);
    if (!section.heading.empty())
        link += ": " + Escaped(section.heading);
    return link + "</a>";
}

std::string Row(std::string_view word, const std::vector<WordPlace>& places)
{
    std::string row = "<tr><td><code class=\"short\">" + Escaped(Trim(word)) + "</code></td><td>";
    bool is_first = true;
    for (const WordPlace& place : places) {
        row.append(is_first ? "" : "<br>\n").append(Link(place));
        is_first = false;
    }
    return row + "</td></tr>\n";
}

/// The way to each family.
std::string FamilyLinks(const std::vector<WordFamily>& families)
{
    std::string links = "<ul>\n";
    for (const WordFamily& family : families)
        links += "<li><a href=\"#" + HeadingId(family.heading) + "\">" + Escaped(family.heading) +
                 "</a></li>\n";
    return links + "</ul>\n";
}

} // namespace

std::vector<WordPlace> PlacesOf(std::string_view word, std::string_view home,
                                const std::vector<ManualPage>& pages)
{
    std::vector<WordPlace> places;
    for (const ManualPage& page : pages)
        if (page.name == home)
            AddPlaces(places, page, word, kHomePlaces);
    const std::size_t most = places.size() + kOtherPlaces;
    for (const ManualPage& page : pages)
        if (page.name != home && places.size() < most)
            AddPlaces(places, page, word, 1);
    return places;
}

std::string WordIndexHtml(const std::vector<WordFamily>& families,
                          const std::vector<ManualPage>& pages)
{
    std::string html = FamilyLinks(families);
    for (const WordFamily& family : families) {
        html += "<h2 id=\"" + HeadingId(family.heading) + "\">" + Escaped(family.heading) +
                "</h2>\n<div class=\"wide\"><table class=\"words\">\n"
                "<tr><th>word</th><th>told in</th></tr>\n";
        for (const std::string& word : family.words) {
            const std::vector<WordPlace> places = PlacesOf(word, family.page, pages);
            if (places.empty())
                throw std::runtime_error("no page of the manual tells of " + word);
            html += Row(word, places);
        }
        html += "</table></div>\n";
    }
    return html;
}

} // namespace kiv::manual
