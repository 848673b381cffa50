// The popup bang: "!!pop[page.htm]" or "!!pop[name|url|width|height|features]".
#include "builder/bang_macros.h"
#include "builder/build_state.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <string_view>

namespace kiv {

namespace {

constexpr std::string_view kFullFeatures = "resizable=yes,scrollbars=yes,status=yes,toolbar=yes,"
                                           "location=yes,directories=yes,menubar=yes,";
constexpr std::string_view kFewFeatures = "resizable=yes,scrollbars=yes,status=yes,";

struct Popup {
    std::string name;
    std::string_view url;
    std::string_view width;
    std::string_view height;
    std::string features;
    std::string_view link_text; // empty: the author writes the words and the "</a>"
};

bool IsSimple(std::string_view field)
{
    return field.starts_with("http") || Contains(field, ".htm") || Contains(field, ".asp");
}

/// An address as a reader knows it: without "http://", "www." and a "/" at its end.
std::string_view LinkText(std::string_view url)
{
    for (const std::string_view head : {"http://", "www."})
        if (url.starts_with(head))
            url.remove_prefix(head.size());
    if (url.ends_with('/'))
        url.remove_suffix(1);
    return url;
}

Popup SimplePopup(std::string_view url, PageBangs& page)
{
    Popup popup;
    popup.url = url;
    if (url.ends_with('!')) {
        popup.url.remove_suffix(1);
        popup.link_text = LinkText(popup.url);
    }
    popup.name = "popwin" + Decimal(++page.PopupCounter);
    popup.width = "800";
    popup.height = "600";
    popup.features = kFullFeatures;
    return popup;
}

std::string Features(const Fields& fields)
{
    // With six fields or more the fifth says nothing. The format wants it so.
    if (fields.Count() != 5 || fields[5].empty())
        return std::string(kFewFeatures);
    if (EqualsNoCase(fields[5], "full"))
        return std::string(kFullFeatures);
    std::string features(fields[5]);
    if (!features.ends_with(','))
        features += ',';
    return features;
}

Popup FullPopup(const Fields& fields)
{
    Popup popup;
    popup.name = fields[1];
    popup.url = fields[2];
    popup.width = fields[3];
    popup.height = fields[4];
    popup.features = Features(fields);
    return popup;
}

std::string Anchor(const Popup& popup)
{
    return Joined({"<a href=\"",
                   popup.url,
                   "\" onClick=\"",
                   popup.name,
                   "=window.open('', '",
                   popup.name,
                   "','",
                   popup.features,
                   "width=",
                   popup.width,
                   ",",
                   "height=",
                   popup.height,
                   "');",
                   popup.name,
                   ".focus()\" ",
                   "target=\"",
                   popup.name,
                   "\">",
                   popup.link_text,
                   popup.link_text.empty() ? "" : "</a>"});
}

} // namespace

Expansion ExpandPopup(const BracketUse& use, Build& build)
{
    const Fields fields(use);
    if (fields.Count() == 1 && IsSimple(fields[1]))
        return {Anchor(SimplePopup(fields[1], build.state.page.bangs))};
    if (fields.Count() == 1) {
        // The anchor is written all the same, with every part empty.
        build.messages.ShowBuildMessage("Something's wrong here: " + std::string(use.arguments));
        return {Anchor({})};
    }
    if (fields.Count() == 3) {
        build.messages.ShowBuildMessage("You messed up your !!pop");
        // The whole line goes, not the macro alone.
        return {"", true, "three fields make no popup, so the whole line goes"};
    }
    return {Anchor(FullPopup(fields))};
}

} // namespace kiv
