// A source in another encoding.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

enum class Encoding { windows1252, utf8 };

/// "Windows-1252" and "UTF-8".
std::string_view NameOf(Encoding encoding);

/// What a source is.
struct SourceKind {
    bool names_files = false; // lines of a page list: "@FILE =", "++name"
    bool is_template = false; // a "+name" at the beginning of a line is one, too
};

struct EncodedText {
    std::string bytes;            // as they are to be; those that were given where nothing changes
    std::size_t references = 0;   // characters that the encoding lacks and that became references
    bool lost_mark = false;       // a byte order mark was taken away
    std::size_t declarations = 0; // of the character set that were changed
    bool declares = false;        // a character set, changed or not
    std::vector<int> kept_lines;  // 1-based: they name files beyond ASCII and stay as they are
    std::string fault;            // why it is left alone, without its name; "": it is not
    int fault_line = 0;           // 1-based; 0: the whole file
};

/// The text of a source in another encoding, with its declarations of the character set. A text
/// that is in it already, or has no character beyond ASCII, changes in mark and declarations
/// alone. One that cannot be told, or is no UTF-8 on its way to Windows-1252, stays as it is.
EncodedText Encoded(std::string_view bytes, Encoding to, SourceKind kind);

/// Whether a line names a file or a folder, in whose name each byte counts.
bool NamesFile(std::string_view line, SourceKind kind);

} // namespace kiv
