#include "exchange/feed_xml.h"

#include "exchange/xml_text.h"

#include <algorithm>
#include <utility>

namespace kiv {

namespace {

XmlElement Leaf(std::string name, const std::string& text)
{
    return {std::move(name), {}, text, {}};
}

WebTime NewestTime(const Feed& feed)
{
    WebTime newest = feed.items.front().time;
    for (const FeedItem& item : feed.items)
        newest = std::max(newest, item.time);
    return newest;
}

XmlElement RssItem(const FeedItem& item)
{
    XmlElement element{"item"};
    element.within = {Leaf("title", item.title), Leaf("link", item.address)};
    if (!item.summary.empty())
        element.within.push_back(Leaf("description", item.summary));
    if (!item.author.empty())
        element.within.push_back(Leaf("dc:creator", item.author));
    element.within.push_back({"guid", {{"isPermaLink", "true"}}, item.address, {}});
    element.within.push_back(Leaf("pubDate", MailTime(item.time)));
    return element;
}

/// A text in which readers resolve tags and entities.
XmlElement HtmlText(std::string name, const std::string& text)
{
    return {std::move(name), {{"type", "html"}}, text, {}};
}

XmlElement AtomLink(const std::string& address, std::string_view relation)
{
    return {"link", {{"rel", std::string(relation)}, {"href", address}}, {}, {}};
}

XmlElement AtomEntry(const FeedItem& item)
{
    XmlElement entry{"entry"};
    entry.within = {HtmlText("title", item.title), AtomLink(item.address, "alternate"),
                    Leaf("id", item.address), Leaf("updated", IsoTime(item.time))};
    if (!item.author.empty())
        entry.within.push_back({"author", {}, {}, {Leaf("name", item.author)}});
    if (!item.summary.empty())
        entry.within.push_back(HtmlText("summary", item.summary));
    return entry;
}

} // namespace

std::string RssText(const Feed& feed)
{
    XmlElement channel{"channel"};
    channel.within = {
        Leaf("title", feed.title),
        Leaf("link", feed.address),
        {"atom:link",
         {{"rel", "self"}, {"type", "application/rss+xml"}, {"href", feed.self}},
         {},
         {}},
        Leaf("description", feed.summary.empty() ? feed.title : feed.summary),
        Leaf("lastBuildDate", MailTime(NewestTime(feed))),
        Leaf("generator", "kiv"),
    };
    for (const FeedItem& item : feed.items)
        channel.within.push_back(RssItem(item));
    const XmlElement root{"rss",
                          {{"version", "2.0"},
                           {"xmlns:atom", "http://www.w3.org/2005/Atom"},
                           {"xmlns:dc", "http://purl.org/dc/elements/1.1/"}},
                          {},
                          {channel}};
    return XmlText(root, kFeedMark);
}

std::string AtomText(const Feed& feed)
{
    XmlElement root{"feed", {{"xmlns", "http://www.w3.org/2005/Atom"}}, {}, {}};
    root.within = {HtmlText("title", feed.title),
                   AtomLink(feed.address, "alternate"),
                   AtomLink(feed.self, "self"),
                   Leaf("id", feed.address),
                   Leaf("updated", IsoTime(NewestTime(feed))),
                   {"author", {}, {}, {Leaf("name", feed.title)}},
                   Leaf("generator", "kiv")};
    if (!feed.summary.empty())
        root.within.push_back(HtmlText("subtitle", feed.summary));
    for (const FeedItem& item : feed.items)
        root.within.push_back(AtomEntry(item));
    return XmlText(root, kFeedMark);
}

} // namespace kiv
