#pragma once

#include <string_view>

namespace kiv {

/// Where a block reads its further lines from: the file that holds its start tag.
class LineSource {
  public:
    LineSource() = default;
    LineSource(const LineSource&) = delete;
    LineSource& operator=(const LineSource&) = delete;
    virtual ~LineSource() = default;

    /// The next line, without its line end. Throws RunError: `end-of-file` past the last line,
    /// `file` when the file is closed. The text stays valid until the build's sources are dropped.
    virtual std::string_view Next() = 0;
};

} // namespace kiv
