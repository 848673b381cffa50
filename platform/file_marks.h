// "%f", "%l" and "%%" in the command of an editor: the file, the line in it, and "%" itself.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Which marks stand in a command. "%%f" is no mark: it is "%" and an "f".
struct FileMarks {
    bool file = false;
    bool line = false;

    bool Any() const { return file || line; }
};
FileMarks MarksIn(std::string_view command);

/// `text` with `file` for each "%f", `line` (1-based) for each "%l" and "%" for each "%%"; any
/// other "%" stays. What is put in is not looked at again.
std::string FillMarks(std::string_view text, std::string_view file, int line);

} // namespace kiv
