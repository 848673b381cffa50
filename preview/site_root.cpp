#include "preview/site_root.h"

#include "inspect/address_attributes.h"
#include "inspect/addresses.h"
#include "inspect/attribute_values.h"
#include "inspect/css_addresses.h"
#include "inspect/html_tags.h"
#include "platform/native_files.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::size_t kMostOfFile = 4'000'000; // bytes that are looked at

/// Takes an attribute's value off what follows its "=".
std::string_view TakeValue(std::string_view& rest)
{
    rest.remove_prefix(std::min(rest.find_first_not_of(kHtmlBlanks), rest.size()));
    const bool is_quoted = !rest.empty() && (rest[0] == '"' || rest[0] == '\'');
    const std::size_t end = is_quoted ? rest.find(rest[0], 1) : rest.find_first_of(" \t\r\n\f>");
    const std::size_t from = is_quoted ? 1 : 0;
    const std::size_t stop = std::min(end, rest.size());
    const std::string_view value = rest.substr(from, stop - from);
    rest.remove_prefix(std::min(stop + from, rest.size()));
    return value;
}

void AddCssAddresses(std::string_view css, std::set<std::string>& addresses)
{
    for (const CssAddress& address : CssAddresses(css))
        addresses.insert(address.address);
}

void AddAddress(std::string_view element, std::string_view attribute, std::string_view value,
                std::set<std::string>& addresses)
{
    if (MayBeAddress(element, attribute))
        addresses.emplace(value);
    else if (EqualsNoCase(attribute, "srcset"))
        for (const std::string_view address : SourceSetAddresses(value))
            addresses.emplace(address);
    else if (EqualsNoCase(attribute, "style"))
        AddCssAddresses(value, addresses);
}

/// The addresses in a tag, of which `rest` is what follows its name.
void AddAddresses(std::string_view element, std::string_view rest, std::set<std::string>& addresses)
{
    while (true) {
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n\f/>"), rest.size()));
        if (rest.empty())
            return;
        const std::size_t size = std::min(rest.find_first_of(" \t\r\n\f=>"), rest.size());
        const std::string_view name = rest.substr(0, size);
        rest.remove_prefix(size);
        const std::size_t next = std::min(rest.find_first_not_of(kHtmlBlanks), rest.size());
        if (next >= rest.size() || rest[next] != '=') {
            rest.remove_prefix(size == 0 ? 1 : 0);
            continue;
        }
        rest.remove_prefix(next + 1);
        AddAddress(element, name, TakeValue(rest), addresses);
    }
}

std::string BytesOf(const std::string& native)
{
    const std::unique_ptr<NativeFile> file = OpenNativeFile(native);
    return file ? file->Read(0, kMostOfFile) : std::string();
}

std::set<std::string> AddressesOnPage(std::string_view html)
{
    std::set<std::string> addresses;
    ForEachTag(html, [&](const HtmlTag& tag) {
        if (!tag.is_end)
            AddAddresses(tag.name, html.substr(tag.name_end, tag.end - tag.name_end), addresses);
        if (!tag.is_end && tag.name == "STYLE")
            AddCssAddresses(html.substr(tag.end, FindNoCase(html, "</style", tag.end) - tag.end),
                            addresses);
    });
    return addresses;
}

/// A path of the web from a folder on; "": it leads above the disk's root.
std::string Resolved(std::string folder, std::string_view path)
{
    for (const std::string_view name : Split(path, '/')) {
        if (name == "..") {
            const std::string above = NativeParentOf(folder);
            if (above == folder)
                return {};
            folder = above;
        } else if (!name.empty() && name != ".") {
            folder = NativeJoined(folder, name);
        }
    }
    return folder;
}

bool IsThere(const std::string& native)
{
    return !native.empty() && !RealNativePath(native).empty();
}

/// The nearest folder above both that is no whole disk; `root` when there is none.
std::string Above(const std::string& root, const std::string& place)
{
    std::string common = root;
    while (!LiesIn(place, common)) {
        const std::string above = NativeParentOf(common);
        if (above == common || NativeParentOf(above) == above)
            return root;
        common = above;
    }
    return common;
}

/// Where the most addresses that begin with "/" are found, at or above a folder.
std::string RootOfRooted(const std::string& root, const std::set<std::string>& rooted)
{
    std::string best = root;
    std::ptrdiff_t most = 0;
    for (std::string folder = root;;) {
        const auto found = std::ranges::count_if(
            rooted, [&](const std::string& path) { return IsThere(Resolved(folder, path)); });
        if (found > most) {
            most = found;
            best = folder;
        }
        const std::string above = NativeParentOf(folder);
        if (above == folder || NativeParentOf(above) == above)
            return best;
        folder = above;
    }
}

/// Follows the addresses of pages and of the style sheets that they lead to.
class AddressFollower {
  public:
    explicit AddressFollower(std::string folder) : root_(std::move(folder)) {}

    void TakePage(const std::string& page)
    {
        const std::string place = NativeParentOf(page);
        root_ = Above(root_, place);
        Follow(place, AddressesOnPage(BytesOf(page)));
        while (!sheets_.empty()) {
            const std::string sheet = std::move(sheets_.back());
            sheets_.pop_back();
            std::set<std::string> addresses;
            AddCssAddresses(BytesOf(sheet), addresses);
            Follow(NativeParentOf(sheet), addresses);
        }
    }

    std::string Root() const { return RootOfRooted(root_, rooted_); }

  private:
    void Follow(const std::string& place, const std::set<std::string>& addresses)
    {
        for (const std::string& written : addresses) {
            const Address address = ReadAddress(FromUtf8(written));
            if (address.kind != AddressKind::site)
                continue;
            const std::string path = ToUtf8(address.path);
            if (address.from_root)
                rooted_.insert(path);
            else
                Reach(Resolved(place, path));
        }
    }

    void Reach(const std::string& target)
    {
        if (!IsThere(target))
            return;
        root_ = Above(root_, target);
        if (LowerCase(target).ends_with(".css") && known_sheets_.insert(target).second)
            sheets_.push_back(target);
    }

    std::string root_;
    std::set<std::string> rooted_; // addresses that begin with "/"
    std::set<std::string> known_sheets_;
    std::vector<std::string> sheets_; // that have not been read yet
};

} // namespace

std::string RootOfSite(const std::string& folder, std::span<const std::string> pages)
{
    AddressFollower follower(folder);
    for (const std::string& page : pages)
        follower.TakePage(page);
    return follower.Root();
}

} // namespace kiv
