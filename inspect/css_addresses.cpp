#include "inspect/css_addresses.h"

#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

/// Reads a style sheet from left to right.
class CssReader {
  public:
    explicit CssReader(std::string_view css) : css_(css) {}

    std::vector<CssAddress> Read()
    {
        while (at_ < css_.size()) {
            const std::string_view rest = css_.substr(at_);
            if (rest.starts_with("/*")) {
                SkipComment();
            } else if (StartsWithNoCase(rest, "@import")) {
                at_ += 7;
                is_import_ = true;
            } else if (StartsWithNoCase(rest, "url(")) {
                at_ += 4;
                SkipBlanks();
                TakeUrl();
            } else if (rest[0] == '"' || rest[0] == '\'') {
                TakeString();
            } else {
                is_import_ = is_import_ && rest[0] != ';';
                ++at_;
            }
        }
        return std::move(found_);
    }

  private:
    /// Both signs of its end belong to it: "*/" and a "*" behind it begin no other.
    void SkipComment()
    {
        const std::size_t end = css_.find("*/", at_ + 2);
        at_ = end == npos ? css_.size() : end + 2;
    }

    void SkipBlanks() { at_ = std::min(css_.find_first_not_of(kHtmlBlanks, at_), css_.size()); }

    void TakeUrl()
    {
        if (at_ < css_.size() && (css_[at_] == '"' || css_[at_] == '\'')) {
            const std::string_view text = StringHere();
            Keep(text);
            at_ += text.size() + 1;
            return;
        }
        const std::size_t end = std::min(css_.find(')', at_), css_.size());
        std::string_view address = css_.substr(at_, end - at_);
        address = address.substr(0, address.find_last_not_of(kHtmlBlanks) + 1);
        Keep(address);
        at_ = end;
    }

    void TakeString()
    {
        const std::string_view text = StringHere();
        if (is_import_)
            Keep(text);
        at_ += text.size() + 1;
    }

    /// Moves behind the opening quote. The string ends at its quote or with the line, unless a "\"
    /// stands before.
    std::string_view StringHere()
    {
        const char quote = css_[at_++];
        std::size_t end = at_;
        while (end < css_.size() && css_[end] != quote && css_[end] != '\n')
            end += css_[end] == '\\' ? 2U : 1U;
        return css_.substr(at_, std::min(end, css_.size()) - at_);
    }

    void Keep(std::string_view address)
    {
        if (!address.empty())
            found_.push_back({std::string(address), at_, is_import_});
        is_import_ = false;
    }

    std::string_view css_;
    std::size_t at_ = 0;
    bool is_import_ = false; // the next string is an address
    std::vector<CssAddress> found_;
};

} // namespace

std::vector<CssAddress> CssAddresses(std::string_view css)
{
    return CssReader(css).Read();
}

} // namespace kiv
