// The character-to-entity table.
#pragma once

#include <span>
#include <string_view>

namespace kiv {

struct EntityRow {
    std::string_view find; // Windows-1252
    std::string_view replacement;
};

/// The 97 rows of the table, in the order in which they are applied.
std::span<const EntityRow> CharEntityTable();

} // namespace kiv
