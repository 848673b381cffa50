#include "inspect/html_facts.h"

#include "inspect/address_attributes.h"
#include "inspect/attribute_values.h"
#include "inspect/css_addresses.h"
#include "inspect/line_numbers.h"
#include "inspect/mentioned_files.h"
#include "inspect/nesting.h"
#include "inspect/parse_memory.h"
#include "inspect/server_code.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <csetjmp>
#include <ctime>
#include <optional>
#include <set>
#include <utility>

#include <gumbo.h>

namespace kiv {

namespace {

constexpr std::size_t kDeepest = 3000;
constexpr std::clock_t kLongestShared = std::clock_t{5} * CLOCKS_PER_SEC; // of one page

/// The tree of a page, which lives as long as the memory; null when it asks for too much. Nothing
/// between here and the allocator has anything to clean up: all of it is C.
const GumboOutput* Parse(std::string_view html, ParseMemory& memory)
{
    GumboOptions options = kGumboDefaultOptions;
    options.allocator = &ParseMemory::Take;
    options.deallocator = [](void*, void*) {};
    options.userdata = &memory;
    options.max_errors = 0;
#ifdef _MSC_VER
#pragma warning(suppress : 4611) // of destructors that a jump would pass over
#endif
    if (setjmp(memory.WayOut()) != 0)
        return nullptr;
    return gumbo_parse_with_options(&options, html.data(), html.size());
}

std::string_view View(const GumboStringPiece& piece)
{
    return piece.data == nullptr ? std::string_view() : std::string_view(piece.data, piece.length);
}

/// Elements whose text is no prose of the page.
bool IsQuiet(const GumboElement& element)
{
    switch (element.tag) {
    case GUMBO_TAG_SCRIPT:
    case GUMBO_TAG_STYLE:
    case GUMBO_TAG_PRE:
    case GUMBO_TAG_LISTING:
    case GUMBO_TAG_XMP:
    case GUMBO_TAG_PLAINTEXT:
    case GUMBO_TAG_CODE:
    case GUMBO_TAG_KBD:
    case GUMBO_TAG_SAMP:
    case GUMBO_TAG_TT:
    case GUMBO_TAG_VAR:
    case GUMBO_TAG_TEXTAREA:
    case GUMBO_TAG_NOFRAMES:
        return true;
    default:
        return false;
    }
}

/// Nodes that the parser made of others are not looked at twice.
bool IsCopy(const GumboNode& node)
{
    constexpr unsigned kCopies =
        GUMBO_INSERTION_RECONSTRUCTED_FORMATTING_ELEMENT | GUMBO_INSERTION_ADOPTION_AGENCY_CLONED;
    return (static_cast<unsigned>(node.parse_flags) & kCopies) != 0;
}

/// Whether a construct may be left over in a text.
bool IsOdd(std::string_view text)
{
    constexpr std::string_view kSigns[] = {"@", "!!", "$$", "%%", "??", "?!", "[["};
    return std::ranges::any_of(kSigns, [&](std::string_view sign) { return Contains(text, sign); });
}

/// Looks over the tree of a page.
class FactFinder {
  public:
    /// `is_utf8`: the page's own bytes are what is parsed.
    FactFinder(std::string_view html, bool is_utf8, PageFacts& facts)
        : lines_(html), is_utf8_(is_utf8), facts_(facts)
    {
    }

    void Look(const GumboNode* document)
    {
        struct Step {
            const GumboNode* node;
            unsigned child; // the next one
        };
        std::vector<Step> way{{document, 0}};
        while (!way.empty()) {
            const GumboNode* const node = way.back().node;
            const GumboVector* const children = Children(*node);
            if (way.back().child == children->length) {
                Leave(*node);
                way.pop_back();
                continue;
            }
            const auto* const next =
                static_cast<const GumboNode*>(children->data[way.back().child++]);
            if (Children(*next) != nullptr) {
                Enter(*next);
                way.push_back({next, 0});
            } else {
                TakeText(*next, *node);
            }
        }
        SortByLine();
    }

