#include "builder/page_lines.h"

#include <utility>

namespace kiv {

/// Whether a line at `index` goes on with what is seen.
bool PageLineTable::CanSee(int index) const
{
    const bool has_own = own_.Count() > 0;
    return !has_own && !is_closed_ && static_cast<std::size_t>(index) == seen_.size() + 1;
}

void PageLineTable::See(int index, std::span<const SourceLine> lines)
{
    if (lines.empty())
        return;
    const bool follows = seen_.empty() || lines.data() == seen_.data() + seen_.size();
    if (!CanSee(index) || !follows) {
        TakeOver();
        return own_.SetRow(index, lines);
    }
    own_.RefuseOutside(index + static_cast<int>(lines.size()) - 1);
    seen_ = {lines.data() - seen_.size(), seen_.size() + lines.size()};
}

void PageLineTable::Set(int index, const SourceLine& line)
{
    TakeOver();
    own_.Set(index, line);
}

void PageLineTable::Close(int index)
{
    if (!CanSee(index)) {
        TakeOver();
        own_[index] = kMarker;
        return;
    }
    own_.RefuseOutside(index);
    is_closed_ = true;
}

void PageLineTable::TakeOver()
{
    const auto seen = std::exchange(seen_, {});
    own_.SetRow(1, seen);
    if (std::exchange(is_closed_, false))
        own_[static_cast<int>(seen.size()) + 1] = kMarker;
}

} // namespace kiv
