// The index of every word that the format knows, with the places where the manual tells of it.
#pragma once

#include "docs/manual/generator/sections.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv::manual {

inline constexpr std::string_view kProgram = "kiv-cli "; // begins the words that are its commands

/// Words of one sort.
struct WordFamily {
    std::string heading;
    std::string_view page; // that tells most of them
    std::vector<std::string> words;
};

/// All words: those of the program's tables, and the marks that are in no table.
std::vector<WordFamily> WordFamilies();

/// A place that tells of a word.
struct WordPlace {
    const ManualPage* page;
    const PageSection* section;
};

/// Where `pages` tell of a word as code or have it for a heading: first on the page named `home`,
/// then once on each other page that does. A word that ends in "[" or ":" may be the beginning of
/// a code, a command with or without "kiv-cli " that of a call.
std::vector<WordPlace> PlacesOf(std::string_view word, std::string_view home,
                                const std::vector<ManualPage>& pages);

/// The index as HTML: a table for each family. Throws std::runtime_error for a word that no page
/// tells of.
std::string WordIndexHtml(const std::vector<WordFamily>& families,
                          const std::vector<ManualPage>& pages);

} // namespace kiv::manual
