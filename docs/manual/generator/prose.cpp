#include "docs/manual/generator/prose.h"

#include "text/html_text.h"
#include "text/text.h"
#include "text/windows1252.h"

namespace kiv::manual {

namespace {

constexpr std::string_view kIndent = "    ";

/// What a line is by its head.
enum class Kind { empty, heading, subheading, picture, item, step, row, code, text };

/// The length of "1. " and its kin at the head of a line; 0 when there is none.
std::size_t StepMark(std::string_view line)
{
    const std::size_t digits = line.find_first_not_of("0123456789");
    return digits != 0 && digits != npos && line.substr(digits).starts_with(". ") ? digits + 2 : 0;
}

Kind KindOf(std::string_view line)
{
    if (Trim(line).empty())
        return Kind::empty;
    if (line.starts_with("# "))
        return Kind::heading;
    if (line.starts_with("## "))
        return Kind::subheading;
    if (line.starts_with("!["))
        return Kind::picture;
    if (line.starts_with("- "))
        return Kind::item;
    if (StepMark(line) > 0)
        return Kind::step;
    if (line.starts_with("| "))
        return Kind::row;
    return line.starts_with(kIndent) ? Kind::code : Kind::text;
}

std::string Heading(std::string_view tag, std::string_view text)
{
    const std::string name(tag);
    return "<" + name + " id=\"" + HeadingId(text) + "\">" + InlineHtml(text) + "</" + name + ">\n";
}

/// "![words](file)": the words are for those who do not see the picture.
std::string Picture(std::string_view line)
{
    const std::size_t words_end = line.find("](");
    if (words_end == npos)
        return {};
    const std::string_view file = line.substr(words_end + 2, line.rfind(')') - words_end - 2);
    return "<p><img src=\"" + Escaped(file) + "\" alt=\"" + Escaped(line.substr(2, words_end - 2)) +
           "\"></p>\n";
}

/// A span with marks, and how much of the line it takes; 0 when none begins here.
struct MarkedSpan {
    Span span;
    std::size_t length;
};

MarkedSpan SpanAt(std::string_view line)
{
    const std::size_t code_end = line.starts_with('`') ? line.find('`', 1) : npos;
    if (code_end != npos)
        return {{SpanKind::code, line.substr(1, code_end - 1), {}}, code_end + 1};
    const std::size_t strong_end = line.starts_with("**") ? line.find("**", 2) : npos;
    if (strong_end != npos)
        return {{SpanKind::strong, line.substr(2, strong_end - 2), {}}, strong_end + 2};
    const std::size_t words_end = line.starts_with('[') ? line.find("](") : npos;
    const std::size_t link_end = words_end == npos ? npos : line.find(')', words_end);
    if (link_end != npos)
        return {{SpanKind::link, line.substr(1, words_end - 1),
                 line.substr(words_end + 2, link_end - words_end - 2)},
                link_end + 1};
    return {{SpanKind::plain, {}, {}}, 0};
}

} // namespace

std::vector<std::string> Cells(std::string_view row)
{
    std::vector<std::string> cells(1);
    bool code = false;
    row.remove_prefix(2);
    for (std::size_t i = 0; i < row.size(); ++i) {
        code ^= row[i] == '`';
        if (!code && row.substr(i).starts_with(" | ")) {
            cells.emplace_back();
            i += 2;
        } else {
            cells.back() += row[i];
        }
    }
    return cells;
}

namespace {

/// Goes through lines and takes what belongs together.
class ProseWriter {
  public:
    explicit ProseWriter(const std::vector<std::string>& lines) : lines_(lines) {}

    std::string Write()
    {
        while (at_ < lines_.size())
            WriteBlock();
        return html_;
    }

  private:
    void WriteBlock()
    {
        const std::string_view line = lines_[at_];
        switch (KindOf(line)) {
        case Kind::empty:
            ++at_;
            break;
        case Kind::heading:
            html_ += Heading("h2", line.substr(2));
            ++at_;
            break;
        case Kind::subheading:
            html_ += Heading("h3", line.substr(3));
            ++at_;
            break;
        case Kind::picture:
            html_ += Picture(line);
            ++at_;
            break;
        case Kind::item:
            WriteItems("ul", Kind::item);
            break;
        case Kind::step:
            WriteItems("ol", Kind::step);
            break;
        case Kind::row:
            WriteTable();
            break;
        case Kind::code:
            WriteCode();
            break;
        case Kind::text:
            html_ += "<p>" + InlineHtml(Joined()) + "</p>\n";
            break;
        }
    }

