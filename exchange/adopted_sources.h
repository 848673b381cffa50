// The sources of a section whose pages were there before: page list, template, and what they
// include.
#pragma once

#include "exchange/old_site.h"
#include "exchange/shared_pieces.h"
#include "exchange/shared_runs.h"
#include "exchange/template_fit.h"

#include <map>
#include <string>
#include <vector>

namespace kiv {

/// How a page goes into its list, the freest way first.
enum class Way {
    templated, // it goes through the template
    shared,    // head and tail are those that it shares with others
    naked,     // line by line
    as_is,     // its text is included as it is
};

/// A page of a section, in the order of the list.
struct PlannedPage {
    const FoundPage* page = nullptr;
    std::string name; // as seen from the section
    std::string title;
    Way way = Way::shared;
    std::size_t family = 0; // of a shared page
};

struct SectionPlan {
    std::string name; // what the pages' folder is called, for a comment
    std::vector<PlannedPage> pages;
    TemplateFit fit;
    std::vector<PageFamily> families;
    SharedPieces pieces;       // of what pages have between these
    bool writes_above = false; // the pages go into the folder above the sources
    std::string parts;         // folders for what is included, as seen from the section
    std::string texts;
};

/// The line of a page, from 0, that its foot stands before: the one that begins with "</body", else
/// its end.
std::size_t FootOf(const std::vector<std::string_view>& lines);

/// The lines of a page that its list has, those that no template and no run gives it. None goes on
/// over the page's foot.
std::vector<OwnSpan> OwnSpansOf(const SectionPlan& plan, std::size_t page);

/// Texts by the names of their files, as seen from the section's folder.
using SourceTexts = std::map<std::string, std::string>;

/// Writes them so that the list keeps within the format's bounds.
SourceTexts MakeSources(const SectionPlan& plan);

} // namespace kiv
