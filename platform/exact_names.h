// Names of files in exact form: text that stands for one native name only. In the text of a listing
// "&#26085;" may be a character that the code page lacks or these eight characters, and an accent
// may be UTF-8 or a stray byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// A reference of an exact form: "&#26085;" for a character that the code page lacks or half of
/// one, "&#38;" for the "&" of what would be a reference, "&#1114345;" for the stray byte E9.
struct Reference {
    char32_t point = 0;
    std::size_t size = 0; // how long it is, "&#" and ";" too
};

/// The reference that begins at `at` (0-based), if one does.
std::optional<Reference> ReferenceAt(std::string_view exact, std::size_t at);

/// A native name (UTF-8, as far as it is valid) in exact form.
std::string ExactName(std::string_view native);

/// The native name that an exact form stands for.
std::string NativeName(std::string_view exact);

/// The name as text, where a character that the code page lacks stands between `before` and
/// `after` by its number.
std::string TextOfName(std::string_view exact, std::string_view before = "&#",
                       std::string_view after = ";");

/// The exact form of what a file is called when it is renamed to `text`: characters that the code
/// page lacks stay what they are.
std::string ExactNewName(std::string_view text, std::string_view old_exact);

/// Half of a character, as names on Windows may have it.
inline bool IsHalf(char32_t point)
{
    return point >= 0xD800 && point <= 0xDFFF;
}

} // namespace kiv
