#include "blocks/equations.h"

#include "blocks/fragments.h"
#include "text/text.h"

#include <algorithm>
#include <iterator>

namespace kiv {

namespace {

constexpr std::string_view kRoot = "sqrt";

constexpr std::string_view kTableOpening =
    "\r\n<table border=0 cellpadding=0 cellspacing=2><tr align=center>";
constexpr std::string_view kEquationTableEnd = "</tr></table>\r\n";
constexpr std::string_view kRowBreak = "</tr><tr align=center>\r\n";
constexpr std::string_view kTextOpening =
    R"(<td><font face="Verdana,geneva,Arial,Helvetica,sans-serif" size=2 color=aa0000>)";
constexpr std::string_view kSecondTextOpening =
    R"(<td><font face="Verdana,geneva,Arial,Helvetica,sans-serif" size="2" color=aa0000>)";
constexpr std::string_view kTextClosing = "</font></td>\r\n";
constexpr std::string_view kSpacerOpening =
    R"(<td rowspan="3"><font face="Verdana,geneva,Arial,Helvetica,sans-serif" size=2 color=aa0000>&nbsp;)";
constexpr std::string_view kSpacerClosing = "&nbsp;</font></td>\r\n";
constexpr std::string_view kBlackBarOpening = R"(<td bgcolor="#000000">)";
constexpr std::string_view kBlackBarClosing = "</td>\r\n";
constexpr std::string_view kRootCell =
    R"(<td rowspan=3 valign=top><img src="../images/equation/sqrt.gif" width=10 height=40></td>)";

/// A sign that is drawn by an image.
struct Sign {
    std::string_view text;
    std::string_view image;
};
constexpr Sign kSigns[] = {
    {"[", "lbracket"},  {"]", "rbracket"},  {"(", "lparen"}, {")", "rparen"},
    {"{", "lcbracket"}, {"}", "rcbracket"}, {kRoot, "sqrt"},
};

/// The three rows of the table. A fraction fills all of them, any other cell spans all of them.
struct Rows {
    std::string top;
    std::string bar;
    std::string bottom;
};

/// Appends text with its signs as images.
void AppendText(std::string& row, std::string_view text)
{
    while (!text.empty()) {
        const auto* const sign =
            std::find_if(std::begin(kSigns), std::end(kSigns),
                         [&](const Sign& known) { return text.starts_with(known.text); });
        if (sign == std::end(kSigns)) {
            row += text.front();
            text.remove_prefix(1);
        } else {
            row.append(R"(<img src="../images/equation/)").append(sign->image).append(".gif\">");
            text.remove_prefix(sign->text.size());
        }
    }
}

void AppendFraction(Rows& rows, std::string_view numerator, std::string_view denominator)
{
    rows.top += kTextOpening;
    AppendText(rows.top, numerator);
    rows.top += kTextClosing;
    rows.bar.append(kBlackBarOpening).append(zbar("1", "1")).append(kBlackBarClosing);
    rows.bottom += kSecondTextOpening;
    AppendText(rows.bottom, denominator);
    rows.bottom += kTextClosing;
}

void AppendSpacer(Rows& rows, std::string_view text)
{
    rows.top += kSpacerOpening;
    AppendText(rows.top, text);
    rows.top += kSpacerClosing;
}

/// A term that is no fraction: each "sqrt" is a cell of its own, and so is each piece of text.
void AppendPlainTerm(Rows& rows, std::string_view term)
{
    if (!Contains(term, kRoot)) {
        AppendSpacer(rows, term);
        return;
    }
    for (;;) {
        const std::size_t root = term.find(kRoot);
        const std::string_view piece = term.substr(0, root);
        if (!piece.empty())
            AppendSpacer(rows, piece);
        if (root == npos)
            return;
        rows.top += kRootCell;
        term.remove_prefix(root + kRoot.size());
    }
}

std::string EquationTable(std::string_view formula)
{
    Rows rows;
    for (const std::string_view term : Split(formula, '|')) {
        const std::size_t slash = term.find('\\');
        if (slash == npos)
            AppendPlainTerm(rows, term);
        else
            AppendFraction(rows, term.substr(0, slash), term.substr(slash + 1));
    }
    std::string table(kTableOpening);
    table.append(rows.top).append(kRowBreak).append(rows.bar).append(kRowBreak);
    table.append(rows.bottom).append(kEquationTableEnd);
    return table;
}

} // namespace

void zuequation(std::string& line, BlockContext& context)
{
    constexpr std::size_t kStartTagSize = 12; // "<zuequation>"

    // The tag that was dispatched, however its other letters are written.
    const std::size_t start = line.find("<zu");
    const std::string head = line.substr(0, start);
    line.erase(0, start + kStartTagSize);
    const std::size_t end = line.find(kEquationEnd);
    if (end == npos) {
        // The text before the start tag is lost. The format wants it so.
        context.reportmsg("Oops! Missing zuequation close!");
        return;
    }
    const std::string_view text = line;
    line = head + EquationTable(text.substr(0, end)).append(text.substr(end + kEquationEnd.size()));
}

} // namespace kiv
