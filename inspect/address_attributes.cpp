#include "inspect/address_attributes.h"

#include "text/text.h"

namespace kiv {

namespace {

struct AddressAttribute {
    std::string_view attribute;
    std::string_view element;
    std::optional<LinkKind> kind;
};

constexpr std::string_view kAny; // every element

constexpr AddressAttribute kAddresses[] = {
    {"href", "a", LinkKind::link},
    {"href", "area", LinkKind::link},
    {"src", "img", LinkKind::picture},
    {"lowsrc", "img", LinkKind::picture},
    {"longdesc", "img", LinkKind::link},
    {"background", kAny, LinkKind::picture},
    {"poster", "video", LinkKind::picture},
    {"src", "script", LinkKind::script},
    {"src", "frame", LinkKind::frame},
    {"src", "iframe", LinkKind::frame},
    {"action", "form", LinkKind::form},
    {"formaction", "input", LinkKind::form},
    {"formaction", "button", LinkKind::form},
    {"src", "embed", LinkKind::media},
    {"src", "video", LinkKind::media},
    {"src", "audio", LinkKind::media},
    {"src", "source", LinkKind::media},
    {"src", "track", LinkKind::media},
    {"src", "bgsound", LinkKind::media},
    // Others of the element's attributes tell what these are.
    {"href", "link", std::nullopt},
    {"data", "object", std::nullopt},
    {"src", "input", std::nullopt},
};

} // namespace

std::optional<LinkKind> KindOfAddress(std::string_view element, std::string_view attribute)
{
    for (const AddressAttribute& row : kAddresses)
        if (row.attribute == attribute && (row.element == element || row.element == kAny))
            return row.kind;
    return std::nullopt;
}

bool MayBeAddress(std::string_view element, std::string_view attribute)
{
    for (const AddressAttribute& row : kAddresses)
        if (EqualsNoCase(row.attribute, attribute) &&
            (row.element == kAny || EqualsNoCase(row.element, element)))
            return true;
    return false;
}

} // namespace kiv
