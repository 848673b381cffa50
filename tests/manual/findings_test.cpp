// Every finding has its place in the manual and its planted mistake among the tests.
#include "docs/manual/generator/prose.h"
#include "inspect/finding_table.h"
#include "tests/cases/case_file.h"
#include "tests/support/folders.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace {

using kiv::FindingRow;
using kiv::test::Case;
using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

using Words = std::vector<std::string>;

/// Those that no small site can give.
constexpr std::string_view kTooLargeForACase[] = {
    "near-bound",  // 950 pages; tests/cli makes them
    "unread-page", // elements 3000 deep; tests/cli makes them
};

bool IsTooLarge(std::string_view name)
{
    return std::ranges::find(kTooLargeForACase, name) != std::end(kTooLargeForACase);
}

/// " error dead-link: ", which stands behind the place of a finding.
std::string Mark(const FindingRow& row)
{
    return kiv::Joined({" ", kiv::SeverityName(row.severity), " ", row.name, ": "});
}

/// The lines of the manual's chapter, without the marks of code.
Words ChapterLines()
{
    std::string chapter =
        kiv::test::ReadBytes(fs::path(KIV_ROOT) / "docs/manual/chapters/check.txt");
    std::erase(chapter, '`');
    Words lines;
    for (std::string_view rest = chapter; !rest.empty();)
        lines.emplace_back(kiv::TakeLine(rest));
    return lines;
}

/// What the chapter lacks of a finding: "row" in the table of all, "heading", "example".
Words Lacking(const FindingRow& row, const Words& chapter)
{
    const std::string in_table =
        kiv::Joined({"| [", row.name, "](check.htm#", kiv::manual::HeadingId(row.name), ") | ",
                     kiv::SeverityName(row.severity), " | ", row.about});
    const auto has = [&](const std::string& line) {
        return std::ranges::find(chapter, line) != chapter.end();
    };
    const auto tells = [&](const std::string& line) { return kiv::Contains(line, Mark(row)); };
    Words lacking;
    if (!has(in_table))
        lacking.emplace_back("row");
    if (!has(kiv::Joined({"## ", row.name})))
        lacking.emplace_back("heading");
    if (!IsTooLarge(row.name) && std::ranges::none_of(chapter, tells))
        lacking.emplace_back("example");
    return lacking;
}

/// All cases of tests/findings.
std::vector<Case> PlantedCases()
{
    std::vector<Case> cases;
    for (const auto& entry : fs::directory_iterator(fs::path(KIV_ROOT) / "tests/findings"))
        if (entry.path().extension() == ".cases")
            for (Case& one : kiv::test::ReadCaseFile(entry.path().string()))
                cases.push_back(std::move(one));
    return cases;
}

/// Whether the case names the finding at the head of its title, gives it, and is mended in the end.
bool IsPlanted(const FindingRow& row, const Case& one)
{
    std::string names(one.title.substr(0, one.title.find(':')));
    std::ranges::replace(names, ',', ' ');
    const auto tells = [&](const std::string& line) { return kiv::Contains(line, Mark(row)); };
    return kiv::Contains(" " + names + " ", kiv::Joined({" ", row.name, " "})) && one.findings &&
           std::ranges::any_of(*one.findings, tells) && !one.mends.empty();
}

const FindingRow kOfNoProgram = {"dead-letter", kiv::Severity::note, "A letter comes back",
                                 nullptr};

TEST(Findings, WhatTheManualLacksIsSeen)
{
    const Words none = {"# All findings"};
    EXPECT_THAT(Lacking(kOfNoProgram, none), ElementsAre("row", "heading", "example"));
    const Words told = {"| [dead-letter](check.htm#dead-letter) | note | A letter comes back",
                        "## dead-letter", "_html.txt:3 note dead-letter: it is back"};
    EXPECT_THAT(Lacking(kOfNoProgram, told), IsEmpty());
    const Words with_another_weight = {
        "| [dead-letter](check.htm#dead-letter) | error | A letter comes back", "## dead-letter",
        "_html.txt:3 error dead-letter: it is back"};
    EXPECT_THAT(Lacking(kOfNoProgram, with_another_weight), ElementsAre("row", "example"));
}

TEST(Findings, ACaseThatDoesNotPlantTheMistakeIsSeen)
{
    Case one;
    one.title = "dead-link, dead-letter: both";
    one.findings = Words{"_html.txt:3 note dead-letter: it is back"};
    one.mends = {{"_html.txt", ""}};
    EXPECT_TRUE(IsPlanted(kOfNoProgram, one));
    Case without_mend = one;
    without_mend.mends.clear();
    EXPECT_FALSE(IsPlanted(kOfNoProgram, without_mend));
    Case of_another = one;
    of_another.title = "dead-letters: many";
    EXPECT_FALSE(IsPlanted(kOfNoProgram, of_another));
    Case without_it = one;
    without_it.findings = Words{};
    EXPECT_FALSE(IsPlanted(kOfNoProgram, without_it));
}

TEST(Findings, EveryOneIsToldInTheManual)
{
    const Words chapter = ChapterLines();
    EXPECT_GE(kiv::FindingRows().size(), 49U);
    for (const FindingRow& row : kiv::FindingRows())
        EXPECT_THAT(Lacking(row, chapter), IsEmpty()) << row.name;
}

TEST(Findings, EveryOneHasAPlantedCase)
{
    const std::vector<Case> cases = PlantedCases();
    for (const FindingRow& row : kiv::FindingRows())
        EXPECT_TRUE(
            IsTooLarge(row.name) ||
            std::ranges::any_of(cases, [&](const Case& one) { return IsPlanted(row, one); }))
            << row.name;
}

} // namespace
