// Addresses that lead nowhere, or only here.
#include "builder/cross_references.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/page_links.h"
#include "platform/drive_path.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace kiv {

namespace {

/// What is told of an address that leads to nothing.
struct DeadWords {
    std::string_view before; // the address
    std::string_view behind;
};

constexpr DeadWords kLinkWords = {"the link ", " leads to nothing"};
constexpr DeadWords kMediaWords = {"the file ", " is not there"};
constexpr DeadWords kPictureWords = {"the picture ", " is not there"};
constexpr DeadWords kStyleWords = {"the style sheet ", " is not there"};
constexpr DeadWords kScriptWords = {"the script ", " is not there"};
constexpr DeadWords kFrameWords = {"the frame's page ", " is not there"};
constexpr DeadWords kFormWords = {"the form is sent to ", ", which is not there"};

/// The address with the path that is nearest to its own.
std::string Suggestion(std::string_view verb, const PageLink& link, const Target& target)
{
    if (target.spelling.empty())
        return {};
    const std::size_t end = link.address.find_first_of("?#");
    const std::string_view behind =
        end == npos ? std::string_view() : std::string_view(link.address).substr(end);
    return Joined({verb, "\"", target.spelling, behind, "\""});
}

/// What to write for an address that is not there.
std::string MeantAddress(const PageLink& link, const Target& target)
{
    const std::string_view address = link.address;
    if (Contains(address, "@") && !Contains(address, "/"))
        return Joined({"did you mean \"mailto:", address, "\"?"});
    if (StartsWithNoCase(address, "www."))
        return Joined({"did you mean \"http://", address, "\"?"});
    const std::string near = Suggestion("did you mean ", link, target);
    return near.empty() ? near : near + "?";
}

/// An address with the next tags in it, or with lines, goes on because its quote is not closed.
bool IsQuoteOpen(const PageLink& link, const Target& target)
{
    return target.state == Target::State::missing && link.address.find_first_of("<>\r\n") != npos;
}

std::string OpenQuoteText(std::string_view address)
{
    const std::string_view begin = address.substr(0, address.find_first_of("<>\r\n"));
    return Joined({"the quotation mark before ", InQuotes(begin), " is not closed"});
}

/// What is wrong with an address that can lead nowhere, whatever there is; "" for nothing.
std::string_view AddressFault(const PageLink& link)
{
    const std::string_view address = Trim(link.address);
    if (address.empty() && link.kind == LinkKind::picture)
        return " names no picture";
    if (address.starts_with(kIdMark)) // the "!1" of a reference
        return " names a page by its \"@ID =\", which only references know";
    for (const std::string_view scheme : {"http:", "https:"}) {
        if (!StartsWithNoCase(address, scheme))
            continue;
        const std::string_view rest = address.substr(scheme.size());
        if (!rest.starts_with("//"))
            return " has no \"//\" behind its \":\"";
        if (rest.find_first_not_of('/') == npos)
            return " names no host";
    }
    for (const std::string_view slip : {"htp:", "htpp:", "htttp:", "hhtp:", "httpp:", "ttp:"})
        if (StartsWithNoCase(address, slip))
            return " begins with no kind of address that there is";
    return {};
}

/// What to write for such an address; "" when nobody knows.
std::string WholeAddress(std::string_view address)
{
    address = Trim(address);
    if (address.starts_with(kIdMark))
        return "give the reference the page's file in a field of its own, and make that the "
               "address";
    const std::size_t colon = address.find(':');
    const std::string_view host = colon == npos ? std::string_view() : address.substr(colon + 1);
    const std::size_t begin = host.find_first_not_of('/');
    if (begin == npos)
        return {};
    const std::string_view scheme = StartsWithNoCase(address, "https") ? "https" : "http";
    return Joined({"write \"", scheme, "://", host.substr(begin), "\""});
}

void FindDead(const SiteView& site, FindingSink& sink, LinkKind kind, const DeadWords& words)
{
    const bool leads_to_page =
        kind == LinkKind::link || kind == LinkKind::frame || kind == LinkKind::form;
    ForEachLink(site, [&](const LinkedPage& page, const PageLink& link, const Target& target) {
        if (link.kind != kind)
            return;
        const std::string quoted = InQuotes(link.address);
        const bool is_folder = target.state == Target::State::no_index;
        if (IsQuoteOpen(link, target))
            sink.Add(PlaceOf(page, link), OpenQuoteText(link.address),
                     "put a quotation mark behind the address");
        else if (const std::string_view fault = AddressFault(link); !fault.empty())
            sink.Add(PlaceOf(page, link), quoted + std::string(fault), WholeAddress(link.address));
        else if (is_folder && !leads_to_page)
            sink.Add(PlaceOf(page, link), Joined({words.before, quoted, " is a folder"}),
                     "name a file in it");
        else if (is_folder)
            sink.Add(PlaceOf(page, link), quoted + " is a folder without an index page",
                     "link to one of its pages");
        else if (target.state == Target::State::missing)
            sink.Add(PlaceOf(page, link), Joined({words.before, quoted, words.behind}),
                     MeantAddress(link, target));
    });
}

} // namespace

