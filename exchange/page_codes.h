// Lines that differ from page to page in what the format has variables for.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
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
    std::string menu_name; // what a menu's entry calls the page; "": menus cannot know it

    std::string& operator[](Code code) { return text[static_cast<std::size_t>(code)]; }
    const std::string& operator[](Code code) const { return text[static_cast<std::size_t>(code)]; }
};

/// How a menu shows an entry: a page reference's two halves, with "!1" for the page's file and "!2"
/// for what the entry says.
struct MenuForm {
    int number = 0;  // of the page reference, 1 to 9
    std::string yes; // on the page itself
    std::string no;  // on the others
};

/// An entry of a menu.
struct MenuEntry {
    std::shared_ptr<const MenuForm> form;
    std::string page;
    std::string says;
};

/// The entry as a page shows it that it leads to, or another.
std::string ShownEntry(const MenuEntry& entry, bool is_on_its_page);

/// A line of text with variables and entries of menus in it.
class CodedLine {
  public:
    CodedLine() = default;
    explicit CodedLine(std::string text) : parts_{{std::move(text), std::nullopt, std::nullopt}} {}

    bool HasCodes() const
    {
        return parts_.size() > 1 || (!parts_.empty() && (parts_[0].code || parts_[0].entry));
    }
    /// The forms of the menu entries that it holds, into `forms`.
    void AddForms(std::vector<const MenuForm*>& forms) const;
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
    void AddCode(Code code) { parts_.push_back({{}, code, std::nullopt}); }
    void AddEntry(MenuEntry entry) { parts_.push_back({{}, std::nullopt, std::move(entry)}); }

  private:
    struct Part {
        std::string text; // of a part that is neither of the others
        std::optional<Code> code;
        std::optional<MenuEntry> entry;
    };
    std::vector<Part> parts_;
};

/// The ways in which a line of a page may be told in variables, the plain one first. Only those are
/// among them that a build gives back.
std::vector<CodedLine> WaysToTell(std::string_view line, const CodeValues& values);

} // namespace kiv