  private:
    static const GumboVector* Children(const GumboNode& node)
    {
        switch (node.type) {
        case GUMBO_NODE_DOCUMENT:
            return &node.v.document.children;
        case GUMBO_NODE_ELEMENT:
        case GUMBO_NODE_TEMPLATE:
            return &node.v.element.children;
        default:
            return nullptr;
        }
    }

    static bool Silences(const GumboNode& node)
    {
        return node.type == GUMBO_NODE_TEMPLATE ||
               (node.type == GUMBO_NODE_ELEMENT && IsQuiet(node.v.element));
    }

    void Enter(const GumboNode& node)
    {
        quiet_ += Silences(node) ? 1 : 0;
        if (!IsCopy(node))
            TakeElement(node.v.element);
    }

    void Leave(const GumboNode& node) { quiet_ -= Silences(node) ? 1 : 0; }

    void TakeText(const GumboNode& node, const GumboNode& parent)
    {
        const GumboText& text = node.v.text;
        if (node.type == GUMBO_NODE_COMMENT) {
            if (StartsWithNoCase(text.text, "[if")) // some browsers read it
                Mention(text.text);
            // The server puts another file in its place.
            facts_.is_made_by_server |= std::string_view(text.text).starts_with("#include");
            return;
        }
        if (node.type == GUMBO_NODE_WHITESPACE || text.original_text.data == nullptr)
            return;
        const bool is_element = parent.type == GUMBO_NODE_ELEMENT;
        if (is_element && parent.v.element.tag == GUMBO_TAG_STYLE)
            TakeCss(text.text, text.original_text.data);
        else if (is_element && parent.v.element.tag == GUMBO_TAG_SCRIPT)
            Mention(text.text);
        else if (quiet_ == 0 && IsOdd(text.text))
            TakeOddLines(View(text.original_text));
    }

    void TakeOddLines(std::string_view text)
    {
        while (!text.empty()) {
            const char* const at = text.data();
            const std::string_view line = TakeLine(text);
            if (IsOdd(line))
                facts_.texts.push_back({FromUtf8(line), lines_.Of(at)});
        }
    }

    void TakeElement(const GumboElement& element)
    {
        // One that is begun twice has the attributes of both; its tag may be the parser's own.
        const std::string_view tag = View(element.original_tag);
        if (element.tag == GUMBO_TAG_UNKNOWN && StartsWithNoCase(tag, "<zu"))
            facts_.tags.push_back({FromUtf8(tag), lines_.Of(tag.data())});
        const std::size_t first = facts_.links.size();
        const GumboAttribute* source = nullptr;
        for (unsigned index = 0; index < element.attributes.length; ++index) {
            const auto& attribute =
                *static_cast<const GumboAttribute*>(element.attributes.data[index]);
            TakeAttribute(element, attribute);
            if (std::string_view(attribute.name) == "src")
                source = &attribute;
        }
        TakeOfItsOwn(element, source);
        NoteScript(element, first);
        TakeSides(element, first);
    }

    /// What an element has beside the attributes that are addresses by themselves. `source`: its
    /// "src", or null.
    void TakeOfItsOwn(const GumboElement& element, const GumboAttribute* source)
    {
        switch (element.tag) {
        case GUMBO_TAG_INPUT:
            if (source != nullptr && HasWord(Value(element, "type"), "image"))
                AddLink(LinkKind::picture, *source);
            break;
        case GUMBO_TAG_OBJECT:
            if (Value(element, "codebase").empty())
                AddLink(LinkKind::media, element, "data");
            break;
        case GUMBO_TAG_LINK:
            TakeLinkElement(element);
            break;
        case GUMBO_TAG_META:
            TakeMeta(element);
            break;
        case GUMBO_TAG_BASE:
            if (facts_.base.empty())
                facts_.base = FromUtf8(Trim(Value(element, "href")));
            break;
        default:
            break;
        }
    }

