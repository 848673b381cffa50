// Bang macros: "!!pop[", "!!showhide[", "!!flv[", "!!mailto[", "!!SWAP[", "!!flash[". Each expander
// gives what stands in the place of one use. A missing field throws RunError `subscript`.
#pragma once

#include "builder/arguments.h"
#include "builder/page_bangs.h"

#include <string>
#include <string_view>

namespace kiv {

struct Build;

Expansion ExpandPopup(const BracketUse& use, Build& build);
Expansion ExpandShowHide(const BracketUse& use, Build& build);
Expansion ExpandFlv(const BracketUse& use, Build& build);
Expansion ExpandMailto(const BracketUse& use, Build& build);
Expansion ExpandSwap(const BracketUse& use, Build& build);
Expansion ExpandFlash(const BracketUse& use, Build& build);

struct Bang {
    std::string_view mark; // with its "["; a line may have it in any case
    Expansion (*expand)(const BracketUse& use, Build& build);
    std::string_view about; // what it makes

    constexpr std::string_view Name() const { return mark.substr(0, mark.size() - 1); }
};

inline constexpr Bang kPopup = {"!!pop[", ExpandPopup, "a link that opens a window of its own"};
inline constexpr Bang kShowHide = {"!!showhide[", ExpandShowHide,
                                   "a link that shows and hides what follows"};
inline constexpr Bang kFlv = {"!!flv[", ExpandFlv, "a player for a film"};
inline constexpr Bang kMailto = {"!!mailto[", ExpandMailto,
                                 "a mail address that robots do not find"};
inline constexpr Bang kSwap = {"!!SWAP[", ExpandSwap, "a picture that changes under the pointer"};
inline constexpr Bang kFlash = {"!!flash[", ExpandFlash, "a Flash film"};

/// All of them; a new bang has its row here and its step in the merge.
inline constexpr const Bang* kBangs[] = {&kPopup, &kShowHide, &kFlv, &kMailto, &kSwap, &kFlash};

/// Appends the script that the page's show/hide toggles call, when there are any, and forgets them.
void WriteShowHideScript(std::string& output, PageBangs& page);

} // namespace kiv
