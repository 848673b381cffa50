#include "utilities/text_conversions.h"

#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "utilities/clean_text.h"
#include "utilities/seen_names.h"

#include <algorithm>
#include <vector>

namespace kiv {

namespace {

/// The marks of the two poetry styles at a blank line and behind it.
struct PoetryMarks {
    std::string_view at_blank;
    std::string_view behind_blank;
};
constexpr PoetryMarks kParagraphs = {"</p>\r\n", "<p>"};
constexpr PoetryMarks kBreaks = {"<br><br>", ""};

std::string SingleSpaced(std::string_view text)
{
    std::string html;
    while (!text.empty()) {
        const std::string_view line = Trim(TakeAnyLine(text));
        if (!line.empty())
            Append(html, {"<p>", line, "</p>\r\n"});
    }
    return html;
}

std::string Poetry(std::string_view text, const PoetryMarks& marks)
{
    std::string html;
    bool after_blank = false;
    for (bool first = true; !text.empty(); first = false) {
        const std::string_view line = Trim(TakeAnyLine(text));
        if (!line.empty()) {
            html.append(after_blank ? marks.behind_blank : first ? "" : "<br>").append(line);
            after_blank = false;
        } else if (!after_blank) {
            html.append(marks.at_blank);
            after_blank = true;
        }
    }
    return html;
}

std::string Prose(std::string_view text)
{
    std::string html;
    bool new_para = false;
    while (!text.empty()) {
        const std::string_view line = Trim(TakeAnyLine(text));
        if (!line.empty()) {
            Append(html, {" ", line});
            new_para = false;
        } else if (!new_para) {
            // Upper-case tags here alone. The format wants it so.
            html.append("</P>\r\n<P>");
            new_para = true;
        }
    }
    return html;
}

std::string InStyle(std::string_view text, const ConversionBoxes& boxes)
{
    if (boxes.single_spaced)
        return SingleSpaced(text);
    if (boxes.poetry_p)
        return Poetry(text, kParagraphs);
    return boxes.poetry_br ? Poetry(text, kBreaks) : Prose(text);
}

void Clean(std::string& html)
{
    std::replace(html.begin(), html.end(), '\t', ' ');
    ReplaceEach(html, "<P> ", "<P>");
    ReplaceEach(html, " </P> ", "</P>");
    ReplaceEntities(html);
    // No tab is left, so this finds nothing. It belongs to the format all the same.
    ReplaceEach(html, "\xB7\t", "<li>");
    CollapseBlanks(html);
    ReplaceEach(html, " \r\n", kCrLf);
    ReplaceEach(html, "\r\n ", kCrLf);
}

/// A line of pasted text whose second character is a tab, whatever the first, is a list item. (A
/// bullet and a tab need no test of their own: their second character is a tab.)
void CleanListItem(std::string& line)
{
    if (FromChar(line, 2).starts_with('\t')) {
        ReplaceEach(line, "<p>", "");
        ReplaceEach(line, "</p>", "");
        line.replace(0, 2, "<li>");
    }
    if (line.starts_with("<li>") && line.ends_with("</p>"))
        line.resize(line.size() - 4);
}

} // namespace

std::string EmailToHtml(std::string_view text, const ConversionBoxes& boxes)
{
    std::string html = InStyle(text, boxes);
    if (boxes.links_list)
        html = std::string(Trim(html)).append(kCrLf);
    else
        html.insert(0, "<p>").append("</p>\r\n");
    Clean(html);
    return html;
}

std::string TabsToRs(std::string_view text)
{
    std::string script;
    for (const std::string_view piece : Split(text, '\t')) {
        if (!script.empty())
            script += '\t';
        Append(script, {piece, "=rs(\"", piece, "\")\r\n"});
    }
    return script;
}

std::string LinesToJs(std::string_view text)
{
    std::string quoted(text);
    ReplaceEach(quoted, "'", "\\'");
    std::string script = "<script src=\"_player.js\"></script>\r\n\r\n"
                         "<!---- write the following to _player.js ----->\r\n";
    for (const std::string_view line : Split(quoted, kCrLf))
        if (!line.empty())
            Append(script, {"document.write('", line, "');\r\n"});
    return script;
}

std::string FieldNamesToScript(std::string_view text, std::string_view recipient)
{
    constexpr std::string_view kName = "NAME=";
    SeenNames seen;
    std::string names;
    for (std::size_t at = FindNoCase(text, kName); at != npos; at = FindNoCase(text, kName)) {
        // The character behind "NAME=" is skipped whatever it is.
        text = FromChar(text.substr(at + kName.size()), 2);
        const std::size_t quote = text.find('"');
        if (quote == npos)
            throw RunError(ErrorKind::invalid_argument,
                           "a \"NAME=\" of the form has no double quote behind its name", {},
                           "Put the name in double quotes, as in NAME=\"email\", and copy the "
                           "whole form.");
        const std::string_view name = text.substr(0, quote);
        text.remove_prefix(quote + 1);
        const bool separate = !seen.IsEmpty();
        if (seen.Add(name))
            Append(names, {separate ? "|" : "", name});
    }
    return Joined({"@FORMREAD:", names, "\r\n<%if imempty=\"yes\" then%>\r\n",
                   "<h3>Oops! The form was empty. Use your back button.</h3>\r\n<% else %>\r\n",
                   "@SENDEMAIL:Subject|email|", recipient, "|messageout\r\n<% end if %>"});
}

std::string CleanQuotes(std::string_view text, bool keep_smart_quotes)
{
    std::string joined;
    while (!text.empty())
        joined.append(TakeAnyLine(text)).append(kCrLf);
    ReplaceEntities(joined);
    if (!keep_smart_quotes) {
        ReplaceEach(joined, "&lsquo;", "'");
        ReplaceEach(joined, "&rsquo;", "'");
        ReplaceEach(joined, "&ldquo;", "\"");
        ReplaceEach(joined, "&rdquo;", "\"");
    }
    std::string cleaned;
    cleaned.reserve(joined.size());
    std::string line;
    for (std::string_view rest = joined; !rest.empty();) {
        line = TakeAnyLine(rest);
        CleanListItem(line);
        cleaned.append(line).append(kCrLf);
    }
    CollapseBlanks(cleaned);
    return cleaned;
}

bool IsNewsLine(std::string_view text)
{
    return text.starts_with("!!");
}

std::string NewsLineToEntry(std::string_view text)
{
    const std::string_view line = text.empty() ? text : TakeLine(text);
    const std::vector<std::string_view> fields = Split(line, '|');
    if (fields.size() < 3)
        throw RunError(
            ErrorKind::subscript, "the news line has fewer than three fields", {},
            "Copy the whole line, as in \"!!1[date|file|title|byline|newspaper|subhead]\".");
    const std::string_view tag = line.starts_with("!!1") ? "!!2" : "!!1";
    return Joined({"@file = ", fields[1], "\r\n@title = ", fields[2], kCrLf, tag, FromChar(line, 4),
                   "\r\n++txt\\", fields[1], ".txt\r\n\r\n@@EOY\r\n\r\n"});
}

std::string WithoutLineFeeds(std::string_view text)
{
    std::string without(text);
    std::replace(without.begin(), without.end(), '\n', ' ');
    return without;
}

std::string TabsToPipes(std::string_view text, std::string_view prefix)
{
    std::string table = "<table width=\"100%\">\r\n";
    std::string row;
    while (!text.empty()) {
        row = TakeAnyLine(text);
        std::replace(row.begin(), row.end(), '\t', '|');
        row = std::string(Trim(row));
        ReplaceEach(row, " |", "|");
        ReplaceEach(row, "| ", "|");
        ReplaceEach(row, "  ", " ");
        Append(table, {prefix, "[", row, "]\r\n"});
    }
    return table.append("</table>");
}

std::string ptop(std::string_view text)
{
    std::string closed;
    closed.reserve(text.size());
    while (!text.empty()) {
        const std::string_view from_here = text;
        const std::string_view line = TakeLine(text);
        const std::string_view end =
            from_here.substr(line.size(), from_here.size() - text.size() - line.size());
        if (EqualsNoCase(LastChars(line, 3), "<p>"))
            Append(closed, {line.substr(0, line.size() - 2), "/p>", end});
        else
            Append(closed, {line, end});
    }
    return closed;
}

} // namespace kiv
