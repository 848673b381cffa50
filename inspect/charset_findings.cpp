// Sources whose bytes are not in the character set that their pages declare.
#include "inspect/declared_charset.h"
#include "inspect/file_form.h"
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <set>

namespace kiv {

namespace {

enum class Charset { none, windows1252, latin, ascii, utf8, other };

bool IsHigh(char c)
{
    return (static_cast<unsigned char>(c) & 0x80U) != 0;
}

/// The sets that a browser is told of by these names; of others nothing is known here.
Charset CharsetOf(std::string_view name)
{
    constexpr std::string_view kWindows[] = {"windows-1252", "cp1252", "x-cp1252"};
    if (name.empty())
        return Charset::none;
    if (name == "utf-8" || name == "utf8")
        return Charset::utf8;
    if (std::ranges::find(kWindows, name) != std::end(kWindows))
        return Charset::windows1252;
    if (name == "us-ascii" || name == "ascii")
        return Charset::ascii;
    if (name.starts_with("iso-8859-") || name.starts_with("iso8859-") || name == "latin1")
        return Charset::latin;
    return Charset::other;
}

/// What the bytes of a line are.
struct LineBytes {
    bool has_utf8 = false;      // a character of several bytes
    bool has_other = false;     // a high byte that is part of none
    bool has_undefined = false; // one of these that Windows-1252 does not know
    bool has_control = false;   // one of these from 0x80 to 0x9F
};

LineBytes BytesOf(std::string_view line)
{
    constexpr std::string_view kUndefined = "\x81\x8D\x8F\x90\x9D";
    LineBytes bytes;
    while (!line.empty()) {
        const std::size_t size = IsHigh(line.front()) ? FirstUtf8(line).size : 1;
        if (size == 0) {
            bytes.has_other = true;
            bytes.has_undefined |= kUndefined.find(line.front()) != npos;
            bytes.has_control |= static_cast<unsigned char>(line.front()) < 0xA0;
        }
        bytes.has_utf8 |= size > 1;
        line.remove_prefix(std::max<std::size_t>(size, 1));
    }
    return bytes;
}

/// UTF-8 where something else was declared, or the reverse.
bool IsOfAnother(const LineBytes& bytes, Charset declared)
{
    if (declared == Charset::other || bytes.has_utf8 == bytes.has_other)
        return false; // plain, or spoilt
    return declared == Charset::utf8 ? bytes.has_other : bytes.has_utf8;
}

/// Bytes that are nothing in the declared set.
bool IsOutside(const LineBytes& bytes, Charset declared)
{
    switch (declared) {
    case Charset::utf8:
        return bytes.has_utf8 && bytes.has_other;
    case Charset::none:
    case Charset::windows1252:
        return bytes.has_undefined;
    case Charset::latin:
        return bytes.has_control;
    case Charset::ascii:
        return bytes.has_other;
    case Charset::other:
        break;
    }
    return false;
}

/// Whether a browser takes the file for a page, by its name.
bool IsHtml(const PageText& page)
{
    const std::string name = LowerCase(page.path);
    return name.ends_with(".htm") || name.ends_with(".html") || name.ends_with(".asp");
}

/// Not a piece of text that others take in.
bool IsWhole(const PageText& page)
{
    constexpr std::string_view kMarks[] = {"<html", "<head", "<body", "<!doctype"};
    return std::ranges::any_of(
        kMarks, [&](std::string_view mark) { return ContainsNoCase(page.bytes, mark); });
}

/// Which sets the pages declare, and for which lines of sources.
class Declarations {
  public:
    explicit Declarations(const SiteView& site)
    {
        for (const PageText& page : site.pages)
            if (IsHtml(page))
                pages_.push_back({&page, DeclaredCharset(page.bytes)});
        const auto declares = [](const Declared& one) { return !one.charset.empty(); };
        if (std::ranges::any_of(pages_, declares))
            std::erase_if(
                pages_, [&](const Declared& one) { return !declares(one) && !IsWhole(*one.page); });
        is_one_ = pages_.size() == site.pages.size() &&
                  std::ranges::adjacent_find(pages_, std::ranges::not_equal_to(),
                                             &Declared::charset) == pages_.end();
        if (!is_one_)
            LearnLines();
    }