    void TakeAttribute(const GumboElement& element, const GumboAttribute& attribute)
    {
        const std::string_view name = attribute.name;
        if (const auto kind = KindOfAddress(gumbo_normalized_tagname(element.tag), name))
            AddLink(*kind, attribute);
        if (name == "id" && *attribute.value != '\0')
            facts_.ids.push_back({FromUtf8(attribute.value), LineOf(attribute)});
        else if (name == "name" && element.tag == GUMBO_TAG_A)
            facts_.names.push_back(FromUtf8(attribute.value));
        else if (name == "srcset")
            TakeSourceSet(attribute);
        else if (name == "style")
            TakeCss(attribute.value, attribute.original_name.data);
        else if (MayNameFiles(attribute))
            Mention(attribute.value);
    }

    /// For script to read.
    static bool MayNameFiles(const GumboAttribute& attribute)
    {
        const std::string_view name = attribute.name;
        return name.starts_with("on") || name.starts_with("data-") || name == "value" ||
               name == "content" ||
               (name == "href" && StartsWithNoCase(attribute.value, "javascript:"));
    }

    int LineOf(const GumboAttribute& attribute) const
    {
        const GumboStringPiece& value = attribute.original_value;
        return lines_.Of(value.data != nullptr ? value.data : attribute.original_name.data);
    }

    static std::string_view Value(const GumboElement& element, const char* name)
    {
        const GumboAttribute* const attribute = gumbo_get_attribute(&element.attributes, name);
        return attribute == nullptr ? std::string_view() : attribute->value;
    }

    /// The page's own bytes of a part of what was parsed.
    std::string OwnBytes(std::string_view part) const
    {
        return is_utf8_ ? std::string(part) : FromUtf8(part);
    }

    void AddLink(LinkKind kind, const GumboElement& element, const char* name)
    {
        if (const auto* const attribute = gumbo_get_attribute(&element.attributes, name))
            AddLink(kind, *attribute);
    }

    void AddLink(LinkKind kind, const GumboAttribute& attribute)
    {
        std::string_view written = View(attribute.original_value);
        if (written.size() >= 2 && (written[0] == '"' || written[0] == '\''))
            written = written.substr(1, written.size() - 2);
        AddLink(kind, attribute.value, written, LineOf(attribute));
    }

    void AddLink(LinkKind kind, std::string_view value, std::string_view written, int line)
    {
        PageLink link{kind, FromUtf8(value), OwnBytes(written), line};
        if (link.written == link.address)
            link.written.clear();
        facts_.links.push_back(std::move(link));
    }

    void TakeSourceSet(const GumboAttribute& attribute)
    {
        for (const std::string_view address : SourceSetAddresses(attribute.value))
            AddLink(LinkKind::picture, address, address, LineOf(attribute));
    }

    void TakeLinkElement(const GumboElement& element)
    {
        const std::string_view relation = Value(element, "rel");
        if (HasWord(relation, "stylesheet"))
            AddLink(LinkKind::style, element, "href");
        else if (ContainsNoCase(relation, "icon"))
            AddLink(LinkKind::picture, element, "href");
        else if (HasWord(relation, "preload") || HasWord(relation, "prefetch") ||
                 HasWord(relation, "manifest"))
            AddLink(LinkKind::media, element, "href");
        else if (!HasWord(relation, "preconnect") && !HasWord(relation, "dns-prefetch"))
            AddLink(LinkKind::link, element, "href");
    }

    /// A page that leads on by itself.
    void TakeMeta(const GumboElement& element)
    {
        const auto* const content = gumbo_get_attribute(&element.attributes, "content");
        if (content == nullptr || !EqualsNoCase(Value(element, "http-equiv"), "refresh"))
            return;
        const std::string_view address = RefreshAddress(content->value);
        facts_.leads_on |= !address.empty();
        if (!address.empty())
            AddLink(LinkKind::link, address, address, LineOf(*content));
    }

    /// `place`: of the style, near enough for its lines.
    void TakeCss(std::string_view css, const char* place)
    {
        int line = lines_.Of(place);
        std::size_t counted = 0; // of the style, from whose begin the addresses are in order
        for (const CssAddress& found : CssAddresses(css)) {
            const auto between = css.substr(counted, found.at - counted);
            line += static_cast<int>(std::ranges::count(between, '\n'));
            counted = found.at;
            AddLink(found.is_import ? LinkKind::style : LinkKind::picture, found.address,
                    found.address, line);
        }
    }

