// Lines that differ from page to page in what the format has variables for.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// What a page has variables for. The order is that of CodeName.
enum class Code : std::uint8_t {
    prev_title,
    next_title,
    title,
    prev,
    next,
    file,
    stem,
    number,
    count,
};
inline constexpr std::size_t kCodes = 9;

/// The variable: "@TITLE".
std::string_view CodeName(Code code);

/// What the variables of a page stand for; "" where that is not for certain.
struct CodeValues {
    std::array<std::string, kCodes> text;

    std::string& operator[](Code code) { return text[static_cast<std::size_t>(code)]; }
    const std::string& operator[](Code code) const { return text[static_cast<std::size_t>(code)]; }
};

/// A line of text with variables in it.
class CodedLine {
  public:
    CodedLine() = default;
    explicit CodedLine(std::string text) : parts_{{std::move(text), std::nullopt}} {}

    bool HasCodes() const { return parts_.size() > 1 || (!parts_.empty() && parts_[0].code); }
    /// The line as it is on a page; nothing when a value is not known there.
    std::optional<std::string> On(const CodeValues& values) const;
    /// The line as a source has it; nothing when a build would make something else of it.
    std::optional<std::string> Source() const;
    /// The text without variables.
    std::string_view Plain() const
    {
        return parts_.empty() ? "" : std::string_view(parts_[0].text);
    }

    void AddText(char c);
    void AddCode(Code code) { parts_.push_back({{}, code}); }

  private:
    struct Part {
        std::string text; // of a part that is no variable
        std::optional<Code> code;
    };
    std::vector<Part> parts_;
};

/// The ways in which a line of a page may be told in variables, the plain one first. Only those are
/// among them that a build gives back.
std::vector<CodedLine> WaysToTell(std::string_view line, const CodeValues& values);

} // namespace kiv
