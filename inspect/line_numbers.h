// Which line of a text a place is in.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace kiv {

class LineNumbers {
  public:
    /// The text must outlive it. LF ends a line.
    explicit LineNumbers(std::string_view text) : text_(text)
    {
        constexpr std::size_t kNone = std::string_view::npos;
        for (std::size_t at = text.find('\n'); at != kNone; at = text.find('\n', at + 1))
            ends_.push_back(at);
    }

    /// 1-based; of a place in the text.
    int Of(const char* place) const
    {
        const auto offset = static_cast<std::size_t>(place - text_.data());
        return static_cast<int>(std::ranges::lower_bound(ends_, offset) - ends_.begin()) + 1;
    }

  private:
    std::string_view text_;
    std::vector<std::size_t> ends_;
};

} // namespace kiv
