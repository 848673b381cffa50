#include "preview/marked_page.h"

#include "inspect/html_tags.h"
#include "preview/page_policy.h"
#include "preview/request_target.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>

namespace kiv {

namespace {

/// Elements that nobody can point at. What makes a page's head longer could move its character set
/// to where browsers do not look for it.
constexpr std::string_view kUnseen[] = {
    "BASE", "FRAMESET", "HEAD", "HTML", "LINK", "META", "NOFRAMES", "SCRIPT", "STYLE", "TITLE",
};

/// What nothing of a page's head may stand before.
constexpr std::string_view kFirst[] = {"BASE", "HEAD", "HTML", "META"};

bool IsOneOf(std::span<const std::string_view> names, std::string_view name)
{
    return std::ranges::find(names, name) != names.end();
}

bool IsUtf16(std::string_view html)
{
    return html.starts_with("\xFF\xFE") || html.starts_with("\xFE\xFF");
}

/// Whatever the page's character set, this is read as it is meant.
std::string EncodedSitePath(std::string_view path)
{
    std::string encoded = EncodedName(path);
    ReplaceEach(encoded, "%2F", "/"); // no name holds one
    return encoded;
}

/// Puts the marks and the script into a page, from left to right.
class Marker {
  public:
    Marker(std::string_view html, const PageScript& script)
        : html_(html), script_(ScriptElement(script)), own_(script.origin + "/.kiv/"),
          nonce_(script.run)
    {
    }

    std::string Mark()
    {
        ForEachTag(html_, [this](const HtmlTag& tag) { Take(tag); });
        CopyTo(html_.size());
        // A page that is cut off in a tag or in a title would take what follows with it.
        if (!script_.empty())
            marked_.insert(spot_.value_or(BehindDoctype()), script_);
        return std::move(marked_);
    }

  private:
    void Take(const HtmlTag& tag)
    {
        CountLinesTo(tag.at);
        if (tag.name == "META")
            LoosenPolicy(tag);
        const bool is_seen = !tag.is_end && !IsOneOf(kUnseen, tag.name);
        if (tag.is_end ? tag.name == "HEAD" : is_seen || tag.name == "FRAMESET") {
            CopyTo(tag.at);
            PutScript();
        } else if (!has_head_) {
            has_head_ = !IsOneOf(kFirst, tag.name);
            CopyTo(has_head_ ? tag.at : tag.end);
            spot_ = marked_.size();
        }
        if (!is_seen)
            return;
        CopyTo(tag.name_end);
        Append(marked_, {" data-kiv-at=\"", Decimal(line_), ":",
                         std::to_string(tag.at - line_begin_ + 1), "\""});
    }

    void LoosenPolicy(const HtmlTag& tag)
    {
        const PolicySpot spot = PolicyIn(html_.substr(tag.name_end, tag.end - tag.name_end));
        if (spot.size == 0)
            return;
        CopyTo(tag.name_end + spot.at);
        marked_.append(LoosenedPolicy(html_.substr(copied_, spot.size), own_, nonce_));
        copied_ += spot.size;
    }

    /// Where a page without tags begins.
    std::size_t BehindDoctype() const
    {
        const std::size_t doctype = FindNoCase(html_, "<!DOCTYPE");
        const std::size_t end = doctype == npos ? npos : html_.find('>', doctype);
        return end == npos ? (doctype == npos ? 0 : html_.size()) : end + 1;
    }

    void CountLinesTo(std::size_t at)
    {
        // Only what no tag has been counted to: a line may hold a whole page.
        const std::string_view passed = html_.substr(counted_, at - counted_);
        line_ += static_cast<int>(std::ranges::count(passed, '\n'));
        if (const std::size_t last = passed.rfind('\n'); last != npos)
            line_begin_ = counted_ + last + 1;
        counted_ = at;
    }

    void CopyTo(std::size_t at)
    {
        marked_.append(html_.substr(copied_, at - copied_));
        copied_ = at;
    }

    void PutScript()
    {
        marked_.append(script_);
        script_.clear(); // once is enough
    }

    std::string_view html_;
    std::string script_;
    const std::string own_;   // the address of what the script asks for
    const std::string nonce_; // of the script
    std::string marked_;
    std::optional<std::size_t> spot_; // in `marked_`, behind what must stand first
    bool has_head_ = false;           // more than that
    std::size_t copied_ = 0;
    std::size_t counted_ = 0;    // up to here lines are counted
    std::size_t line_begin_ = 0; // 0-based
    int line_ = 1;
};

} // namespace

std::string ScriptElement(const PageScript& script)
{
    return Joined({"<script src=\"", script.origin, "/.kiv/live.js\" nonce=\"", script.run,
                   "\" data-run=\"", script.run, "\" data-secret=\"", script.secret,
                   "\" data-version=\"", script.version, "\" data-page=\"",
                   EncodedSitePath(script.page), "\"></script>"});
}

std::string MarkedPage(std::string_view html, const PageScript& script)
{
    return IsUtf16(html) ? std::string(html) : Marker(html, script).Mark();
}

} // namespace kiv
