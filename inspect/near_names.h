// The file that was most likely meant by a name that none has.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kiv {

/// What kinds of files may take each other's place.
enum class NameKind { same_extension, page, picture };

/// The name that was most likely meant: at most a third of the letters before its extension differ,
/// and the extension is the same, or one of the same kind, or was left out; "" when none is near. A
/// name that begins with "_" or "." is meant by another such name alone.
std::string_view NearestFileName(std::string_view name, std::span<const std::string> names,
                                 NameKind kind);

} // namespace kiv
