#include "platform/command_lines.h"
#include "platform/programs.h"
#include "platform/run_error.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

using testing::ElementsAre;

TEST(CutArguments, FollowsTheWindowsRules)
{
    struct Row {
        std::string_view arguments;
        std::vector<std::string> words;
    };
    const Row rows[] = {
        {"", {}},
        {"  ", {}},
        {"a.txt", {"a.txt"}},
        {" \t a.txt  b.txt ", {"a.txt", "b.txt"}},
        {R"("a b")", {"a b"}},
        {R"(a" "b)", {"a b"}},
        {R"("")", {""}},
        {R"("a b)", {"a b"}}, // never closed
        {R"(a\b)", {R"(a\b)"}},
        {R"(a\\b)", {R"(a\\b)"}},
        {R"(a\"b)", {R"(a"b)"}},           // 1 before a quote: none and the quote
        {R"(a\\"b c")", {R"(a\b c)"}},     // 2: one, and the quote opens
        {R"(a\\\"b c)", {R"(a\"b)", "c"}}, // 3: one and the quote
        {R"("C:\site\\" x)", {R"(C:\site\)", "x"}},
        {R"(a\)", {R"(a\)"}},
        {" *.* /l", {"*.*", "/l"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(CutArguments(row.arguments), row.words) << row.arguments;
}

using Reading = std::pair<std::string, std::size_t>;

std::vector<Reading> Readings(std::string_view line)
{
    std::vector<Reading> readings;
    for (const ProgramReading& reading : ProgramReadings(line))
        readings.emplace_back(reading.program, reading.arguments);
    return readings;
}

TEST(ProgramReadings, TryEachBlankInTurn)
{
    EXPECT_THAT(Readings(R"(C:\a b\c.exe -m)"),
                ElementsAre(Reading(R"(C:\a)", 5), Reading(R"(C:\a b\c.exe)", 13),
                            Reading(R"(C:\a b\c.exe -m)", 15)));
    EXPECT_THAT(Readings("edit  a"), ElementsAre(Reading("edit", 6), Reading("edit  a", 7)));
    EXPECT_THAT(Readings("edit"), ElementsAre(Reading("edit", 4)));
    EXPECT_THAT(Readings("edit "), ElementsAre(Reading("edit", 5)));
    EXPECT_THAT(Readings(""), ElementsAre());
}

TEST(ProgramReadings, AQuotedProgramHasOne)
{
    EXPECT_THAT(Readings(R"("C:\a b\c.exe" -m x)"), ElementsAre(Reading(R"(C:\a b\c.exe)", 15)));
    EXPECT_THAT(Readings(R"("C:\a b\c.exe")"), ElementsAre(Reading(R"(C:\a b\c.exe)", 14)));
    // It knows no rule for backslashes.
    EXPECT_THAT(Readings(R"("C:\a b\" x)"), ElementsAre(Reading(R"(C:\a b\)", 10)));
    EXPECT_THAT(Readings(R"("C:\a b)"), ElementsAre(Reading(R"(C:\a b)", 7))); // never closed
}

TEST(ProgramList, KeepsAndHandsOn)
{
    ProgramList inner;
    ProgramList outer(&inner);
    outer.Start({"edit a.txt"});
    outer.Start({.command = "edit b.txt", .minimised = true});
    EXPECT_THAT(outer.Launched(), ElementsAre("edit a.txt", "edit b.txt"));
    EXPECT_THAT(inner.Launched(), ElementsAre("edit a.txt", "edit b.txt"));
}

TEST(ProgramList, WhatCouldNotBeStartedIsNotListed)
{
    class NoPrograms : public Programs {
      public:
        void Start(const Launch& launch) override
        {
            throw RunError(ErrorKind::file, "cannot start " + launch.Text());
        }
        int Run(const Launch&, std::string_view, const WhileRunning&) override { return 0; }
        bool Finds(std::string_view) override { return false; }
    } none;
    ProgramList list(&none);
    EXPECT_THROW(list.Start({"edit a.txt"}), RunError);
    EXPECT_THAT(list.Launched(), ElementsAre());
}

} // namespace
} // namespace kiv
