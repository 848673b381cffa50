// At-variables: "@TITLE", "@PREV" and their kin.
#pragma once

#include "builder/merge_steps.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

struct BuildState;

/// The names of all at-variables, and "<style>", which is replaced as they are.
std::vector<std::string_view> AtVariableNames();

/// The step that replaces every at-variable of the current page, row by row in the format's order.
/// A value is searched by the rows after its own. "@PREVNO" and "@NEXTNO" cut the folders off the
/// neighbour's record for good. Returns whether there was one.
bool ReplaceAtVariables(MergedLine& line);

/// A line that is written on many pages and of which at-variables are all that changes, cut at
/// their names once. On a page their values are put between the pieces.
class CutLine {
  public:
    /// An empty one.
    CutLine() = default;
    /// Cuts a line. The result is empty where another step of the merge may act on the line, and
    /// where a value could make a mark together with what stands beside it.
    CutLine(std::string_view line, const BuildState& state);

    bool IsEmpty() const { return text_.empty(); }
    /// The line that is the same on every page; "" where it is not.
    std::string_view Fixed() const { return names_.empty() ? text_ : std::string_view(); }
    /// Puts the line at the end of `output`, as it is on the current page. Returns false, and puts
    /// nothing there, where a value is long or holds a character that may begin a mark: the merge
    /// is for these. Not for an empty one.
    bool Write(Build& build, std::string& store, std::string& output) const;

  private:
    bool Cut(std::string_view line);
    bool AddPiece(std::string_view text);

    struct Name {
        std::size_t at;  // where in the text it stood
        std::size_t row; // of the table of names
    };
    std::string text_; // without the names
    std::vector<Name> names_;
};

} // namespace kiv
