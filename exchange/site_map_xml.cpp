#include "exchange/site_map_xml.h"

#include "exchange/xml_text.h"

namespace kiv {

std::string SiteMapText(const std::vector<MappedPage>& pages)
{
    XmlElement root{"urlset", {{"xmlns", "http://www.sitemaps.org/schemas/sitemap/0.9"}}, {}, {}};
    for (const MappedPage& page : pages)
        root.within.push_back(
            {"url",
             {},
             {},
             {{"loc", {}, page.address, {}}, {"lastmod", {}, IsoTime(page.time), {}}}});
    return XmlText(root, kSiteMapMark);
}

} // namespace kiv
