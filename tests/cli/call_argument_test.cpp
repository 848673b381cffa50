// Paths in calls that somebody copies into a shell.
#include "cli/call_argument.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

struct ArgumentRow {
    const char* path;
    const char* word;
};

TEST(CallArguments, APosixShellReadsThePathAndNothingElse)
{
    const ArgumentRow rows[] = {
        {"mill", "mill"},
        {"/srv/old-mill_2/a.b", "/srv/old-mill_2/a.b"},
        {"caf\xC3\xA9", "caf\xC3\xA9"},
        {"old mill", "'old mill'"},
        {"C:\\mill", "'C:\\mill'"},
        {"it's", "'it'\\''s'"},
        {"$HOME", "'$HOME'"},
        {"a`b\"c", "'a`b\"c'"},
        {"~ann", "'~ann'"},
        {"=a", "'=a'"},
        {"-news", "./-news"},
        {"-a b", "'./-a b'"},
        {"a\nb", "'a\nb'"},
    };
    for (const ArgumentRow& row : rows)
        EXPECT_EQ(PosixArgument(row.path), row.word) << row.path;
}

TEST(CallArguments, AWindowsShellReadsThePathAndNothingElse)
{
    const ArgumentRow rows[] = {
        {"C:\\mill", "C:\\mill"},
        {"old mill", "\"old mill\""},
        {"C:\\old mill\\", "\"C:\\old mill\\\\\""},
        {"it's", "\"it's\""},
        {"a&b", "\"a&b\""},
        {"a,b;c", "\"a,b;c\""},
        {"-news", ".\\-news"},
    };
    for (const ArgumentRow& row : rows)
        EXPECT_EQ(WindowsArgument(row.path), row.word) << row.path;
}

} // namespace
} // namespace kiv
