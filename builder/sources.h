// The texts of a build and where their lines come from.
#pragma once

#include "builder/line_triggers.h"
#include "platform/file_reader.h"
#include "text/windows1252.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace kiv {

/// One line of a source: its text, which Sources keeps, and where it comes from.
struct SourceLine {
    std::string_view text;
    std::string_view file; // absolute drive path, which Sources keeps as well
    int line = 0;          // 1-based
    Triggers triggers = 0; // of the text: whoever changes that has it looked through again
    int past = 0;          // in the tracer: what was done to it already; 0: nothing, or nobody asks
};

/// Keeps file contents, file names and expanded lines for as long as the build state lives.
class Sources {
  public:
    std::string_view Keep(std::string text) { return texts_.emplace_back(std::move(text)); }
    std::string_view Keep(FileContent content)
    {
        return contents_.emplace_back(std::move(content)).View();
    }

    /// `text` with the prefix of its include before it.
    std::string_view Prefixed(std::string_view prefix, std::string_view text)
    {
        return prefix.empty() ? text : Keep(std::string(prefix).append(text));
    }

    /// Text comes from this file, an absolute drive path.
    void AddFile(std::string_view path)
    {
        if (known_.insert(UpperCase(path)).second)
            files_.emplace_back(path);
    }
    /// The files that text came from, each once, in the order of their opening.
    const std::vector<std::string>& Files() const { return files_; }

  private:
    std::deque<std::string> texts_;
    std::deque<FileContent> contents_;
    std::unordered_set<std::string> known_; // upper-cased
    std::vector<std::string> files_;
};

} // namespace kiv
