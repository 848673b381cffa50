// Names that were seen before.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace kiv {

/// A set that only grows, in one piece: millions of names cost little more than the look at each.
class SeenNames {
  public:
    bool IsEmpty() const { return count_ == 0; }

    /// False when the name was there. What it refers to outlives the set.
    bool Add(std::string_view name)
    {
        if (2 * (count_ + 1) > slots_.size())
            Grow();
        const Slot added{std::hash<std::string_view>()(name) | 1U, name};
        Slot& slot = SlotFor(added);
        if (slot.mark != 0)
            return false;
        slot = added;
        ++count_;
        return true;
    }

  private:
    struct Slot {
        std::size_t mark = 0; // of the name; 0: there is none
        std::string_view name;
        bool operator==(const Slot&) const = default;
    };

    /// The slot that holds the same, or the one that is free for it. Half of them are free.
    Slot& SlotFor(const Slot& wanted)
    {
        const std::size_t last = slots_.size() - 1; // a power of two, less one
        std::size_t at = (wanted.mark >> 1U) & last;
        while (slots_[at].mark != 0 && slots_[at] != wanted)
            at = (at + 1) & last;
        return slots_[at];
    }

    void Grow()
    {
        constexpr std::size_t kFirst = 64;
        std::vector<Slot> former(std::max(2 * slots_.size(), kFirst));
        former.swap(slots_);
        for (const Slot& slot : former)
            if (slot.mark != 0)
                SlotFor(slot) = slot;
    }

    std::vector<Slot> slots_;
    std::size_t count_ = 0;
};

} // namespace kiv
