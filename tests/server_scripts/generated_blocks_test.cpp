// Every block that a server-script directive stands for has the form of script that runs.
#include "builder/server_scripts.h"
#include "tests/server_scripts/script_checker.h"
#include "tests/server_scripts/server_copy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace kiv::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Addresses kAddresses{.sender = "desk@museum.example.com"};

std::string Block(std::string line)
{
    ExpandServerScript(line, kAddresses);
    return line;
}

class GeneratedBlock : public testing::TestWithParam<const char*> {};

TEST_P(GeneratedBlock, HasTheFormOfScript)
{
    const std::string block = Block(GetParam());
    EXPECT_THAT(block, testing::StartsWith("<%\r\n"));
    EXPECT_THAT(FaultsOf(block), IsEmpty()) << block;
}

INSTANTIATE_TEST_SUITE_P(
    Directives, GeneratedBlock,
    testing::Values("@OPENDB: c:\\data\\my base.mdb", "@OPENDB:", "@SHOWDB: c:\\data\\a.mdb|People",
                    "@SHOWDB: c:\\a.mdb|[two words] WHERE age > 3", "@KILLRECORD: People|ID",
                    "@FIXQUOTES: a", "@FIXQUOTES: a|b|c", "@FIXQUOTES:", "@FORMREAD: a",
                    "@FORMREAD: a|b|c", "@FORMREAD: referrer|a", "@FORMREAD: a|referrer|b",
                    "@DBINSERT: People|a", "@DBINSERT: People|*a", "@DBINSERT: People|a|b",
                    "@DBINSERT: People|*a|*b", "@DBINSERT: People|a|*b|c|*d",
                    "@DBINSERT: People|*a|b|*c|d", "@DBINSERT: People", "@DBINSERT: it's|a",
                    "@DBUPDATE: People|ID|a", "@DBUPDATE: People|*ID|*a",
                    "@DBUPDATE: People|ID|a|*b|c", "@DBUPDATE: People|*ID|*a|b|*c",
                    "@DBUPDATE: People|ID", "@DBUPDATE: it's|ID|a"),
    [](const auto& one) { return "Case" + std::to_string(one.index); });

/// All send-mails: an address or a variable as sender; one receiver, two, variables; a literal or a
/// variable as message; quotes in subject and message; both mail objects.
TEST(GeneratedBlocks, SendMailInAllForms)
{
    for (const char* directive : {"@SENDEMAIL: ", "@SSENDEMAIL: "})
        for (const char* subject : {"News", "A \"quoted\" subject", "\"", ""})
            for (const char* from : {"a@b.example", "email"})
                for (const char* to : {"a@b.example", "a@b.example,c@d.example", "receiver",
                                       "receiver,copy", "a@b.example,copy", "receiver,c@d.example"})
                    for (const char* message :
                         {"messageout", "two words", "he said \"no\" twice"}) {
                        const std::string line = std::string(directive) + subject + "|" + from +
                                                 "|" + to + "|" + message;
                        EXPECT_THAT(FaultsOf(Block(line)), IsEmpty()) << line << "\n"
                                                                      << Block(line);
                    }
}

// What the directives make of arguments that are no names; the format gives them out as they are.
TEST(GeneratedBlocks, WhatTheAuthorBreaksIsSeen)
{
    EXPECT_THAT(FaultsOf(Block("@FORMREAD:")), ElementsAre(HasSubstr("wanted a name")));
    EXPECT_THAT(FaultsOf(Block("@FORMREAD: referrer")), ElementsAre(HasSubstr("wanted a name")));
    EXPECT_THAT(FaultsOf(Block("@OPENDB: a\"b")), ElementsAre(HasSubstr("line 4: a text")));
    EXPECT_THAT(FaultsOf(Block("@FIXQUOTES: two words")), testing::SizeIs(2));
    EXPECT_THAT(FaultsOf(Block("@DBINSERT: t|a||b")), testing::SizeIs(1));
    EXPECT_THAT(FaultsOf(Block("@KILLRECORD: t's|ID")), ElementsAre(HasSubstr("does not end")));
    EXPECT_THAT(FaultsOf(Block("@SENDEMAIL: s|two words|a@b.c|m")),
                testing::Contains(HasSubstr("line 5: wanted")));
}

TEST(ExampleSite, EveryPageOfTheServerCopyHoldsScriptThatRuns)
{
    const FileTree pages = ServerCopy();
    std::string all;
    for (const auto& [name, bytes] : pages) {
        EXPECT_THAT(FaultsOf(bytes), IsEmpty()) << name;
        all += bytes;
    }
    // One line of every directive, so that none is missing from the site.
    for (const char* line :
         {"conn.Open ", "rs.Open sql, conn", "DELETE FROM ", "\"&quot;\")", "=trim(Request.Form(",
          "INSERT INTO ", "UPDATE [", "Cdonts.newMail", "CDO.Message"})
        EXPECT_THAT(all, HasSubstr(line));
    EXPECT_EQ(std::count_if(pages.begin(), pages.end(),
                            [](const auto& page) { return page.first.ends_with(".asp"); }),
              3);
}

} // namespace
} // namespace kiv::test
