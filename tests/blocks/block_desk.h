// What a block expander works on, kept where a test can look at it.
#pragma once

#include "blocks/dispatcher.h"
#include "platform/run_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

/// The lines after the start tag. Past the last one it fails as a file does.
class HeldLines : public LineSource {
  public:
    explicit HeldLines(std::vector<std::string> lines) : lines_(std::move(lines)) {}

    std::string_view Next() override
    {
        if (next_ == lines_.size())
            throw RunError(ErrorKind::end_of_file, "no line is left");
        return lines_[next_++];
    }

    std::vector<std::string> Unread() const
    {
        return {lines_.begin() + static_cast<std::ptrdiff_t>(next_), lines_.end()};
    }

  private:
    std::vector<std::string> lines_;
    std::size_t next_ = 0;
};

class RecordingReporter : public Reporter {
  public:
    std::vector<std::string> shown;

  protected:
    void Show(std::string_view text) override { shown.emplace_back(text); }
    void Note(std::string_view, const Place&) override {}
};

/// A machine whose only file is the quiz script. Anything but reading is a fault of the test.
class QuizScriptOnly : public FileReader {
  public:
    bool has_quiz_script = true;
    std::string quiz_script = "function startQuiz() {}\r\n";

    std::string ReadFile(std::string_view path) override
    {
        if (!has_quiz_script || path != "c:\\utils\\quiz.txt")
            throw RunError(ErrorKind::file, "no such file: " + std::string(path));
        return quiz_script;
    }

    bool FileExists(std::string_view) override { throw Unused(); }
    std::string ReadPart(std::string_view, std::uint64_t, std::size_t) override { throw Unused(); }

  private:
    static std::logic_error Unused() { return std::logic_error("not for block expanders"); }
};

/// Expands tags as the page-list reader does.
struct BlockDesk {
    explicit BlockDesk(std::vector<std::string> further_lines = {})
        : lines(std::move(further_lines))
    {
    }

    std::string Expand(std::string line)
    {
        zuloop(line, 1, context);
        return line;
    }

    HeldLines lines;
    QuizScriptOnly files;
    RecordingReporter reporter;
    std::string style_sheet;
    BlockMemory memory;
    BlockContext context{lines, files, reporter, style_sheet, memory};
};

/// The kind of the fatal error that `run` ends in.
template <typename Run>
ErrorKind ErrorOf(Run run)
{
    try {
        run();
    } catch (const RunError& error) {
        EXPECT_FALSE(error.text.empty());
        return error.kind;
    }
    throw std::logic_error("no fatal error");
}

} // namespace kiv
