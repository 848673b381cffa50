// What a page says that can be right or wrong: its addresses, names, pictures and odd words.
#pragma once

#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What an address is for.
enum class LinkKind { link, picture, style, script, frame, form, media };

/// Texts are Windows-1252; a character outside it is a decimal reference. Lines are 1-based.
struct PageLink {
    LinkKind kind = LinkKind::link;
    std::string address; // with its character references resolved
    std::string written; // the page's own bytes for it where they differ, else ""
    int line = 0;
    bool has_script = false; // a click runs script

    /// The bytes that the page, and as a rule its source, has.
    const std::string& Words() const { return written.empty() ? address : written; }
};

/// A picture with both its sides given.
struct SizedPicture {
    std::size_t link = 0; // 0-based, of PageFacts::links
    int width = 0;        // in pixels
    int height = 0;
};

/// A word of the page and its line.
struct PageWord {
    std::string text;
    int line = 0;
};

struct PageFacts {
    std::vector<PageLink> links; // by line
    std::vector<SizedPicture> pictures;
    std::vector<PageWord> ids;          // each element's "id", by line
    std::vector<std::string> names;     // of anchors: "name" of an "a"
    std::vector<PageWord> texts;        // visible text in which a construct may be left over
    std::vector<PageWord> tags;         // "<zu…" that are there still
    std::vector<std::string> mentioned; // what script of the page names that looks like a file
    std::string base;                   // the address that others are relative to; "": the page's
    bool is_made_by_server = false;     // in part; other links and names may come with it
    bool leads_on = false;              // by itself, to another page
    bool is_read = true;                // false: it is too deep or too large for it
};

/// How long pages may take, as the processor counts it. All pages of a run share what one of them
/// needs beyond its own.
struct ReadingTime {
    std::clock_t own = CLOCKS_PER_SEC / 5; // of each page
    std::clock_t shared = std::clock_t{20} * CLOCKS_PER_SEC;
};

/// Reads a page, Windows-1252 or UTF-8. Never fails, whatever the bytes are. Takes from the shared
/// time what it needed of it; a page that nobody has the time for is not read.
PageFacts ReadPage(std::string_view bytes, ReadingTime& time);

/// False in a program that was built without a reader of HTML.
bool CanReadPages();

} // namespace kiv
