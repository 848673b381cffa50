// The quick reference of the help window.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kiv {

/// Builds one section: a heading set off by a line break, and lines.
class HelpText {
  public:
    void addhead(std::string_view text);
    void addline(std::string_view text);
    const std::string& Text() const { return text_; }

  private:
    std::string text_;
};

/// The four sections, in the order of the buttons "at's", "bangs", "Top Matter" and "Misc...".
std::string show1();
std::string show2();
std::string show3();
std::string show4();

/// A button of the help window and the section that it shows.
struct HelpSection {
    std::string_view object_name;
    std::string_view caption;
    std::string_view tip;
    std::string (*text)();
};
std::span<const HelpSection> HelpSections();

} // namespace kiv
