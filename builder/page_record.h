// What the page list says of a page, and the variables that it defines.
#pragma once

#include "platform/fixed_table.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

struct PageRecord {
    std::string file;  // output file name with extension
    std::string title; // from "@TITLE =" or "@CROSS ="
    std::string var1;
    std::string var2;
    std::string mode; // output mode, or ">" / ">>" and a redirect target
    std::string id;
    std::string group;
    std::string keywords;
    std::string description;
    bool noindex = false;
};

/// The seven families of numbered variables, in the order in which definition lines are tested.
enum class Family { at, page_ref, percent, bang, wrapper, group_ref, dollar };

/// The two characters that lead in a definition and a use of each family.
inline constexpr std::array<std::string_view, 7> kFamilyMark = {"@@", "??", "%%", "!!",
                                                                "[[", "?!", "$$"};

/// The mark of a use: a family's lead-in and a digit from 0 to 9, such as "@@1".
struct NumberedMark {
    std::array<char, 3> text;

    NumberedMark(Family family, int digit)
        : text{kFamilyMark[static_cast<std::size_t>(family)][0],
               kFamilyMark[static_cast<std::size_t>(family)][1], static_cast<char>('0' + digit)}
    {
    }
    std::string_view View() const { return {text.data(), text.size()}; }
};

/// Slots 0 to 9 of one family.
using VariableSlots = FixedTable<std::string, 0, 9>;

class NumberedVariables {
  public:
    VariableSlots& operator[](Family family) { return slots_[static_cast<std::size_t>(family)]; }
    const VariableSlots& operator[](Family family) const
    {
        return slots_[static_cast<std::size_t>(family)];
    }

  private:
    static VariableSlots Slots()
    {
        return VariableSlots("numbered variable slot",
                             "Definitions are numbered from 1 to 9: take another number.");
    }
    std::array<VariableSlots, 7> slots_ = {Slots(), Slots(), Slots(), Slots(),
                                           Slots(), Slots(), Slots()};
};

} // namespace kiv
