// A table with fixed bounds. The bounds belong to the format; the store grows as it is used.
#pragma once

#include "platform/run_error.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace kiv {

/// Entries `Low` to `High`, each empty (`T{}`) until it is written. An index outside throws
/// `subscript`.
template <typename T, int Low, int High>
class FixedTable {
  public:
    /// `name` says in an error which table was left, for instance "source line", `what_to_do` what
    /// its user can do then.
    explicit FixedTable(const char* name, const char* what_to_do = "")
        : name_(name), what_to_do_(what_to_do)
    {
    }

    const T& operator[](int index) const
    {
        static const T kEmpty{};
        const std::size_t slot = Slot(index);
        return slot < entries_.size() ? entries_[slot] : kEmpty;
    }

    T& operator[](int index)
    {
        const std::size_t slot = Slot(index);
        if (slot >= entries_.size()) [[unlikely]]
            GrowTo(slot);
        return entries_[slot];
    }

    /// Writes an entry. A table that is filled in order has none made empty first.
    void Set(int index, const T& value)
    {
        if (Slot(index) == entries_.size())
            entries_.push_back(value);
        else
            (*this)[index] = value;
    }

    /// Writes entries from `index` on. They are not this table's own.
    void SetRow(int index, std::span<const T> values)
    {
        if (values.empty())
            return;
        Slot(index + static_cast<int>(values.size()) - 1); // refuses before anything is written
        if (Slot(index) == entries_.size())
            entries_.insert(entries_.end(), values.begin(), values.end());
        else
            for (const T& value : values)
                Set(index++, value);
    }

    /// The entries from `first` to `last`, which were written.
    std::span<const T> Row(int first, int last) const
    {
        const std::size_t end = static_cast<std::size_t>(last - Low) + 1;
        return std::span(entries_).subspan(Slot(first), end - Slot(first));
    }

    /// The entries behind `index` that were written, or made room for by others behind them.
    std::span<const T> Behind(int index) const
    {
        const std::size_t first = Slot(index) + 1;
        return std::span(entries_).subspan(std::min(first, entries_.size()));
    }

    /// Throws what any use of an entry outside the bounds throws.
    void RefuseOutside(int index) const { Slot(index); }

    /// How many entries there are, from the lowest on: those that were written, or made room for.
    std::size_t Count() const { return entries_.size(); }
    std::span<T> Entries() { return entries_; }

    /// Makes room for `count` entries, so that filling them in order moves nothing about.
    void Reserve(std::size_t count) { entries_.reserve(count); }

    /// Makes every entry empty again and keeps the store.
    void Clear() { entries_.clear(); }

  private:
    std::size_t Slot(int index) const
    {
        if (index < Low || index > High)
            Refuse(index);
        return static_cast<std::size_t>(index - Low);
    }

    /// Apart from what only looks. Most tables are filled in order.
    void GrowTo(std::size_t slot)
    {
        if (slot == entries_.size())
            entries_.emplace_back();
        else
            entries_.resize(slot + 1);
    }

    /// Apart from Slot, which is called for every line and so must be short.
    [[noreturn]] void Refuse(int index) const
    {
        throw RunError(ErrorKind::subscript,
                       std::string(name_) + " " + std::to_string(index) + " is outside " +
                           std::to_string(Low) + " to " + std::to_string(High),
                       {}, what_to_do_);
    }

    const char* name_;
    const char* what_to_do_;
    std::vector<T> entries_;
};

} // namespace kiv
