#include "shell/feeds.h"

#include "exchange/feed_xml.h"
#include "exchange/news_lines.h"
#include "exchange/site_map_xml.h"
#include "exchange/web_address.h"
#include "platform/run_error.h"
#include "shell/built_sections.h"
#include "shell/published_pages.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <map>
#include <set>

namespace kiv {

namespace {

constexpr std::size_t kMostItems = 30;
constexpr std::string_view kRssFile = "rss.xml";
constexpr std::string_view kAtomFile = "atom.xml";
constexpr std::string_view kSiteMapXmlFile = "sitemap.xml";

/// The site in the working directory.
struct Site {
    explicit Site(Workspace& workspace, std::string_view base) : sections(workspace)
    {
        sections.BuildAsPublished();
        sections.RefuseFailed();
        published = PublishedPages(workspace.machine(), sections, base);
    }
    BuiltSections sections;
    PublishedSite published;
};

/// The published pages of a section by their names without extension.
std::map<std::string, const PublishedPage*, std::less<>> PagesByName(const PublishedSite& site,
                                                                     const SiteView& view)
{
    std::map<std::string, const PublishedPage*, std::less<>> pages;
    for (const PublishedPage& page : site.pages)
        if (page.view == &view)
            pages.try_emplace(page.text->name.substr(0, page.text->name.rfind('.')), &page);
    return pages;
}

FeedItem ItemOf(const NewsLine& news, const PublishedPage& page)
{
    const auto text = [&](std::string_view bytes) { return WebText(Trim(bytes), page.is_utf8); };
    return {page.address, text(news.title),
            text(news.subhead.empty() ? page.text->description : news.subhead),
            text(news.byline.empty() ? news.newspaper : news.byline), news.time};
}

FeedItem ItemOf(const PublishedPage& page)
{
    return {page.address,
            WebText(page.text->title, page.is_utf8),
            WebText(page.text->description, page.is_utf8),
            {},
            page.time};
}

/// The news of all sections, each page once.
std::vector<FeedItem> NewsItems(const Site& site)
{
    std::vector<FeedItem> items;
    std::set<std::string> known;
    for (const SiteView& view : site.sections.Views()) {
        const auto pages = PagesByName(site.published, view);
        for (const SourceText& source : view.sources)
            for (const std::string_view line : source.lines) {
                const std::optional<NewsLine> news = ReadNewsLine(line);
                const auto page = news ? pages.find(news->file) : pages.end();
                if (page != pages.end() && known.insert(page->second->address).second)
                    items.push_back(ItemOf(*news, *page->second));
            }
    }
    return items;
}

std::vector<FeedItem> Items(const Site& site)
{
    std::vector<FeedItem> items = NewsItems(site);
    if (items.empty())
        for (const PublishedPage& page : site.published.pages)
            items.push_back(ItemOf(page));
    for (FeedItem& item : items)
        if (item.title.empty()) // readers show something, or nothing at all
            item.title = item.address;
    std::ranges::stable_sort(items, std::ranges::greater(), &FeedItem::time);
    if (items.size() > kMostItems)
        items.resize(kMostItems);
    return items;
}

Feed FeedOf(const Site& site, std::string_view base)
{
    const PublishedPage& home = site.published.pages.front();
    Feed feed{.address = WebAddress(base, ""),
              .title = WebText(home.text->title, home.is_utf8),
              .summary = WebText(home.text->description, home.is_utf8),
              .self = {},
              .items = Items(site)};
    if (feed.title.empty())
        feed.title = feed.address;
    return feed;
}

} // namespace

void WriteFeeds(Workspace& workspace, std::string_view base)
{
    Machine& machine = workspace.machine();
    const Site site(workspace, base);
    Feed feed = FeedOf(site, base);
    feed.self = WebAddress(base, kRssFile);
    const std::string rss = RssText(feed);
    feed.self = WebAddress(base, kAtomFile);
    const std::string& folder = site.published.folder;
    WriteMarkedFile(machine, site.sections, folder + std::string(kRssFile), kFeedMark, rss);
    WriteMarkedFile(machine, site.sections, folder + std::string(kAtomFile), kFeedMark,
                    AtomText(feed));
    machine.reporter.Status(
        Joined({kRssFile, " and ", kAtomFile, ": ", std::to_string(feed.items.size()),
                feed.items.size() == 1 ? " item" : " items"}));
}

void WriteSiteMapXml(Workspace& workspace, std::string_view base)
{
    Machine& machine = workspace.machine();
    const Site site(workspace, base);
    std::vector<MappedPage> pages;
    for (const PublishedPage& page : site.published.pages)
        pages.push_back({page.address, page.time});
    if (pages.size() > kMostMappedPages)
        throw RunError(ErrorKind::overflow, "more than 50000 pages for one sitemap.xml", {},
                       "Make one for each part of the group.");
    WriteMarkedFile(machine, site.sections, site.published.folder + std::string(kSiteMapXmlFile),
                    kSiteMapMark, SiteMapText(pages));
    machine.reporter.Status(Joined({kSiteMapXmlFile, ": ", std::to_string(pages.size()),
                                    pages.size() == 1 ? " page" : " pages"}));
}

} // namespace kiv
