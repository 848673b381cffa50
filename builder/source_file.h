// The lines of one source file. LF ends a line, a CR right before it goes with it; a last line
// needs no end.
#pragma once

#include "blocks/line_source.h"
#include "platform/reporter.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// A source file open for reading. Each line read becomes the place of the reporter's warnings.
class SourceFile : public LineSource {
  public:
    /// `bytes` and `name` (absolute drive path) must outlive the file.
    SourceFile(std::string_view bytes, const std::string& name, Reporter& reporter)
        : rest_(bytes), name_(name), reporter_(reporter)
    {
    }

    /// Whether no byte is left. Throws `file` when the file is closed.
    bool AtEnd() const;
    std::string_view Next() override;
    void Close() { open_ = false; }

    /// The number of the line last read, 1-based; 0 before the first.
    int line() const { return line_; }

  private:
    void RequireOpen() const;

    std::string_view rest_;
    const std::string& name_;
    Reporter& reporter_;
    int line_ = 0;
    bool open_ = true;
};

} // namespace kiv
