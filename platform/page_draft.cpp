#include "platform/page_draft.h"

namespace kiv {

void PageDraft::Prepare() noexcept
{
    try {
        prepared_ = Make();
    } catch (...) { // for want of memory, as a rule
        prepared_ = {};
    }
}

bool PageDraft::Place() noexcept
{
    try {
        using Outcome = PreparedPage::Outcome;
        return prepared_.outcome == Outcome::held ||
               (prepared_.outcome == Outcome::drafted && Put());
    } catch (...) {
        return false;
    }
}

} // namespace kiv
