// Arguments of inline constructs ("!!pop[a|b]", "??1[a|b]") and of directives ("@KILLRECORD:a|b").
#pragma once

#include "builder/build_messages.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A construct in a line: what stands before it, its arguments, and what follows its "]".
struct BracketUse {
    std::string_view prefix;
    std::string_view arguments;
    std::string_view after;
    bool closed = true;
};

/// Cuts `line` at the construct that begins at `position` (0-based) and takes `size` characters
/// before its arguments. A missing "]" is reported and taken to stand at the line's end; `closed`
/// is false then.
BracketUse CutBracketUse(std::string_view line, std::size_t position, std::size_t size,
                         BuildMessages& messages);

/// Puts `text` in the place of a construct that was cut from this line. Returns the first character
/// (0-based) that may be another one now; npos when the line is as it was.
std::size_t ReplaceUse(std::string& line, const BracketUse& use, std::string_view text);

/// Arguments cut at each "|", numbered from 1. An empty text has no field at all.
class Fields {
  public:
    /// `owner` says in an error whose arguments these are, such as "!!pop".
    Fields(std::string_view arguments, std::string_view owner);

    std::size_t Count() const { return fields_.size(); }
    const std::string& Owner() const { return owner_; }

    /// Field `n`; throws `subscript` when it is missing.
    std::string_view operator[](std::size_t n) const;

    /// Puts `value`, which must outlive the fields, in the place of each empty field.
    void FillEmpty(std::string_view value);

  private:
    std::vector<std::string_view> fields_;
    std::string owner_;
};

} // namespace kiv
