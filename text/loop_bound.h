// Expansions repeat "while the line contains …". A value may bring its own name back, so each such
// loop has a bound.
#pragma once

#include <cstddef>

namespace kiv {

/// Bounds one expansion loop by the number of marks and the length of the text when it starts. No
/// finite expansion comes near the bound; one without end reaches it soon and with little memory.
class LoopBound {
  public:
    LoopBound(std::size_t marks, std::size_t length)
        : passes_left_(10'000 + marks), longest_(1'000'000 + 100 * length)
    {
    }

    /// To be called after each pass that changed the text, with the text's new length and whether
    /// it still holds a mark. Returns false when the loop has gone past its bound.
    bool Allows(std::size_t length, bool mark_left)
    {
        --passes_left_;
        return length <= longest_ && (passes_left_ > 0 || !mark_left);
    }

  private:
    std::size_t passes_left_;
    std::size_t longest_;
};

} // namespace kiv
