// Whatever the program knows, the manual tells.
#include "cli/call_table.h"
#include "cli/help.h"
#include "shell/commands.h"
#include "tests/manual/manual_text.h"
#include "tests/manual/source_text.h"
#include "tests/support/folders.h"
#include "text/text.h"
#include "text/windows1252.h"
#include "utilities/conversions.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <regex>

namespace {

using namespace kiv::test;
using testing::IsEmpty;
using testing::SizeIs;

using Words = std::vector<std::string>;

const Words kAllFolders = {"builder", "blocks", "shell", "utilities", "platform", "cli", "desktop"};

/// The literals of the builder and the block tags that look like `pattern`, each once.
Words WordsLike(const char* pattern)
{
    const std::regex shape(pattern);
    Words words;
    for (const std::string& code : CodesOf({"builder", "blocks"}))
        for (const std::string& literal : Literals(code))
            if (std::regex_match(literal, shape) &&
                std::find(words.begin(), words.end(), literal) == words.end())
                words.push_back(literal);
    return words;
}

/// The names of a table's rows: what the group of `row` matches in a source.
Words RowNames(const char* source, const char* row)
{
    const std::string code = CodeOf(std::filesystem::path(KIV_ROOT) / source);
    const std::regex shape(row);
    Words names;
    for (std::sregex_iterator at(code.begin(), code.end(), shape), end; at != end; ++at)
        names.push_back((*at)[1]);
    return names;
}

/// The literals in all calls of a function, over all folders.
Words TextsOf(std::string_view function)
{
    Words texts;
    for (const std::string& code : CodesOf(kAllFolders))
        for (std::string& text : LiteralsInCalls(code, function))
            texts.push_back(std::move(text));
    return texts;
}

// The tables of the sources are found as they are, so that a scan that finds nothing cannot pass.
constexpr std::size_t kPageDirectives = 19;
constexpr std::size_t kAtVariables = 32; // "<style>" is no name
constexpr std::size_t kBangs = 6;
constexpr std::size_t kScripts = 9;
constexpr std::size_t kTags = 13;

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
    EXPECT_EQ(LiteralsInCalls(R"cpp(say("a" + f("b)")); say("c"); "d")cpp", "say"),
              (Words{"a", "b)", "c"}));
}

TEST(Mentions, EveryDirectiveIsTold)
{
    Words words = RowNames("builder/page_directives.cpp", R"re(\{"(@[^"]+)", [0-9]+,)re");
    EXPECT_THAT(words, SizeIs(kPageDirectives));
    for (std::string& word : WordsLike("@[A-Z0-9]+ =( )?")) // those that are tested one by one
        words.push_back(std::move(word));
    EXPECT_THAT(Unmentioned(words, CodeSpans("directives")), IsEmpty());
}

TEST(Mentions, EveryWordWithAnAtIsTold)
{
    const Words words = WordsLike("@[A-Za-z][A-Za-z0-9_]*-?");
    EXPECT_GE(words.size(), kAtVariables);
    EXPECT_THAT(Unmentioned(words, CodeSpans()), IsEmpty());
}

TEST(Mentions, EveryAtVariableIsInItsTable)
{
    const Words names = RowNames("builder/at_variables.cpp", R"re(\{"([@<][^"]+)",)re");
    EXPECT_THAT(names, SizeIs(kAtVariables + 1));
    EXPECT_THAT(Unmentioned(names, CodeSpans("at-variables")), IsEmpty());
}

TEST(Mentions, EverySwitchIsTold)
{
    const Words words = WordsLike("@@[A-Za-z]+");
    EXPECT_THAT(words, SizeIs(3));
    EXPECT_THAT(Unmentioned(words, CodeSpans("page-list")), IsEmpty());
}

TEST(Mentions, EveryBangIsTold)
{
    Words names;
    for (const std::string& word : WordsLike(R"(!![A-Za-z]+\[)"))
        if (const std::string lower = kiv::LowerCase(word);
            std::find(names.begin(), names.end(), lower) == names.end())
            names.push_back(lower);
    EXPECT_THAT(names, SizeIs(kBangs));
    EXPECT_THAT(Unmentioned(names, CodeSpans("bangs")), IsEmpty());
}

TEST(Mentions, EveryServerScriptLineIsTold)
{
    const Words words = WordsLike("@[A-Z]+:");
    EXPECT_THAT(words, SizeIs(kScripts));
    EXPECT_THAT(Unmentioned(words, CodeSpans("scripts")), IsEmpty());
}

TEST(Mentions, EveryBlockTagIsTold)
{
    Words words = WordsLike("<zu[a-z]+[0-9]?>");
    EXPECT_GE(words.size(), kTags);
    EXPECT_THAT(Unmentioned(words, CodeSpans()), IsEmpty());
}

TEST(Mentions, EveryPlaceForAListIsTold)
{
    const Words words = WordsLike("<!--.*HERE-->");
    EXPECT_THAT(words, SizeIs(4));
    EXPECT_THAT(Unmentioned(words, CodeSpans()), IsEmpty());
}

TEST(Mentions, EveryMessageIsTold)
{
    Words texts;
    for (const char* const function : {"reportmsg", "reportmsgf", "ShowBuildMessage"})
        for (std::string& text : TextsOf(function))
            texts.push_back(std::move(text));
    for (const std::string& text : TextsOf("bigoops"))
        texts.push_back("BIG OOPS! " + text);
    EXPECT_GE(texts.size(), 35U);
    EXPECT_THAT(Untold(texts, CodeSpans("messages")), IsEmpty());
}

TEST(Mentions, EveryFatalErrorIsTold)
{
    Words texts = TextsOf("RunError");
    const std::regex braced(R"re(\{ErrorKind::[a-z_]+, "([^"\\]*)")re");
    for (const std::string& code : CodesOf(kAllFolders))
        for (std::sregex_iterator at(code.begin(), code.end(), braced), end; at != end; ++at)
            texts.push_back((*at)[1]);
    EXPECT_GE(texts.size(), 30U);
    EXPECT_THAT(Untold(texts, CodeSpans("messages")), IsEmpty());
}

TEST(Mentions, EveryFileOfTheProgramIsTold)
{
    const std::regex name(R"((.*\\)?([A-Za-z_0-9$-]+\.(txt|ini|bat|exe)))");
    Words names;
    for (const std::string& code : CodesOf({"builder", "shell", "utilities", "blocks"}))
        for (const std::string& literal : Literals(code)) {
            std::smatch match;
            if (std::regex_match(literal, match, name))
                names.push_back(match[2]);
        }
    EXPECT_GE(names.size(), 15U);
    Words spans = CodeSpans();
    for (std::string& span : spans)
        span.erase(0, span.rfind('\\') + 1);
    EXPECT_THAT(Unmentioned(names, spans), IsEmpty());
}

TEST(Mentions, EveryAddressIsTold)
{
    const Words names = RowNames("shell/list_files.cpp", R"re(\{"([^"]+)", &Addresses::)re");
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

TEST(Mentions, EveryFieldAndButtonOfTheOtherWindowsIsTold)
{
    // A control's words are its object name, its caption and its tip.
    const std::regex words(R"re(\{"\w+",\s*"([^"\\]+)",\s*")re");
    Words captions;
    for (const std::string& code : CodesOf({"desktop"}))
        for (std::sregex_iterator at(code.begin(), code.end(), words), end; at != end; ++at)
            captions.push_back((*at)[1]);
    EXPECT_GE(captions.size(), 30U);
    EXPECT_THAT(Unmentioned(captions, CodeSpans()), IsEmpty());
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
