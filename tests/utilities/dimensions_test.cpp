#include "utilities/dimensions.h"

#include "tests/utilities/utility_desk.h"

namespace kiv {
namespace {

struct SizeRow {
    Dimensions fields;
    std::string new_width, new_height;
};

void Expect(const SizeRow& row)
{
    Dimensions fields = row.fields;
    Calculate(fields);
    const std::string shown = row.fields.start_width + " x " + row.fields.start_height + " to " +
                              row.fields.new_width + " x " + row.fields.new_height;
    EXPECT_EQ(fields.new_width, row.new_width) << shown;
    EXPECT_EQ(fields.new_height, row.new_height) << shown;
    EXPECT_EQ(fields.start_width, row.fields.start_width);
    EXPECT_EQ(fields.start_height, row.fields.start_height);
}

TEST(Dimensions, TheMissingSide)
{
    const SizeRow kRows[] = {
        {{"800", "600", "400", ""}, "400", "300"},
        {{"800", "600", "", "200"}, "266.666666666667", "200"},
        {{"800", "600", "400", "1000"}, "400", "300"}, // the width wins
        {{"800", "600", "0", "300"}, "400", "300"},
        {{"800", "600", "", ""}, "0", ""},
        {{"640px", "480px", "320px wide", ""}, "320px wide", "240"}, // a field read is kept
        {{"800", "600", "-400", ""}, "-400", "-300"},
        {{"3", "1", "1", ""}, "1", "0.333333333333333"},
        {{"800", "0", "400", ""}, "400", "0"},
        {{"0", "600", "", "200"}, "0", "200"},
    };
    for (const SizeRow& row : kRows)
        Expect(row);
}

// Start 1 x 1: the new height is the number that was read from the new width.
std::string ReadAndWritten(const std::string& field)
{
    Dimensions fields{"1", "1", field, ""};
    Calculate(fields);
    return fields.new_height;
}

TEST(Dimensions, NumbersAreReadByTheirHead)
{
    const std::pair<const char*, const char*> kRows[] = {
        {"5", "5"},          {"5.", "5"},      {".5", "0.5"},    {"+7", "7"},
        {"-7.25", "-7.25"},  {"1e3", "1000"},  {"1E+3", "1000"}, {"25e-1", "2.5"},
        {"2e", "2"},         {"2e+", "2"},     {"1d2", "1"},     {"6 40", "6"},
        {" \t 12abc", "12"}, {"1.2.3", "1.2"}, {"007", "7"},     {"1,5", "1"},
        {".5e1", "5"},       {"5.e1", "50"},   {"9-3", "9"},     {"1e2e3", "100"},
    };
    for (const auto& [field, number] : kRows)
        EXPECT_EQ(ReadAndWritten(field), number) << field;
}

TEST(Dimensions, WhatIsNoNumberIsZero)
{
    // The new width reads as 0, so it is the width that is computed.
    for (const char* field : {"", ".", "-", "+", "-.", "e5", "abc", "0x10", "- 5", "+-5", "\n5",
                              "0", "0.0", "-0", "0e5", "1e-400", "0.000001e-330"}) {
        Dimensions fields{"2", "1", field, "3"};
        Calculate(fields);
        EXPECT_EQ(fields.new_width, "6") << field;
    }
}

TEST(Dimensions, NumbersAreWrittenAsPlainDecimals)
{
    const std::pair<const char*, const char*> kRows[] = {
        {"0.1", "0.1"},
        {"1e15", "1000000000000000"},
        {"1e20", "100000000000000000000"},
        {"0.0000001", "0.0000001"},
        {"123456789012345", "123456789012345"},
        {"1234567890123456", "1234567890123460"},
        {"0.1234567890123456", "0.123456789012346"},
        {"2.0000000000000004", "2"},
        {"999999999999999.9", "1000000000000000"}, // carried into another digit
        {"1000000000000.5", "1000000000000.5"},
        {"1000000000000000.5", "1000000000000000"},
        // Exactly halfway between two texts: to the even one.
        {"1000000000000005", "1000000000000000"},
        {"1000000000000015", "1000000000000020"},
        {"1e-7", "0.0000001"},
        {"-1e-3", "-0.001"},
    };
    for (const auto& [field, number] : kRows)
        EXPECT_EQ(ReadAndWritten(field), number) << field;
    Dimensions tiny{"1e300", "1e-300", "1", ""}; // the quotient is no number but 0
    Calculate(tiny);
    EXPECT_EQ(tiny.new_height, "0");
    Dimensions minus{"5", "0", "-3", ""};
    Calculate(minus);
    EXPECT_EQ(minus.new_height, "0"); // no minus zero
}

TEST(Dimensions, Refused)
{
    struct Refusal {
        Dimensions fields;
        std::string kind;
    };
    const Refusal kRows[] = {
        {{"0", "600", "400", ""}, "division"},
        {{"", "600", "400", "5"}, "division"},
        {{"800", "0", "", "200"}, "division"},
        {{"800", "abc", "", "200"}, "division"},
        {{"", "", "", ""}, "division"}, // 0 divided by 0 too
        {{"1", "1e400", "1", ""}, "overflow"},
        {{"1", "1", "1", "1e400"}, "overflow"}, // every field is read
        {{"1", "1", "1", "-1e400"}, "overflow"},
        {{"1", "1e300", "1e300", ""}, "overflow"},
        {{"1e-300", "1e200", "1", ""}, "overflow"},
        {{"1e10", "1e10", "1e300", ""}, "overflow"}, // the product comes first
        {{"1", "1", "0.01e400", ""}, "overflow"},
    };
    for (const Refusal& row : kRows) {
        Dimensions fields = row.fields;
        EXPECT_EQ(KindOf([&] { Calculate(fields); }), row.kind);
        EXPECT_EQ(fields.new_width, row.fields.new_width);
        EXPECT_EQ(fields.new_height, row.fields.new_height);
    }
}

TEST(Dimensions, WordsOfARefusal)
{
    EXPECT_EQ(RefusalText(RunError(ErrorKind::division, "")), "Division by zero");
    EXPECT_EQ(RefusalText(RunError(ErrorKind::overflow, "")), "Overflow");
}

} // namespace
} // namespace kiv
