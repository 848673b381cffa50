#include "cli/message_printer.h"

#include "cli/quoted_line.h"
#include "cli/shown_path.h"
#include "cli/shown_text.h"
#include "text/text.h"

#include <ostream>

namespace kiv {

namespace {

constexpr std::string_view kYellow = "\x1b[1;33m";
constexpr std::string_view kRed = "\x1b[1;31m";
constexpr std::string_view kCyan = "\x1b[1;36m";
constexpr std::string_view kPlain = "\x1b[0m";
constexpr std::string_view kIndent = "    ";
constexpr std::string_view kAdvice = "    -> "; // no source line begins so

/// A text may have lines of its own: the further ones are set in, empty ones at its end go.
std::string ShownWords(std::string_view text)
{
    text = text.substr(0, text.find_last_not_of("\r\n") + 1);
    std::string shown;
    while (!text.empty())
        shown.append(shown.empty() ? "" : "\n  ").append(ShownLine(TakeLine(text)));
    return shown;
}

std::string Cut(const std::string& text, std::size_t most)
{
    return text.size() <= most ? text : text.substr(0, most) + "...";
}

std::string OnPage(const KeptPlace& where)
{
    return where.page.empty() ? "" : " (page " + ShownLine(where.page) + ")";
}

} // namespace

std::string MessagePrinter::PlaceOf(const KeptPlace& where)
{
    if (where.file.empty())
        return "kiv: ";
    std::string place = ShownUtf8Line(SeenFrom(look_.folder, NativeOrDrive(drives_, where.file)));
    if (where.line > 0)
        place += ":" + Decimal(where.line);
    return place + ": ";
}

std::string MessagePrinter::Coloured(std::string_view word, std::string_view colour) const
{
    std::string coloured(look_.has_colours ? colour : "");
    return coloured.append(word).append(look_.has_colours ? kPlain : "").append(" ");
}

void MessagePrinter::PrintBelow(const KeptPlace& where, std::string_view text,
                                const std::string& hint)
{
    if (!where.file.empty() && where.line > 0) {
        const std::string_view line = lines_.Line(where.file, where.line);
        if (line.find_first_not_of(" \t") != npos)
            out_ << kIndent << ShownLine(QuotedLine(line, text)) << '\n';
    }
    if (!hint.empty())
        out_ << kAdvice << ShownLine(hint) << '\n';
}

void MessagePrinter::Print(const Warning& warning)
{
    if (!look_.tells_all && told_ == kMostTold) {
        ++left_out_;
        return;
    }
    ++told_;
    out_ << PlaceOf(warning.where);
    if (look_.is_build || !warning.where.file.empty())
        out_ << Coloured("warning:", kYellow);
    out_ << ShownWords(look_.tells_all ? warning.text : Cut(warning.text, kLongestText))
         << OnPage(warning.where) << '\n';
    PrintBelow(warning.where, warning.text, warning.hint);
    out_ << std::flush;
}

void MessagePrinter::PrintRest()
{
    if (left_out_ > 0)
        out_ << "kiv: " << left_out_ << (left_out_ == 1 ? " more warning" : " more warnings")
             << (left_out_ == 1 ? " (--verbose tells it)\n" : " (--verbose tells them all)\n");
}

void MessagePrinter::Print(const RunError& error)
{
    out_ << PlaceOf(error.where) << Coloured("error:", kRed) << ShownLine(error.text)
         << OnPage(error.where) << '\n';
    PrintBelow(error.where, error.text, error.hint);
}

void MessagePrinter::Print(const Finding& finding)
{
    const std::string_view colour = finding.severity == Severity::error     ? kRed
                                    : finding.severity == Severity::warning ? kYellow
                                                                            : kCyan;
    out_ << PlaceOf(finding.where)
         << Coloured(std::string(SeverityName(finding.severity)) + ":", colour)
         << ShownLine(look_.tells_all ? finding.text : Cut(finding.text, kLongestText))
         << OnPage(finding.where) << " [" << finding.name << "]\n";
    PrintBelow(finding.where, finding.text, finding.suggestion);
}

void MessagePrinter::Print(const ExternalLink& link)
{
    out_ << PlaceOf(link.where) << ShownLine(link.address) << OnPage(link.where) << '\n';
}

} // namespace kiv
