#include "inspect/nesting.h"

#include "inspect/html_tags.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kVoid[] = {
    "AREA",  "BASE",    "BASEFONT", "BGSOUND", "BR",   "COL",   "EMBED",  "FRAME", "HR",  "IMG",
    "INPUT", "ISINDEX", "KEYGEN",   "LINK",    "META", "PARAM", "SOURCE", "TRACK", "WBR", "IMAGE",
};

/// An element whose end tag may be left out, and what it closes when it begins.
struct Loose {
    std::string_view name;
    std::string_view closes; // names between blanks
};

constexpr Loose kLoose[] = {
    {"P", " P "},
    {"LI", " P LI "},
    {"DT", " P DT DD "},
    {"DD", " P DT DD "},
    {"TD", " P TD TH "},
    {"TH", " P TD TH "},
    {"TR", " P TD TH TR CAPTION COLGROUP "},
    {"TBODY", " P TD TH TR TBODY THEAD TFOOT CAPTION COLGROUP "},
    {"THEAD", " P TD TH TR TBODY THEAD TFOOT CAPTION COLGROUP "},
    {"TFOOT", " P TD TH TR TBODY THEAD TFOOT CAPTION COLGROUP "},
    {"CAPTION", " P "},
    {"COLGROUP", " P CAPTION COLGROUP "},
    {"OPTION", " OPTION "},
};

/// What a drawing is made of. Any other element may end the drawing, or be no part of it.
constexpr std::string_view kDrawn[] = {
    "A",       "CIRCLE",   "CLIPPATH", "DEFS",           "ELLIPSE",        "FILTER",
    "G",       "LINE",     "MARKER",   "MASK",           "PATH",           "PATTERN",
    "POLYGON", "POLYLINE", "RECT",     "STOP",           "SYMBOL",         "TEXTPATH",
    "TEXT",    "TSPAN",    "USE",      "LINEARGRADIENT", "RADIALGRADIENT",
};

const Loose* FindLoose(std::string_view name)
{
    const auto* const row = std::ranges::find(kLoose, name, &Loose::name);
    return row == std::end(kLoose) ? nullptr : row;
}

/// The elements that are open.
class OpenElements {
  public:
    std::size_t Count() const { return names_.size(); }

    /// `is_closed`: the tag ends in "/>", which closes an element of a drawing alone.
    void Begin(std::string name, bool is_closed)
    {
        if (std::ranges::find(kVoid, name) != std::end(kVoid))
            return;
        Look(name);
        if (is_closed && IsDrawing() && IsDrawn(name))
            return;
        if (const Loose* const loose = foreign_ == 0 ? FindLoose(name) : nullptr)
            while (!names_.empty() && Contains(loose->closes, " " + names_.back() + " "))
                Pop();
        Push(std::move(name));
    }

    void End(std::string_view name)
    {
        Look(name);
        const auto open = places_.find(name);
        if (open == places_.end() || open->second.empty())
            return;
        // What stands around it must be loose. In a drawing nothing is.
        const std::size_t place = open->second.back();
        const bool is_last = place + 1 == names_.size();
        const bool is_shielded = foreign_ > 0 || (!tight_.empty() && tight_.back() > place);
        if (!is_last && is_shielded)
            return;
        while (names_.size() > place)
            Pop();
        has_others_ = has_others_ && foreign_ > 0;
    }

  private:
    /// Nothing may be left out in there.
    static bool IsForeign(std::string_view name) { return name == "SVG" || name == "MATH"; }

    static bool IsDrawn(std::string_view name)
    {
        return std::ranges::find(kDrawn, name) != std::end(kDrawn);
    }
    void Look(std::string_view name)
    {
        has_others_ = has_others_ || (foreign_ > 0 && !IsForeign(name) && !IsDrawn(name));
    }
    bool IsDrawing() const { return foreign_ > 0 && !has_others_; }

    void Push(std::string name)
    {
        foreign_ += IsForeign(name) ? 1U : 0U;
        if (FindLoose(name) == nullptr)
            tight_.push_back(names_.size());
        places_[name].push_back(names_.size());
        names_.push_back(std::move(name));
    }

    void Pop()
    {
        const std::string& name = names_.back();
        foreign_ -= IsForeign(name) ? 1U : 0U;
        if (FindLoose(name) == nullptr)
            tight_.pop_back();
        places_.find(name)->second.pop_back();
        names_.pop_back();
    }

    std::vector<std::string> names_; // upper-cased
    // Where in names_ each name stands, and all that are not loose: an end tag costs the same
    // however many elements are open.
    std::map<std::string, std::vector<std::size_t>, std::less<>> places_;
    std::vector<std::size_t> tight_;
    std::size_t foreign_ = 0; // of them
    bool has_others_ = false; // something else began or ended in there
};

/// Whether a tag ends in "/>", where the "/" is no part of a value without quotes. `tag`: what
/// stands between its name and the tag's end.
bool IsClosed(std::string_view tag)
{
    if (!tag.ends_with("/>"))
        return false;
    tag.remove_suffix(2);
    return tag.empty() || std::string_view(" \t\r\n\f\"'").find(tag.back()) != npos;
}

} // namespace

std::size_t NestingBound(std::string_view html, std::size_t enough)
{
    OpenElements open;
    std::size_t most = 0;
    while (most < enough) {
        html.remove_prefix(std::min(html.find('<'), html.size()));
        if (html.empty())
            break;
        if (html.starts_with("<!--")) {
            html = BehindComment(html);
            continue;
        }
        const bool is_end = html.starts_with("</");
        html.remove_prefix(is_end ? 2 : 1);
        if (html.empty() || !IsTagLetter(html[0]))
            continue;
        const std::size_t size = std::min(html.find_first_of(" \t\r\n\f/>"), html.size());
        std::string name = UpperCase(html.substr(0, std::min<std::size_t>(size, 32)));
        const std::string_view rest = html.substr(size);
        html = BehindTag(rest);
        const bool is_closed = IsClosed(rest.substr(0, rest.size() - html.size()));
        if (is_end)
            open.End(name);
        else
            open.Begin(std::move(name), is_closed);
        most = std::max(most, open.Count());
    }
    return most;
}

} // namespace kiv
