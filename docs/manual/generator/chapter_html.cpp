#include "docs/manual/generator/chapter_html.h"

#include "docs/manual/generator/chapter.h"
#include "docs/manual/generator/prose.h"
#include "text/text.h"

#include <map>

namespace kiv::manual {

namespace {

constexpr std::string_view kOpenLine = "%{-}"; // no line end follows

/// How a section of an example is shown.
struct Form {
    std::string_view label; // the section's rest follows it
    bool source;            // of the left column
    bool lines;             // its lines are shown; else its rest
};

const std::map<std::string_view, Form>& Forms()
{
    static const std::map<std::string_view, Form> forms = {
        {"args", {"kiv-cli ", true, false}},
        {"in", {"", true, true}},
        {"folder", {"an empty folder: ", true, false}},
        {"stdin", {"The clipboard", true, true}},
        {"out", {"", false, true}},
        {"why", {"kiv-cli why ", false, true}},
        {"findings", {"Found", false, true}},
        {"mend", {"Mended: ", false, true}},
        {"absent", {"not there: ", false, false}},
        {"message", {"Message", false, true}},
        {"warning", {"Warning: ", false, false}},
        {"status", {"Status: ", false, false}},
        {"files", {"Files written", false, true}},
        {"launched", {"Programs started", false, true}},
        {"renamed", {"Renamed", false, true}},
        {"result", {"The clipboard afterwards", false, true}},
        {"error", {"The run stops: ", false, false}},
    };
    return forms;
}

int HexDigit(char c)
{
    const std::size_t at = std::string_view("0123456789ABCDEF").find(c);
    return at == npos ? -1 : static_cast<int>(at);
}

/// "%{E9}" or "%{0D0A}" as the characters of those codes.
std::string Decoded(std::string_view line)
{
    std::string text;
    while (!line.empty()) {
        const std::size_t end = line.starts_with("%{") ? line.find('}') : npos;
        const std::string_view codes = end == npos ? std::string_view{} : line.substr(2, end - 2);
        std::string bytes;
        for (std::size_t i = 0; i + 1 < codes.size(); i += 2)
            if (HexDigit(codes[i]) >= 0 && HexDigit(codes[i + 1]) >= 0)
                bytes += static_cast<char>(HexDigit(codes[i]) * 16 + HexDigit(codes[i + 1]));
        const bool escape = !codes.empty() && bytes.size() * 2 == codes.size();
        text += escape ? bytes : std::string(1, line[0]);
        line.remove_prefix(escape ? end + 1 : 1);
    }
    return text;
}

/// The lines as they are shown. Tabs get a mark of their own, since nobody sees them; a picture is
/// no text, and two bytes a character are none that a page could show.
std::string Shown(const Section& section)
{
    std::string text;
    for (std::string_view line : section.lines) {
        const bool open = line.ends_with(kOpenLine);
        if (open)
            line.remove_suffix(kOpenLine.size());
        text += Decoded(line);
        if (!open || !text.ends_with('\n'))
            text += '\n';
    }
    if (Contains(text, std::string_view("\0", 1)))
        return section.rest.ends_with(".txt") ? "(UTF-16)\n" : "(a picture)\n";
    std::erase(text, '\r');
    std::string html = Escaped(text);
    ReplaceEach(html, "\t", "<span class=\"tab\">\t</span>");
    return html;
}

/// A line end at the very beginning of a pre element is not shown: it needs another one.
const char* FirstLineEnd(std::string_view shown)
{
    return shown.starts_with('\n') ? "\n" : "";
}

class ExampleWriter {
  public:
    explicit ExampleWriter(bool steps) : steps_(steps) {}

    std::string Write(const Example& example)
    {
        std::string source;
        std::string outcome;
        std::map<std::string, std::string> files;
        for (const Section& section : example.sections) {
            const Form& form = Forms().at(section.word);
            (form.source ? source : outcome) += SectionHtml(section, form, files);
        }
        files_before_ = std::move(files);
        std::string html = "<div class=\"example\" id=\"line" + Decimal(example.line) + "\">\n";
        html.append("<h4>").append(InlineHtml(example.title)).append("</h4>\n");
        html.append("<div class=\"source\">\n").append(source).append("</div>\n");
        html.append("<div class=\"outcome\">\n").append(outcome).append("</div>\n</div>\n");
        return html;
    }

  private:
    std::string SectionHtml(const Section& section, const Form& form,
                            std::map<std::string, std::string>& files)
    {
        std::string label = Escaped(std::string(form.label) + Decoded(section.rest));
        if (!form.lines)
            return "<p class=\"" + section.word + "\">" + label + "</p>\n";
        const std::string key = section.word + " " + section.rest;
        const std::string shown = files[key] = Shown(section);
        if (shown.empty())
            label += " (empty)";
        const bool same = steps_ && (WasShown(key, shown) || WasMade(section, shown));
        const std::string pre = "<pre class=\"" + section.word + "\" data-name=\"" +
                                Escaped(Decoded(section.rest)) + "\">" + FirstLineEnd(shown) +
                                shown + "</pre>";
        if (same)
            return Folded(label + " (as before)", pre);
        if (IsLongListing(section))
            return Folded(label + " (" + Decimal(static_cast<long long>(section.lines.size())) +
                              " lines)",
                          pre);
        return "<div class=\"file\"><div class=\"name\">" + label + "</div>" + pre + "</div>\n";
    }

    static std::string Folded(const std::string& label, const std::string& pre)
    {
        return "<details><summary>" + label + "</summary>" + pre + "</details>\n";
    }

    /// Whether it is what few read line by line: a style sheet or a drawing of some length.
    static bool IsLongListing(const Section& section)
    {
        constexpr std::size_t kLong = 20; // lines
        return section.lines.size() > kLong &&
               (section.rest.ends_with(".css") || section.rest.ends_with(".svg"));
    }

    bool WasShown(const std::string& key, const std::string& shown) const
    {
        const auto before = files_before_.find(key);
        return before != files_before_.end() && before->second == shown;
    }

    /// Whether a source is what the example before has made.
    bool WasMade(const Section& section, const std::string& shown) const
    {
        return section.word == "in" && WasShown("out " + section.rest, shown);
    }

    bool steps_;
    std::map<std::string, std::string> files_before_;
};

} // namespace

std::string ChapterHtml(std::string_view text)
{
    constexpr std::string_view kSteps = "!steps\n";
    const bool steps = text.starts_with(kSteps);
    std::vector<Block> blocks = ReadChapter(text);
    if (steps)
        blocks.front().prose.front().clear();
    ExampleWriter examples(steps);
    std::string html;
    for (const Block& block : blocks) {
        html += ProseHtml(block.prose);
        for (const Example& example : block.example)
            html += examples.Write(example);
    }
    return html;
}

} // namespace kiv::manual
