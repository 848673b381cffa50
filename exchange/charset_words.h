#pragma once

#include "exchange/encoded_text.h"

#include <cstddef>
#include <string>

namespace kiv {

/// What became of the declarations in a text.
struct ChangedWords {
    std::size_t declarations = 0; // in <meta>, <?xml ?> and @charset, of whatever set
    std::size_t changed = 0;
};

/// Puts "utf-8" for Windows-1252 and its kin (ISO-8859-1, ASCII), or "windows-1252" for UTF-8, in
/// each declaration of a character set. Another set is left alone.
ChangedWords ChangeCharsetWords(std::string& text, Encoding to);

} // namespace kiv
