// What the page list says of a page, and the variables that it defines.
#pragma once

#include "platform/fixed_table.h"

#include <array>
#include <cstddef>
#include <string>

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
inline constexpr std::array<const char*, 7> kFamilyMark = {"@@", "??", "%%", "!!",
                                                           "[[", "?!", "$$"};

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
    static VariableSlots Slots() { return VariableSlots("numbered variable slot"); }
    std::array<VariableSlots, 7> slots_ = {Slots(), Slots(), Slots(), Slots(),
                                           Slots(), Slots(), Slots()};
};

} // namespace kiv