    /// The declaration of the pages that a line (1-based) comes to; none where there is no page,
    /// or where they disagree.
    std::optional<std::string_view> Of(std::size_t source, int line) const
    {
        if (pages_.empty())
            return std::nullopt;
        if (is_one_)
            return pages_.front().charset;
        const auto found = lines_.find({source, line});
        if (found == lines_.end() || found->second.size() > 1)
            return std::nullopt;
        return *found->second.begin();
    }

  private:
    struct Declared {
        const PageText* page;
        std::string charset;
    };

    void LearnLines()
    {
        for (const auto& [page, charset] : pages_)
            for (const SourceLines& origin : page->origins)
                if (origin.source != SourceLines::kNone)
                    for (int line = origin.first; line <= origin.last; ++line)
                        lines_[{origin.source, line}].insert(charset);
    }

    std::vector<Declared> pages_; // that are held against their sources
    bool is_one_ = true;          // for all pages
    std::map<std::pair<std::size_t, int>, std::set<std::string_view>> lines_;
};

/// The lines of a source that are faulty in the same way.
struct FaultyLines {
    int first = 0;
    int count = 0;
    std::string declared; // at the first
    LineBytes bytes;      // of the first
};

bool HasHighBytes(const SourceText& source)
{
    return std::ranges::any_of(source.bytes, IsHigh);
}

FaultyLines LinesThat(bool (*are_faulty)(const LineBytes&, Charset), const SourceText& source,
                      std::size_t index, const Declarations& declared)
{
    FaultyLines faulty;
    for (int line = 1; line <= static_cast<int>(source.lines.size()); ++line) {
        std::string_view text = source.Line(line);
        if (line == 1 && HasByteOrderMark(text))
            text.remove_prefix(3); // a finding of its own
        if (std::ranges::none_of(text, IsHigh))
            continue;
        const std::optional<std::string_view> name = declared.Of(index, line);
        const LineBytes bytes = BytesOf(text);
        if (!name || !are_faulty(bytes, CharsetOf(*name)))
            continue;
        if (faulty.count++ == 0)
            faulty = {line, 1, std::string(*name), bytes};
    }
    return faulty;
}

/// "1 line", "3 lines".
std::string LineCount(int count)
{
    return Decimal(count) + (count == 1 ? " line" : " lines");
}

template <typename Tell>
void ForFaulty(const SiteView& site, bool (*are_faulty)(const LineBytes&, Charset), Tell tell)
{
    std::optional<Declarations> declared; // most sites have no high bytes at all
    for (std::size_t index = 0; index < site.sources.size(); ++index) {
        const SourceText& source = site.sources[index];
        if (!HasHighBytes(source) || IsUtf16(source.bytes))
            continue;
        if (!declared)
            declared.emplace(site);
        const FaultyLines faulty = LinesThat(are_faulty, source, index, *declared);
        if (faulty.count > 0)
            tell(source, faulty);
    }
}

} // namespace

void FindWrongCharset(const SiteView& site, FindingSink& sink)
{
    ForFaulty(site, IsOfAnother, [&](const SourceText& source, const FaultyLines& faulty) {
        const bool is_utf8 = faulty.bytes.has_utf8;
        const std::string declared = faulty.declared.empty()
                                         ? "declare no character set"
                                         : Joined({"declare ", faulty.declared});
        sink.Add(site.PlaceOf(source, faulty.first),
                 Joined({LineCount(faulty.count), faulty.count == 1 ? " is " : " are ",
                         is_utf8 ? "UTF-8" : "Windows-1252", ", but the pages ", declared}),
                 is_utf8 ? "declare UTF-8 by <meta charset=\"utf-8\">, or save the file as "
                           "Windows-1252"
                         : "save the file as UTF-8, or declare windows-1252");
    });
}

void FindOutsideCharset(const SiteView& site, FindingSink& sink)
{
    ForFaulty(site, IsOutside, [&](const SourceText& source, const FaultyLines& faulty) {
        const std::string_view declared =
            faulty.declared.empty() ? std::string_view("windows-1252, which browsers assume for "
                                                       "pages that declare nothing")
                                    : std::string_view(faulty.declared);
        sink.Add(site.PlaceOf(source, faulty.first),
                 Joined({LineCount(faulty.count), faulty.count == 1 ? " has " : " have ",
                         "bytes that stand for no character in ", declared}));
    });
}

} // namespace kiv
