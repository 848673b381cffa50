// The commands that need no site: conversions, dimensions, the quick reference.
#include "cli/commands.h"
#include "cli/report.h"
#include "platform/run_error.h"
#include "shell/help_text.h"
#include "shell/utilities.h"
#include "shell/workspace.h"
#include "text/windows1252.h"
#include "utilities/dimensions.h"
#include "utilities/text_conversions.h"

#include <array>
#include <istream>

namespace kiv {

namespace {

/// The one conversion that the conversion window does not have.
constexpr std::string_view kCloseParagraphs = "ptop";

constexpr std::array<std::string_view, 4> kSections = {"1", "2", "3", "4"};

/// All of standard input. A part of it must not pass for the whole.
std::string ReadAll(std::istream& in)
{
    std::string all;
    std::array<char, 65536> part{};
    while (in.read(part.data(), part.size()) || in.gcount() > 0)
        all.append(part.data(), static_cast<std::size_t>(in.gcount()));
    if (in.bad())
        throw RunError(ErrorKind::file, "cannot read standard input");
    return all;
}

} // namespace

Choices ConvertModes()
{
    Choices modes;
    for (const ConversionMode& row : ConversionModes())
        if (!row.mode.empty())
            modes.push_back(row.mode);
    modes.push_back(kCloseParagraphs);
    return modes;
}

void RunConvert(CallDesk& desk, const GivenValues& given)
{
    const std::string text = FromUtf8(ReadAll(desk.in));
    const std::string mode = given.Native("--mode");
    if (mode == kCloseParagraphs) {
        desk.report.result = ptop(text);
        return;
    }
    ConversionWindow window;
    SetMode(window, mode);
    window.boxes = {.links_list = given.Has("--links-list"),
                    .single_spaced = given.Has("--single-spaced"),
                    .poetry_p = given.Has("--poetry-p"),
                    .keep_smart_quotes = given.Has("--keep-smart-quotes"),
                    .poetry_br = given.Has("--poetry-br")};
    window.text_field = given.Text("--prefix");
    // A text that is refused with a message has no result.
    desk.report.result = ConvertText(desk.workspace, window, text).value_or("");
}

void RunDimensions(CallDesk& desk, const GivenValues& given)
{
    Dimensions fields{given.Text("START_WIDTH"), given.Text("START_HEIGHT"),
                      given.Text("NEW_WIDTH"), given.Text("NEW_HEIGHT")};
    Calculate(fields);
    desk.report.result = fields.new_width + " " + fields.new_height;
}

Choices ReferenceSections()
{
    return {kSections.begin(), kSections.end()};
}

void RunReference(CallDesk& desk, const GivenValues& given)
{
    const std::size_t section = static_cast<std::size_t>(given.Native("SECTION")[0] - '1');
    desk.report.result = HelpSections()[section].text();
}

} // namespace kiv
