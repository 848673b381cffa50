// A want of memory that no code can catch.
#include "cli/no_memory.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <vector>

namespace kiv {
namespace {

template <typename Error>
[[noreturn]] void Throw()
{
    throw Error("");
}

template <>
[[noreturn]] void Throw<std::bad_alloc>()
{
    throw std::bad_alloc();
}

/// As a library does that promises too much.
template <typename Error>
void LetNothingOut() noexcept
{
    Throw<Error>();
}

template <typename Error>
void RunInto(const std::vector<const char*>& arguments)
{
    EndWellWithoutMemory(static_cast<int>(arguments.size()), arguments.data());
    LetNothingOut<Error>();
}

TEST(NoMemory, EndsWithTheError)
{
    EXPECT_EXIT(RunInto<std::bad_alloc>({"kiv-cli", "build"}), testing::ExitedWithCode(1),
                "kiv: error: there is not enough memory");
}

TEST(NoMemory, LeavesStandardErrorToThoseWhoWantText)
{
    EXPECT_EXIT(RunInto<std::bad_alloc>({"kiv-cli", "build", "--json"}), testing::ExitedWithCode(1),
                "^$");
}

TEST(NoMemory, AnotherMistakeIsStillACrash)
{
    EXPECT_DEATH(RunInto<std::logic_error>({"kiv-cli", "build"}), "logic_error");
}

} // namespace
} // namespace kiv
