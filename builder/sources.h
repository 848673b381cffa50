// The texts of a build and where their lines come from.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <utility>

namespace kiv {

/// One line of a source: its text, which Sources keeps, and where it comes from.
struct SourceLine {
    std::string_view text;
    std::string_view file; // absolute drive path, which Sources keeps as well
    int line = 0;          // 1-based
};

/// Keeps file contents, file names and expanded lines for as long as the build state lives.
class Sources {
  public:
    std::string_view Keep(std::string text) { return texts_.emplace_back(std::move(text)); }

    /// `text` with the prefix of its include before it.
    std::string_view Prefixed(std::string_view prefix, std::string_view text)
    {
        return prefix.empty() ? text : Keep(std::string(prefix).append(text));
    }

  private:
    std::deque<std::string> texts_;
};

} // namespace kiv
