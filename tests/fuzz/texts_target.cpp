// Conversions of standard input: a line of options, then the text.
#include "cli/commands.h"
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"

#include <algorithm>

namespace {

using namespace kiv::fuzz;

/// The command of a line: its words, cut at tabs, that are options of it: "--poetry-p",
/// "--mode=js", "--prefix=x".
Command TextCommand(const std::string& line)
{
    constexpr std::string_view kFlags[] = {"--links-list", "--single-spaced", "--poetry-p",
                                           "--poetry-br", "--keep-smart-quotes"};
    Command command{"convert", {}};
    const kiv::Choices modes = kiv::ConvertModes();
    for (const std::string& word : Parts(line, '\t')) {
        const std::size_t end = std::min(word.find('='), word.size());
        const std::string name = word.substr(0, end);
        const std::string value = word.substr(std::min(end + 1, word.size()));
        const bool is_mode =
            name == "--mode" && std::find(modes.begin(), modes.end(), value) != modes.end();
        if (is_mode || name == "--prefix" ||
            std::find(std::begin(kFlags), std::end(kFlags), word) != std::end(kFlags))
            command.given.emplace_back(name, value);
    }
    return command;
}

} // namespace

void kiv::fuzz::FuzzTexts(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = TextOf(data, size);
    const std::size_t end = std::min(text.find(kBetweenParts), text.size());
    Desk desk;
    desk.input = text.substr(std::min(end + 1, text.size()));
    const Command command = TextCommand(std::string(text.substr(0, end)));
    const Report report = desk.Call(command);
    Expect(desk.Call(command).result == report.result, "the second run has another result");
}
