#include "text/changed_part.h"

#include <gtest/gtest.h>

#include <vector>

namespace kiv {
namespace {

struct ChangeRow {
    std::string_view before, after;
    std::size_t from, taken, put;
};

TEST(ChangedPart, IsWhatCommonEndsLeave)
{
    const std::vector<ChangeRow> rows = {
        {"<b>@TITLE</b>", "<b>Us</b>", 3, 6, 2},
        {"same", "same", 4, 0, 0},
        {"", "", 0, 0, 0},
        {"", "new", 0, 0, 3},
        {"=2=Back", "Back", 0, 3, 0},
        {"aa", "a", 1, 1, 0}, // no character counts at both ends
        {"a", "aa", 1, 0, 1},
        {"ab", "aXbXb", 1, 0, 3}, // the last "b" is the one of before
        {"one", "two", 0, 3, 3},
    };
    for (const ChangeRow& row : rows) {
        const ChangedPart part = ChangeBetween(row.before, row.after);
        EXPECT_EQ(part.from, row.from) << row.before << " " << row.after;
        EXPECT_EQ(part.taken, row.taken) << row.before << " " << row.after;
        EXPECT_EQ(part.put, row.put) << row.before << " " << row.after;
    }
}

} // namespace
} // namespace kiv
