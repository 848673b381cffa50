// Arguments of inline constructs ("!!pop[a|b]", "??1[a|b]") and of directives ("@KILLRECORD:a|b").
#pragma once

#include "builder/build_messages.h"
#include "builder/trace.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The warning of a use without its "]"; what is taken for its fields follows.
inline constexpr std::string_view kNoBracketWarning = "Missing closed bracket: ";

/// One use of a construct in a line, from its mark up to its "]".
struct BracketUse {
    std::string_view before;    // what stands before it in the line
    std::string_view rest;      // the line from the mark on
    std::size_t size = 0;       // in characters, with mark and "]"
    std::string_view name;      // of the construct, for errors: "!!pop", "??1"
    std::string_view arguments; // between "[" and "]"
    bool is_closed = true;

    std::string_view Text() const { return rest.substr(0, size); }
    std::string Line() const { return std::string(before).append(rest); }
    std::size_t LineSize() const { return before.size() + rest.size(); }
};

/// What an expander makes of one use.
struct Expansion {
    std::string text;
    bool replaces_line = false; // the whole line, not the use alone
    std::string told = {};      // for the trace: what was done
    SourceSpan from = {};       // for the trace: the definition used
};

/// Cuts the use of `name` with which `rest` begins, the line being `before` and `rest`. Whatever
/// character stands behind the name counts as the bracket. A missing "]" is reported and taken to
/// stand at the line's end, and `is_closed` is false then. The views are those that were given.
BracketUse CutBracketUse(std::string_view before, std::string_view rest, std::string_view name,
                         BuildMessages& messages);

/// Arguments cut at each "|", numbered from 1. An empty text has no field at all.
class Fields {
  public:
    /// `owner` says in an error whose arguments these are, such as "!!pop". It must outlive
    /// the object.
    Fields(std::string_view arguments, std::string_view owner);
    explicit Fields(const BracketUse& use) : Fields(use.arguments, use.name) {}

    std::size_t Count() const { return fields_.size(); }
    std::string_view Owner() const { return owner_; }

    /// Field `n`; throws `subscript` when it is missing.
    std::string_view operator[](std::size_t n) const;

    /// Puts `value`, which must outlive the fields, in the place of each empty field.
    void FillEmpty(std::string_view value);

  private:
    std::vector<std::string_view> fields_;
    std::string_view owner_;
};

} // namespace kiv
