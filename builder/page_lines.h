// The lines of a page: those of the page list as they stand there, as long as the page takes them
// one after the other and nothing else.
#pragma once

#include "builder/sources.h"
#include "platform/fixed_table.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

namespace kiv {

inline constexpr int kMaxPageLines = 5000;

/// The line that closes every page's text.
inline constexpr std::string_view kEndMarker = "@@ENDOFFILE@@";

/// Line 1 is the page's name; the marker stands behind the last one. Every other entry is empty,
/// or what another pass has left there. An index outside 0 to kMaxPageLines throws `subscript`.
class PageLineTable {
  public:
    PageLineTable() = default;
    PageLineTable(PageLineTable&&) = default;
    PageLineTable& operator=(PageLineTable&&) = default;
    // Two of them would refer to the lines of one page list.
    PageLineTable(const PageLineTable&) = delete;
    PageLineTable& operator=(const PageLineTable&) = delete;

    const SourceLine& operator[](int index) const
    {
        const std::size_t place = static_cast<std::size_t>(index) - 1;
        if (place < seen_.size())
            return seen_[place];
        return is_closed_ && place == seen_.size() ? kMarker : own_[index];
    }

    /// The entries behind `index` that were written, or made room for by others behind them. The
    /// marker need not be among them.
    std::span<const SourceLine> Behind(int index) const
    {
        if (!IsSeen())
            return own_.Behind(index);
        return seen_.subspan(std::min(static_cast<std::size_t>(index), seen_.size()));
    }

    /// Makes `lines` those from `index` on. They stay where they are until TakeOver.
    void See(int index, std::span<const SourceLine> lines);
    /// Makes a line, which need not stay, the one at `index`.
    void Set(int index, const SourceLine& line);
    /// Puts the marker.
    void Close(int index);
    /// From here on what was seen may change.
    void TakeOver();

  private:
    using OwnTable = FixedTable<SourceLine, 0, kMaxPageLines>;
    static constexpr SourceLine kMarker{kEndMarker, {}, 0};

    bool IsSeen() const { return !seen_.empty() || is_closed_; }
    bool CanSee(int index) const;

    std::span<const SourceLine> seen_; // from line 1 on
    bool is_closed_ = false;           // the marker stands behind these
    OwnTable own_{"page line", "A page has room for 4999 lines: split it in two, or put ready-made "
                               "HTML in with \"!++\", which is one line."};
};

} // namespace kiv
