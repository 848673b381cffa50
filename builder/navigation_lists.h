// Page navigation: the drop-down, the bulleted page list and the site map inside pages, and the two
// files that every build writes after them, `_toc.txt` and `_sitemap.txt`. `tracer` is null where
// nobody asks for the way of the page's lines.
#pragma once

namespace kiv {

struct Build;
class Tracer;

/// Writes the form with a drop-down of all pages, the current one selected, to the page's output.
void WritePageDropDown(Build& build, Tracer* tracer);

/// Writes one list item for each page that is not noindex to the page's output.
void WritePageList(Build& build, Tracer* tracer);

/// Writes the site map put together from `_sitemap.txt` of this folder and of each folder of
/// `_group.txt` to the page's output. Throws `file` and writes nothing when one of them is
/// not there.
void WriteSiteMap(Build& build, Tracer* tracer);

/// Writes `_toc.txt` and `_sitemap.txt`.
void WriteNavigationFiles(Build& build);

} // namespace kiv
