// Expansions repeat "while the line contains …". A value may bring its own name back, and values of
// values multiply, so what is done to one line has a bound.
#pragma once

#include <cstddef>

namespace kiv {

/// How long a line may become of which `length` characters stand in the sources.
constexpr std::size_t LongestLine(std::size_t length)
{
    return 1'000'000 + 100 * length;
}

/// Bounds all that is expanded in one line, however many loops take part in it: their passes, the
/// line's length, and the work. Work is counted in characters that are moved from one place to
/// another; what costs more counts several times. No finite expansion of a real page comes near a
/// bound; one without end reaches it soon and with little memory.
class LineBound {
  public:
    explicit LineBound(std::size_t length) { AddSource(length); }

    /// The line uses a text of `length` characters that stands in the sources, or is one.
    void AddSource(std::size_t length)
    {
        length_ += length;
        work_left_ += 3000 * static_cast<long long>(length);
    }

    /// A loop begins on a line that holds `marks` marks.
    void AddMarks(std::size_t marks) { passes_left_ += static_cast<long long>(marks); }

    /// To be called after each pass that changed the text, with the text's new length and whether
    /// it still holds a mark. Returns false when the line has gone past its bound.
    bool Allows(std::size_t length, bool mark_left)
    {
        --passes_left_;
        return Spend(kPass) && length <= Longest() && (passes_left_ > 0 || !mark_left);
    }

    /// Counts work. Returns false when there was too much.
    bool Spend(std::size_t characters)
    {
        work_left_ -= static_cast<long long>(characters);
        return work_left_ >= 0;
    }

    /// How long the line may become.
    std::size_t Longest() const { return LongestLine(length_); }

  private:
    static constexpr std::size_t kPass = 4000; // what a pass costs that moves next to nothing

    long long passes_left_ = 10'000;
    std::size_t length_ = 0; // of the line and the texts that it uses
    long long work_left_ = 2'500'000'000;
};

} // namespace kiv
