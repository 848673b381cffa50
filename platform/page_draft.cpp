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

} // namespace kiv