    bool Is(Kind kind) const { return at_ < lines_.size() && KindOf(lines_[at_]) == kind; }

    /// The line and those that go on with it: plain text, at most two blanks in.
    std::string Joined()
    {
        std::string text = lines_[at_++];
        while (Is(Kind::text))
            text.append(" ").append(Trim(lines_[at_++]));
        return text;
    }

    void WriteItems(std::string_view tag, Kind kind)
    {
        html_.append("<").append(tag).append(">\n");
        while (Is(kind)) {
            const std::size_t mark = kind == Kind::step ? StepMark(lines_[at_]) : 2;
            html_ += "<li>" + InlineHtml(Joined().substr(mark)) + "</li>\n";
        }
        html_.append("</").append(tag).append(">\n");
    }

    void WriteTable()
    {
        html_ += "<div class=\"wide\"><table>\n";
        for (const char* tag = "th"; Is(Kind::row); tag = "td") {
            html_ += "<tr>";
            for (const std::string& cell : Cells(lines_[at_++]))
                html_.append("<")
                    .append(tag)
                    .append(">")
                    .append(InlineHtml(cell))
                    .append("</")
                    .append(tag)
                    .append(">");
            html_ += "</tr>\n";
        }
        html_ += "</table></div>\n";
    }

    void WriteCode()
    {
        html_ += "<pre>";
        for (bool first = true; Is(Kind::code); first = false)
            html_.append(first ? "" : "\n").append(Escaped(lines_[at_++].substr(kIndent.size())));
        html_ += "</pre>\n";
    }

    const std::vector<std::string>& lines_;
    std::size_t at_ = 0;
    std::string html_;
};

} // namespace

std::string Escaped(std::string_view text)
{
    std::string html;
    for (const char c : HtmlText(text)) {
        const auto code = CodePoint(c);
        if (code > 0x7E || (code < 0x20 && c != '\t' && c != '\n'))
            html += "&#" + Decimal(static_cast<long long>(code)) + ";";
        else
            html += c;
    }
    return html;
}

std::vector<Span> Spans(std::string_view line)
{
    std::vector<Span> spans;
    std::size_t plain = 0; // characters at the head of `line` that are in no span yet
    while (plain < line.size()) {
        const MarkedSpan marked = SpanAt(line.substr(plain));
        if (marked.length == 0) {
            ++plain;
            continue;
        }
        if (plain > 0)
            spans.push_back({SpanKind::plain, line.substr(0, plain), {}});
        spans.push_back(marked.span);
        line.remove_prefix(plain + marked.length);
        plain = 0;
    }
    if (!line.empty())
        spans.push_back({SpanKind::plain, line, {}});
    return spans;
}

std::string InlineHtml(std::string_view line)
{
    constexpr std::size_t kShort = 29; // characters of code that stay on one line
    std::string html;
    for (const Span& span : Spans(line)) {
        if (span.kind == SpanKind::code)
            html.append(span.text.size() <= kShort ? "<code class=\"short\">" : "<code>")
                .append(Escaped(span.text))
                .append("</code>");
        else if (span.kind == SpanKind::strong)
            html += "<strong>" + InlineHtml(span.text) + "</strong>";
        else if (span.kind == SpanKind::link)
            html += "<a href=\"" + Escaped(span.target) + "\">" + InlineHtml(span.text) + "</a>";
        else
            html += Escaped(span.text);
    }
    return html;
}

std::string InlineText(std::string_view line)
{
    std::string text;
    for (const Span& span : Spans(line)) {
        const bool holds_marks = span.kind == SpanKind::strong || span.kind == SpanKind::link;
        text += holds_marks ? InlineText(span.text) : std::string(span.text);
    }
    return text;
}

std::string ProseHtml(const std::vector<std::string>& lines)
{
    return ProseWriter(lines).Write();
}

std::string HeadingId(std::string_view heading)
{
    std::string id;
    for (const char c : LowerCase(heading)) {
        const bool word = (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (word)
            id += c;
        else if (!id.empty() && !id.ends_with('-'))
            id += '-';
    }
    if (id.ends_with('-'))
        id.pop_back();
    return id;
}

} // namespace kiv::manual
