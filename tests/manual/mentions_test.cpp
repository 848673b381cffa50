// Whatever the program knows, the manual tells.
#include "blocks/dispatcher.h"
#include "builder/at_variables.h"
#include "builder/bang_macros.h"
#include "builder/page_directives.h"
#include "builder/server_scripts.h"
#include "cli/call_table.h"
#include "cli/help.h"
#include "platform/site_files.h"
#include "shell/commands.h"
#include "shell/list_files.h"
#include "tests/manual/manual_text.h"
#include "tests/manual/source_text.h"
#include "tests/support/folders.h"
#include "text/text.h"
#include "utilities/conversions.h"

#include <gmock/gmock.h>

namespace {

using namespace kiv::test;
using testing::IsEmpty;
using testing::SizeIs;

using Words = std::vector<std::string>;

/// The folders that the programs are made of: all that have sources, and are no tests.
Words ProgramFolders()
{
    Words folders;
    for (const auto& folder : std::filesystem::directory_iterator(KIV_ROOT))
        if (std::filesystem::exists(folder.path() / "CMakeLists.txt"))
            folders.push_back(folder.path().filename().string());
    std::erase_if(folders,
                  [](const std::string& name) { return name == "bench" || name == "tests"; });
    return folders;
}

Words WordsOf(const std::vector<std::string_view>& column)
{
    return {column.begin(), column.end()};
}

/// The literals in the brackets that `opening` opens, over all folders: messages stand where they
/// arise, so the sources are searched for them.
Words TextsBehind(std::string_view opening)
{
    static const Words codes = CodesOf(ProgramFolders()); // read once
    Words texts;
    for (const std::string& code : codes)
        for (std::string& text : LiteralsBehind(code, opening))
            texts.push_back(std::move(text));
    return texts;
}

TEST(Mentions, AllOfTheProgramsIsSearched)
{
    EXPECT_THAT(ProgramFolders(),
                testing::IsSupersetOf({"text", "platform", "blocks", "builder", "utilities",
                                       "inspect", "shell", "preview", "cli", "desktop"}));
}

TEST(Mentions, ANameThatTheManualDoesNotHaveIsFound)
{
    const Words spans = {"@TITLE", "!!pop[a|b]", "File name not found"};
    EXPECT_THAT(Unmentioned({"@TITLE", "@title", "!!POP["}, spans), IsEmpty());
    EXPECT_THAT(Unmentioned({"@TITLES", "@TITL", "!!po["}, spans), SizeIs(3));
    EXPECT_THAT(Untold({"\r\nfound", " "}, spans), IsEmpty());
    EXPECT_THAT(Untold({"lost"}, spans), SizeIs(1));
}

TEST(Mentions, ALiteralOfTheSourcesIsFound)
{
    EXPECT_EQ(Literals(R"cpp(a("b\"c" "d", 'x', 1'000, "e"))cpp"), (Words{"b\"cd", "e"}));
    EXPECT_EQ(LiteralsBehind(R"cpp(say("a" + f("b)")); say("c"); "d")cpp", "say("),
              (Words{"a", "b)", "c"}));
}

// The numbers are those of the tables, so that one that lost its rows cannot pass.

TEST(Mentions, EveryDirectiveIsTold)
{
    Words words = WordsOf(kiv::PageDirectiveWords());
    EXPECT_THAT(words, SizeIs(19));
    // Those that are looked for one by one.
    for (const char* const word : {"@FILE =", "@DIR1 =", "@ASP =", "@HTM ="})
        words.emplace_back(word);
    EXPECT_THAT(Unmentioned(words, CodeSpans("directives")), IsEmpty());
}

TEST(Mentions, EveryAtVariableIsInItsTable)
{
    const Words names = WordsOf(kiv::AtVariableNames());
    EXPECT_THAT(names, SizeIs(33)); // "<style>" is one
    EXPECT_THAT(Unmentioned(names, CodeSpans("at-variables")), IsEmpty());
}

TEST(Mentions, EverySwitchIsTold)
{
    EXPECT_THAT(Unmentioned({"@@stop", "@@start", "@@EOY"}, CodeSpans("page-list")), IsEmpty());
}

TEST(Mentions, EveryBangIsTold)
{
    Words names;
    for (const kiv::Bang* const bang : kiv::kBangs)
        names.emplace_back(bang->mark);
    EXPECT_THAT(names, SizeIs(6));
    EXPECT_THAT(Unmentioned(names, CodeSpans("bangs")), IsEmpty());
}

TEST(Mentions, EveryServerScriptLineIsTold)
{
    const Words words = WordsOf(kiv::ServerScriptWords());
    EXPECT_THAT(words, SizeIs(9));
    EXPECT_THAT(Unmentioned(words, CodeSpans("scripts")), IsEmpty());
}

TEST(Mentions, EveryBlockTagIsTold)
{
    const Words words = WordsOf(kiv::BlockTagWords());
    EXPECT_THAT(words, SizeIs(13));
    EXPECT_THAT(Unmentioned(words, CodeSpans()), IsEmpty());
}

TEST(Mentions, EveryPlaceForAListIsTold)
{
    EXPECT_THAT(Unmentioned({"<!--BODY HERE-->", "<!--DROPDOWN HERE-->", "<!--TOC HERE-->",
                             "<!--SITEMAPHERE-->"},
                            CodeSpans()),
                IsEmpty());
}

TEST(Mentions, EveryMessageIsTold)
{
    Words texts;
    for (const char* const opening : {"reportmsg(", "ShowBuildMessage(", "NoteBuildMessage("})
        for (std::string& text : TextsBehind(opening))
            texts.push_back(std::move(text));
    for (const std::string& text : TextsBehind("bigoops("))
        texts.push_back("BIG OOPS! " + text);
    EXPECT_GE(texts.size(), 35U);
    EXPECT_THAT(Untold(texts, CodeSpans("messages")), IsEmpty());
}

TEST(Mentions, EveryFatalErrorIsTold)
{
    Words texts = TextsBehind("RunError(");
    for (const char* const opening : {"{ErrorKind::", "FileReason("})
        for (std::string& text : TextsBehind(opening))
            texts.push_back(std::move(text));
    EXPECT_GE(texts.size(), 30U);
    EXPECT_THAT(Untold(texts, CodeSpans("messages")), IsEmpty());
}

TEST(Mentions, EveryFileOfTheProgramIsTold)
{
    const auto without_folder = [](std::string_view path) {
        return std::string(path.substr(path.rfind('\\') + 1));
    };
    Words names;
    for (const std::string_view file : kiv::kSiteFiles)
        names.push_back(without_folder(file));
    EXPECT_THAT(names, SizeIs(27));
    Words spans;
    for (const std::string& span : CodeSpans())
        spans.push_back(without_folder(span));
    EXPECT_THAT(Unmentioned(names, spans), IsEmpty());
}

TEST(Mentions, EveryAddressIsTold)
{
    const Words names = WordsOf(kiv::AddressNames());
    EXPECT_THAT(names, SizeIs(6));
    EXPECT_THAT(Unmentioned(names, CodeSpans("settings")), IsEmpty());
}

TEST(Mentions, EveryButtonAndMenuEntryIsTold)
{
    Words captions;
    for (const kiv::Command& command : kiv::Commands())
        if (!command.IsSeparator()) {
            captions.emplace_back(command.caption);
            kiv::ReplaceEach(captions.back(), "&&", "&");
        }
    EXPECT_THAT(Unmentioned(captions, CodeSpans("window")), IsEmpty());
}

TEST(Mentions, EveryCommandOfTheCommandLineIsTold)
{
    Words calls;
    for (const kiv::CallRow& row : kiv::Calls())
        calls.push_back(kiv::Synopsis(row));
    EXPECT_THAT(Unmentioned(calls, CodeSpans("commands")), IsEmpty());
}

TEST(Mentions, EveryOptionOfTheCommandLineIsTold)
{
    Words options;
    const auto add = [&](const kiv::OptionRow& option) { options.emplace_back(option.name); };
    std::for_each(kiv::GlobalOptions().begin(), kiv::GlobalOptions().end(), add);
    for (const kiv::CallRow& row : kiv::Calls())
        std::for_each(row.options.begin(), row.options.end(), add);
    EXPECT_GE(options.size(), 20U);
    EXPECT_THAT(Untold(options, CodeSpans("commands")), IsEmpty());
}

TEST(Mentions, EveryConversionIsTold)
{
    Words words;
    for (const kiv::ConversionMode& mode : kiv::ConversionModes()) {
        words.emplace_back(mode.title);
        if (!mode.mode.empty())
            words.emplace_back(mode.mode);
    }
    for (const kiv::ConversionBox& box : kiv::kConversionBoxes)
        words.emplace_back(box.caption);
    EXPECT_THAT(Unmentioned(words, CodeSpans("conversions")), IsEmpty());
}

} // namespace
