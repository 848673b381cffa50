// The commands that need no site: conversions, dimensions, the quick reference.
#include "cli/call_definitions.h"
#include "platform/run_error.h"
#include "shell/help_text.h"
#include "shell/utilities.h"
#include "text/windows1252.h"
#include "utilities/dimensions.h"
#include "utilities/text_conversions.h"

#include <algorithm>
#include <array>
#include <istream>
#include <memory>

namespace kiv {

namespace {

constexpr std::string_view kCloseParagraphs = "ptop";

struct ConvertOptions {
    std::string mode;
    ConversionBoxes boxes;
    std::string prefix;
};

bool IsMode(std::string_view mode)
{
    const std::span<const ConversionMode> modes = ConversionModes();
    return mode == kCloseParagraphs ||
           std::any_of(modes.begin(), modes.end(),
                       [&](const ConversionMode& row) { return row.mode == mode; });
}

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

void RunConvert(CallDesk& desk, const ConvertOptions& options)
{
    const std::string text = FromUtf8(ReadAll(desk.in));
    if (options.mode == kCloseParagraphs) {
        desk.report.result = ptop(text);
        return;
    }
    ConversionWindow window;
    SetMode(window, options.mode);
    window.boxes = options.boxes;
    window.text_field = FromUtf8(options.prefix);
    // A text that is refused with a message has no result.
    desk.report.result = ConvertText(desk.workspace, window, text).value_or("");
}

void AddConvert(CLI::App& app, Call& call)
{
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* const command = AddCommand(app, "convert", [&call, options] {
        if (!IsMode(options->mode))
            throw CLI::ValidationError("there is no mode " + options->mode);
        call.set_up = SetUp::none;
        call.run = [options](CallDesk& desk) { RunConvert(desk, *options); };
    });
    AddValue(*command, "--mode", options->mode, "MODE", "The conversion (default: e-mail to HTML)");
    AddSwitch(*command, "--links-list", options->boxes.links_list,
              "No paragraph tags, for a list of links");
    AddSwitch(*command, "--single-spaced", options->boxes.single_spaced,
              "Each line is a paragraph");
    AddSwitch(*command, "--poetry-p", options->boxes.poetry_p,
              "Lines end in <br>, stanzas are paragraphs");
    AddSwitch(*command, "--poetry-br", options->boxes.poetry_br,
              "Lines end in <br>, stanzas in <br><br>");
    AddSwitch(*command, "--keep-smart-quotes", options->boxes.keep_smart_quotes,
              "cleanquotes leaves curly quotes as entities");
    AddValue(*command, "--prefix", options->prefix, "TEXT",
             "What tabtopipe puts in front of each row");
}

void RunDimensions(CallDesk& desk, const std::array<std::string, 4>& values)
{
    Dimensions fields{FromUtf8(values[0]), FromUtf8(values[1]), FromUtf8(values[2]),
                      FromUtf8(values[3])};
    Calculate(fields);
    desk.report.result = fields.new_width + " " + fields.new_height;
}

void AddDimensions(CLI::App& app, Call& call)
{
    const auto values = std::make_shared<std::array<std::string, 4>>();
    CLI::App* const command = AddCommand(app, "dimensions", [&call, values] {
        call.set_up = SetUp::none;
        call.makes_drive_c = false;
        call.run = [values](CallDesk& desk) { RunDimensions(desk, *values); };
    });
    AddArgument(*command, "START_WIDTH", (*values)[0], "The picture's width")->required();
    AddArgument(*command, "START_HEIGHT", (*values)[1], "The picture's height")->required();
    AddArgument(*command, "NEW_WIDTH", (*values)[2], "The new width, or empty")->required();
    AddArgument(*command, "NEW_HEIGHT", (*values)[3], "The new height, or empty")->required();
}

void AddReference(CLI::App& app, Call& call)
{
    const auto number = std::make_shared<std::string>();
    CLI::App* const command = AddCommand(app, "reference", [&call, number] {
        const std::span<const HelpSection> sections = HelpSections();
        const bool known = number->size() == 1 && (*number)[0] >= '1' && (*number)[0] <= '4';
        if (!known)
            throw CLI::ValidationError("SECTION is 1, 2, 3 or 4, not " + *number);
        const HelpSection& section = sections[static_cast<std::size_t>((*number)[0] - '1')];
        call.set_up = SetUp::none;
        call.makes_drive_c = false;
        call.run = [&section](CallDesk& desk) { desk.report.result = section.text(); };
    });
    AddArgument(*command, "SECTION", *number, "1 to 4")->required();
}

} // namespace

void AddTextCommands(CLI::App& app, Call& call)
{
    AddConvert(app, call);
    AddDimensions(app, call);
    AddReference(app, call);
}

} // namespace kiv
