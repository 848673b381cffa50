// A source line as it stands below a message: as much of it as can be taken in at a glance.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

inline constexpr std::size_t kQuotedSize = 100;

/// At most `kQuotedSize` characters of a line, with "..." where it goes on. A longer one is cut
/// around the spot that `message` speaks of: what it quotes, or what stands behind its colon. All
/// texts are Windows-1252.
std::string QuotedLine(std::string_view line, std::string_view message);

} // namespace kiv
