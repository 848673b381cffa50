#include "text/nearest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kiv {

namespace {

TEST(EditDistanceTest, CountsLetters)
{
    struct Row {
        std::string_view from;
        std::string_view to;
        std::size_t distance;
    };
    for (const Row& row :
         {Row{"", "", 0}, Row{"", "abc", 3}, Row{"abc", "", 3}, Row{"abc", "abc", 0},
          Row{"FLIE", "FILE", 1}, Row{"FIL", "FILE", 1}, Row{"FILLE", "FILE", 1},
          Row{"FILA", "FILE", 1}, Row{"ab", "ba", 1}, Row{"kitten", "sitting", 3}}) {
        EXPECT_EQ(EditDistance(row.from, row.to), row.distance) << row.from << ' ' << row.to;
        EXPECT_EQ(EditDistance(row.to, row.from), row.distance) << row.to << ' ' << row.from;
        EXPECT_EQ(EditDistance(row.from, row.to, row.distance), row.distance) << row.from;
        if (row.distance > 0) {
            EXPECT_EQ(EditDistance(row.from, row.to, row.distance - 1), row.distance) << row.from;
        }
    }
    EXPECT_EQ(EditDistance("abcdefgh", "stuvwxyz", 2), 3U);
}

TEST(NearestTest, TakesTheNearestWordOrNone)
{
    const std::vector<std::string_view> words = {"visit.htm", "index.htm", "Map.htm"};
    EXPECT_EQ(Nearest("vist.htm", words), "visit.htm");
    EXPECT_EQ(Nearest("MAPP.htm", words), "Map.htm");
    EXPECT_EQ(Nearest("boats.html", words), "");
    EXPECT_EQ(Nearest("", words), "");
    const std::string longest(101, 'a');
    EXPECT_EQ(Nearest(longest, std::vector<std::string_view>{longest}), "");
}

TEST(NearestTest, IsAskedForInOneSentence)
{
    EXPECT_EQ(DidYouMean("visit"), "did you mean \"visit\"?");
    EXPECT_EQ(DidYouMean(""), "");
}

} // namespace

} // namespace kiv
