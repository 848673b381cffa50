// Where in the sources something was found, as a person would look for it.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// The place in work. The views belong to whoever works there.
struct Place {
    std::string_view file = {}; // absolute drive path; "": none
    int line = 0;               // 1-based; 0: none
    std::string_view page = {}; // file name of the page being written; "": none

    bool IsKnown() const { return !file.empty() || line > 0 || !page.empty(); }
    /// "C:\site\_html.txt, line 12, page about.htm", or what of it there is.
    std::string Text() const;
};

/// A place that outlives the work.
struct KeptPlace {
    KeptPlace() = default;
    KeptPlace(const Place& place) : file(place.file), line(place.line), page(place.page) {}

    Place View() const { return {file, line, page}; }
    bool IsKnown() const { return View().IsKnown(); }
    std::string Text() const { return View().Text(); }

    std::string file;
    int line = 0;
    std::string page;
};

} // namespace kiv
