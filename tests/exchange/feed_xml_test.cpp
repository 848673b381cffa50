#include "exchange/feed_xml.h"
#include "exchange/site_map_xml.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

Feed SmallFeed()
{
    return {"https://h.example/",
            "Caf\xC3\xA9 & more",
            "",
            "https://h.example/feed.xml",
            {{"https://h.example/b.htm", "<b>B</b>", "x\x01y\xFFz", "Ann", 86400},
             {"https://h.example/a.htm", "A", "", "", 0}}};
}

TEST(FeedXml, Rss)
{
    EXPECT_EQ(RssText(SmallFeed()),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
              "<!-- made by kiv-cli feed -->\n"
              "<rss version=\"2.0\" xmlns:atom=\"http://www.w3.org/2005/Atom\" "
              "xmlns:dc=\"http://purl.org/dc/elements/1.1/\">\n"
              "  <channel>\n"
              "    <title>Caf\xC3\xA9 &amp; more</title>\n"
              "    <link>https://h.example/</link>\n"
              "    <atom:link rel=\"self\" type=\"application/rss+xml\" "
              "href=\"https://h.example/feed.xml\" />\n"
              "    <description>Caf\xC3\xA9 &amp; more</description>\n"
              "    <lastBuildDate>Fri, 02 Jan 1970 00:00:00 +0000</lastBuildDate>\n"
              "    <generator>kiv</generator>\n"
              "    <item>\n"
              "      <title>&lt;b&gt;B&lt;/b&gt;</title>\n"
              "      <link>https://h.example/b.htm</link>\n"
              "      <description>xyz</description>\n"
              "      <dc:creator>Ann</dc:creator>\n"
              "      <guid isPermaLink=\"true\">https://h.example/b.htm</guid>\n"
              "      <pubDate>Fri, 02 Jan 1970 00:00:00 +0000</pubDate>\n"
              "    </item>\n"
              "    <item>\n"
              "      <title>A</title>\n"
              "      <link>https://h.example/a.htm</link>\n"
              "      <guid isPermaLink=\"true\">https://h.example/a.htm</guid>\n"
              "      <pubDate>Thu, 01 Jan 1970 00:00:00 +0000</pubDate>\n"
              "    </item>\n"
              "  </channel>\n"
              "</rss>\n");
}

TEST(FeedXml, Atom)
{
    Feed feed = SmallFeed();
    feed.items.pop_back();
    feed.summary = "About";
    EXPECT_EQ(AtomText(feed), "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                              "<!-- made by kiv-cli feed -->\n"
                              "<feed xmlns=\"http://www.w3.org/2005/Atom\">\n"
                              "  <title type=\"html\">Caf\xC3\xA9 &amp; more</title>\n"
                              "  <link rel=\"alternate\" href=\"https://h.example/\" />\n"
                              "  <link rel=\"self\" href=\"https://h.example/feed.xml\" />\n"
                              "  <id>https://h.example/</id>\n"
                              "  <updated>1970-01-02T00:00:00Z</updated>\n"
                              "  <author>\n"
                              "    <name>Caf\xC3\xA9 &amp; more</name>\n"
                              "  </author>\n"
                              "  <generator>kiv</generator>\n"
                              "  <subtitle type=\"html\">About</subtitle>\n"
                              "  <entry>\n"
                              "    <title type=\"html\">&lt;b&gt;B&lt;/b&gt;</title>\n"
                              "    <link rel=\"alternate\" href=\"https://h.example/b.htm\" />\n"
                              "    <id>https://h.example/b.htm</id>\n"
                              "    <updated>1970-01-02T00:00:00Z</updated>\n"
                              "    <author>\n"
                              "      <name>Ann</name>\n"
                              "    </author>\n"
                              "    <summary type=\"html\">xyz</summary>\n"
                              "  </entry>\n"
                              "</feed>\n");
}

TEST(SiteMapXml, PagesInTheirOrder)
{
    EXPECT_EQ(SiteMapText({{"https://h.example/b.htm", 0}, {"https://h.example/a.htm", 1}}),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
              "<!-- made by kiv-cli sitemap-xml -->\n"
              "<urlset xmlns=\"http://www.sitemaps.org/schemas/sitemap/0.9\">\n"
              "  <url>\n"
              "    <loc>https://h.example/b.htm</loc>\n"
              "    <lastmod>1970-01-01T00:00:00Z</lastmod>\n"
              "  </url>\n"
              "  <url>\n"
              "    <loc>https://h.example/a.htm</loc>\n"
              "    <lastmod>1970-01-01T00:00:01Z</lastmod>\n"
              "  </url>\n"
              "</urlset>\n");
}

} // namespace
} // namespace kiv
