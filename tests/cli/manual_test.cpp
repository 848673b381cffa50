// The manual page, the shell's completion, and that the texts fit the definitions.
#include "cli/call_definitions.h"
#include "cli/call_texts.h"
#include "cli/manual.h"
#include "cli_desk.h"

#include <regex>
#include <set>

namespace kiv {
namespace {

using testing::HasSubstr;

class Definitions : public testing::Test {
  protected:
    Definitions() { DefineCalls(app, call, given); }
    CLI::App app;
    Call call;
    GlobalOptions given;
};

TEST_F(Definitions, EverySynopsisHasTheOptionsThatThereAre)
{
    std::size_t commands = 0;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        ++commands;
        const std::string synopsis(TextOf(command->get_name()).synopsis);
        std::set<std::string> written;
        static const std::regex kOption("--[a-z-]+");
        for (std::sregex_iterator hit(synopsis.begin(), synopsis.end(), kOption), end; hit != end;
             ++hit)
            written.insert(hit->str());
        std::set<std::string> defined;
        for (const CLI::Option* option : command->get_options())
            for (const std::string& name : option->get_lnames())
                if (name != "help")
                    defined.insert("--" + name);
        EXPECT_EQ(written, defined) << command->get_name();
    }
    EXPECT_EQ(commands, CommandTexts().size());
}

TEST(Manual, NamesEveryCommandAndOption)
{
    const std::string page = ManualPage();
    for (const CommandText& text : CommandTexts()) {
        std::string name(text.name);
        name = std::regex_replace(name, std::regex("-"), "\\-");
        EXPECT_THAT(page, HasSubstr("\n.SS \"" + name + " "));
    }
    EXPECT_THAT(page, HasSubstr("\\fB\\-\\-drive\\-c\\fR \\fIDIR\\fR"));
    EXPECT_THAT(page, HasSubstr("\n.SH \"EXIT STATUS\"\n"));
    EXPECT_THAT(page, HasSubstr("txt\\eNAME.txt")); // no backslash of the text's own is left
}

TEST(Manual, CompletionKnowsEveryOption)
{
    const std::string script = BashCompletion();
    EXPECT_THAT(script, HasSubstr("--report"));
    EXPECT_THAT(script, HasSubstr("undo-renames) options=\"--help --report\""));
    EXPECT_THAT(script, HasSubstr("ptop rs js getnames cleanquotes newsgrabber tabtopipe"));
}

} // namespace
} // namespace kiv