    /// The sides of a picture whose address is the first link of the element from `first` on.
    void TakeSides(const GumboElement& element, std::size_t first)
    {
        if (element.tag != GUMBO_TAG_IMG && element.tag != GUMBO_TAG_INPUT)
            return;
        const std::string_view source = Value(element, "src");
        const std::string_view style = Value(element, "style");
        const std::optional<int> width = PixelsOf(Value(element, "width"));
        const std::optional<int> height = PixelsOf(Value(element, "height"));
        if (source.empty() || !width || !height || ContainsNoCase(style, "width") ||
            ContainsNoCase(style, "height") || ContainsNoCase(style, "object-fit"))
            return;
        const std::string address = FromUtf8(source);
        for (std::size_t link = first; link < facts_.links.size(); ++link)
            if (facts_.links[link].address == address) {
                facts_.pictures.push_back({link, *width, *height});
                return;
            }
    }

    /// Whether script of the element gives it another address before anybody follows its own.
    static bool SetsAddress(const GumboElement& element)
    {
        for (unsigned index = 0; index < element.attributes.length; ++index) {
            const auto& attribute =
                *static_cast<const GumboAttribute*>(element.attributes.data[index]);
            if (std::string_view(attribute.name).starts_with("on") &&
                ContainsNoCase(attribute.value, "this.href"))
                return true;
        }
        return false;
    }

    void NoteScript(const GumboElement& element, std::size_t first)
    {
        if (SetsAddress(element))
            facts_.links.resize(first);
        if (gumbo_get_attribute(&element.attributes, "onclick") != nullptr)
            for (std::size_t link = first; link < facts_.links.size(); ++link)
                facts_.links[link].has_script = true;
    }

    void Mention(std::string_view script)
    {
        for (std::string& name : MentionedFiles(FromUtf8(script)))
            if (mentioned_.insert(name).second)
                facts_.mentioned.push_back(std::move(name));
    }

    /// The parser moves what stands where it may not.
    void SortByLine()
    {
        std::ranges::stable_sort(facts_.ids, {}, &PageWord::line);
        std::ranges::stable_sort(facts_.texts, {}, &PageWord::line);
        std::ranges::stable_sort(facts_.tags, {}, &PageWord::line);
    }

    LineNumbers lines_;
    bool is_utf8_;
    PageFacts& facts_;
    int quiet_ = 0; // elements around
    std::set<std::string, std::less<>> mentioned_;
};

bool IsUtf8(std::string_view text)
{
    while (!text.empty()) {
        const bool is_ascii = static_cast<unsigned char>(text[0]) < 0x80;
        const std::size_t size = is_ascii ? 1 : FirstUtf8(text).size;
        if (size == 0)
            return false;
        text.remove_prefix(size);
    }
    return true;
}

} // namespace

PageFacts ReadPage(std::string_view bytes, ReadingTime& time)
{
    PageFacts facts;
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kUtf8Mark))
        bytes.remove_prefix(kUtf8Mark.size());
    const bool is_utf8 = IsUtf8(bytes);
    const std::string html =
        WithoutServerCode(is_utf8 ? std::string(bytes) : ToUtf8(bytes), facts.is_made_by_server);
    const std::clock_t begin = std::clock();
    ParseMemory memory(time.own + std::min(time.shared, kLongestShared));
    const GumboOutput* const tree =
        NestingBound(html, kDeepest) < kDeepest ? Parse(html, memory) : nullptr;
    const std::clock_t needed = std::clock() - begin - time.own;
    time.shared -= std::clamp<std::clock_t>(needed, 0, time.shared);
    facts.is_read = tree != nullptr;
    if (tree != nullptr)
        FactFinder(html, is_utf8, facts).Look(tree->document);
    return facts;
}

bool CanReadPages()
{
    return true;
}

} // namespace kiv
