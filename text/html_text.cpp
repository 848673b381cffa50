#include "text/html_text.h"

#include "text/text.h"

namespace kiv {

std::string HtmlText(std::string_view text)
{
    std::string html(text);
    ReplaceEach(html, "&", "&amp;");
    ReplaceEach(html, "<", "&lt;");
    ReplaceEach(html, ">", "&gt;");
    return QuoteEscape(html);
}

} // namespace kiv
