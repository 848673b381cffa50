// What is added to a page when it is served.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// What the script in a page is told. All texts but `page` need no references in HTML.
struct PageScript {
    std::string origin; // "http://127.0.0.1:8098": a page may set another base for its addresses
    std::string run;
    std::string secret;
    std::string version;
    std::string page; // its path from the root on, in the bytes that name it
};

/// The element that loads the script.
std::string ScriptElement(const PageScript& script);

/// The page, whose bytes stay otherwise, with the script, and with `data-kiv-at="LINE:COLUMN"` in
/// the start tags of what is to be seen: where they stand in the page, both 1-based, in bytes. A
/// page in UTF-16 stays as it is.
std::string MarkedPage(std::string_view html, const PageScript& script);

} // namespace kiv
