// Targets of requests, as browsers and others send them.
#include "preview/request_target.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

/// The names with "|" between them, "/" behind a folder; "refused".
std::string NamesOf(std::string_view target)
{
    const std::optional<TargetPath> path = ReadTarget(target);
    if (!path)
        return "refused";
    std::string names;
    for (const std::string& name : path->names)
        names.append(names.empty() ? "" : "|").append(name);
    return names + (path->is_folder ? "/" : "");
}

TEST(RequestTarget, NamesOfFoldersAndFile)
{
    EXPECT_EQ(NamesOf("/"), "/");
    EXPECT_EQ(NamesOf("/a.htm"), "a.htm");
    EXPECT_EQ(NamesOf("/a/b/c.gif"), "a|b|c.gif");
    EXPECT_EQ(NamesOf("/a/"), "a/");
    EXPECT_EQ(NamesOf("/a.htm?x=/../y"), "a.htm");
    EXPECT_EQ(NamesOf("/a.htm#top"), "a.htm");
    EXPECT_EQ(NamesOf("/?x"), "/");
}

TEST(RequestTarget, IsDecodedOnce)
{
    EXPECT_EQ(NamesOf("/a%20b.htm"), "a b.htm");
    EXPECT_EQ(NamesOf("/%c3%A9.gif"), "\xC3\xA9.gif");
    EXPECT_EQ(NamesOf("/a+b"), "a+b");
    EXPECT_EQ(NamesOf("/%252e%252e"), "%2e%2e");
    EXPECT_EQ(NamesOf("/100%25"), "100%");
}

TEST(RequestTarget, WhatLeadsElsewhereIsRefused)
{
    for (const std::string_view target : {"",          "a.htm",   "http://127.0.0.1/",
                                          "*",         "/..",     "/../a",
                                          "/a/../b",   "/./a",    "/a/..",
                                          "/%2e%2e/a", "/%2E./a", "/.%2e",
                                          "/..%2fa",   "/a%2Fb",  "/a%5cb",
                                          "/a\\b",     "/..\\a",  "/%00",
                                          "/a%00.htm", "/a%0Ab",  "/a%7f",
                                          "/a%",       "/a%4",    "/a%zz",
                                          "/%u002e"})
        EXPECT_EQ(NamesOf(target), "refused") << target;
}

TEST(RequestTarget, EncodedPaths)
{
    const std::vector<std::string> names{"a b", "100%", "\xC3\xA9\"<.gif"};
    EXPECT_EQ(SitePath(names), "/a b/100%/\xC3\xA9\"<.gif");
    EXPECT_EQ(EncodedPath(names), "/a%20b/100%25/%C3%A9%22%3C.gif");
    EXPECT_EQ(EncodedPath({}), "/");
}

TEST(RequestTarget, ValuesOfAQuery)
{
    EXPECT_EQ(QueryOf("/a?b=c&d=e"), "b=c&d=e");
    EXPECT_EQ(QueryOf("/a"), "");
    EXPECT_EQ(QueryValue("page=%2Fa.htm&at=3:5", "page"), "/a.htm");
    EXPECT_EQ(QueryValue("page=%2Fa.htm&at=3:5", "at"), "3:5");
    EXPECT_EQ(QueryValue("page=x", "pag"), "");
    EXPECT_EQ(QueryValue("page", "page"), "");
    EXPECT_EQ(QueryValue("page=%4", "page"), "");
    EXPECT_EQ(QueryValue("", "page"), "");
}

} // namespace
} // namespace kiv