void FindDeadLinks(const SiteView& site, FindingSink& sink)
{
    FindDead(site, sink, LinkKind::link, kLinkWords);
    FindDead(site, sink, LinkKind::media, kMediaWords);
}

void FindDeadPictures(const SiteView& site, FindingSink& sink)
{
    FindDead(site, sink, LinkKind::picture, kPictureWords);
}

void FindDeadStyles(const SiteView& site, FindingSink& sink)
{
    FindDead(site, sink, LinkKind::style, kStyleWords);
}

void FindDeadScripts(const SiteView& site, FindingSink& sink)
{
    FindDead(site, sink, LinkKind::script, kScriptWords);
}

void FindDeadFrames(const SiteView& site, FindingSink& sink)
{
    FindDead(site, sink, LinkKind::frame, kFrameWords);
}

void FindDeadForms(const SiteView& site, FindingSink& sink)
{
    FindDead(site, sink, LinkKind::form, kFormWords);
}

namespace {

/// The files, in capitals, that two pages of the list are written to: which of the two names a file
/// has is a matter of what is told of them.
std::set<std::string> PagesTwice(const SiteView& site)
{
    std::set<std::string> paths;
    for (const PageText& page : site.pages)
        if (std::ranges::find(site.twice, page.from, &PageTwice::second) != site.twice.end())
            paths.insert(UpperCase(page.path));
    return paths;
}

} // namespace

void FindLetterCase(const SiteView& site, FindingSink& sink)
{
    const std::set<std::string> twice = PagesTwice(site);
    ForEachLink(site, [&](const LinkedPage& page, const PageLink& link, const Target& target) {
        if (target.state == Target::State::found && target.is_misspelled &&
            !twice.contains(UpperCase(target.path)))
            sink.Add(PlaceOf(page, link),
                     InQuotes(link.address) + " and the name of the file differ in capital letters",
                     Suggestion("write ", link, target));
    });
}

void FindDrivePaths(const SiteView& site, FindingSink& sink)
{
    ForEachLink(site, [&](const LinkedPage& page, const PageLink& link, const Target& target) {
        if (target.state == Target::State::drive)
            sink.Add(PlaceOf(page, link),
                     InQuotes(link.address) + " is on this computer, which no visitor can reach",
                     "write it relative to the page's folder");
    });
}

void FindBackslashes(const SiteView& site, FindingSink& sink)
{
    ForEachLink(site, [&](const LinkedPage& page, const PageLink& link, const Target& target) {
        if (target.has_backslash && target.state != Target::State::drive)
            sink.Add(PlaceOf(page, link),
                     Joined({"the address ", InQuotes(link.address), " has a \"\\\""}),
                     "write \"/\" instead");
    });
}

namespace {

/// Places that every page has, and those that only script or the browser knows.
bool IsJudged(std::string_view fragment)
{
    return !fragment.empty() && !EqualsNoCase(fragment, "top") && fragment[0] != '!' &&
           !Contains(fragment, ":~:");
}

std::string NearestAnchor(std::string_view fragment, const LinkedPage& page)
{
    const std::vector<std::string_view> known(page.anchors.begin(), page.anchors.end());
    const std::string_view near = Nearest(fragment, known);
    return DidYouMean(near.empty() ? "" : Joined({"#", near}));
}

} // namespace

void FindDeadAnchors(const SiteView& site, FindingSink& sink)
{
    ForEachLink(site, [&](const LinkedPage& page, const PageLink& link, const Target& target) {
        if (link.kind != LinkKind::link || target.state != Target::State::found ||
            link.has_script || !IsJudged(target.fragment))
            return;
        const LinkedPage* const other = site.linked->Find(target.path);
        if (other == nullptr || other->facts.is_made_by_server || !other->facts.is_read ||
            other->anchors.contains(target.fragment))
            return;
        const std::string where = other == &page ? "this page" : std::string(NameOf(other->path));
        sink.Add(
            PlaceOf(page, link),
            Joined({InQuotes(link.address), " leads to a place that ", where, " does not have"}),
            NearestAnchor(target.fragment, *other));
    });
}

} // namespace kiv
