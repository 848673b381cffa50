// What the conversion window does: its modes, its check boxes, the run from clipboard to clipboard.
#pragma once

#include "platform/machine.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kiv {

struct ConversionBoxes {
    bool links_list = false;
    bool single_spaced = false;
    bool poetry_p = false;
    bool keep_smart_quotes = false; // the one box that "cleanquotes" reads; the default does not
    bool poetry_br = false;
};

/// A check box as the user sees it. The captions are spelled so.
struct ConversionBox {
    std::string_view caption;
    bool ConversionBoxes::*box;
};
inline constexpr std::array<ConversionBox, 5> kConversionBoxes = {{
    {"No <p> (links list)", &ConversionBoxes::links_list},
    {"Single spaced", &ConversionBoxes::single_spaced},
    {"Poetry (br &&& p)", &ConversionBoxes::poetry_p},
    {"keep smart qutoes", &ConversionBoxes::keep_smart_quotes},
    {"Poetry (br &&& br-br)", &ConversionBoxes::poetry_br},
}};

struct ConversionRun;

/// A mode and the title that the window shows for it.
struct ConversionMode {
    std::string_view mode; // "" is the default conversion
    std::string_view title;
    /// Gives the converted text, or nothing when it was refused with a message.
    std::optional<std::string> (*convert)(const ConversionRun& run, std::string_view text);
};

/// All modes of the window, the default first. "<p>...</p>" is a command of its own, `ptop`.
std::span<const ConversionMode> ConversionModes();

/// What the conversion window holds.
struct ConversionWindow {
    std::string mode;
    std::string caption;
    std::string label;
    ConversionBoxes boxes;
    std::string text_field; // what "tabtopipe" puts in front of each row
};

/// Stores the mode, shows its title as caption and label, and clears all boxes.
void SetMode(ConversionWindow& window, std::string_view mode);

/// Converts `text` as the window's mode, boxes and text field say. `recipient` is the address in
/// the script of "getnames". Nothing when the text was refused with a message. Some modes leave the
/// text in "c:\$$$x.txt". Throws RunError: `invalid_argument` for a form field name without end,
/// `subscript` for a news line with too few fields.
std::optional<std::string> Convert(Machine& machine, const ConversionWindow& window,
                                   std::string_view recipient, std::string_view text);

/// The button "Text in Clipboard. Do It!": converts the clipboard's text in place, then resets the
/// window. A refused text stays in the clipboard.
void DoConversion(Machine& machine, ConversionWindow& window, std::string_view recipient);

} // namespace kiv
