#include "cli/roff.h"

#include "cli/help.h"

#include <algorithm>

namespace kiv {

namespace {

std::string Capitals(std::string_view text)
{
    std::string capitals(text);
    for (char& c : capitals)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return capitals;
}

} // namespace

std::string Roff(std::string_view text)
{
    std::string plain;
    bool line_start = true;
    for (const char c : text) {
        if (c == '\\')
            plain += "\\e";
        else if (c == '-')
            plain += "\\-";
        else if (c == '\'')
            plain += "\\(aq"; // straight, to be copied
        else if (c == '~')
            plain += "\\(ti";
        else if (line_start && c == '.')
            plain += "\\&.";
        else
            plain += c;
        line_start = c == '\n';
    }
    return plain;
}

std::string RoffLines(std::string_view text)
{
    return Roff(Wrapped(text, 72));
}

std::string RoffParagraphs(std::string_view text)
{
    std::string paragraphs;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find("\n\n"), text.size());
        paragraphs.append(paragraphs.empty() ? "" : ".PP\n").append(RoffLines(text.substr(0, end)));
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return paragraphs;
}

std::string RoffHead(std::string_view program, std::string_view summary)
{
    std::string head = ".TH " + Roff(Capitals(program));
    head.append(" 1 " KIV_RELEASE_DATE " \"kiv " KIV_VERSION "\" \"User Commands\"\n.SH NAME\n");
    head.append(Roff(program)).append(" \\- ").append(Roff(summary));
    return head.append("\n.SH SYNOPSIS\n.B ").append(Roff(program)).append("\n");
}

std::string RoffSection(std::string_view heading, std::string_view text)
{
    return ".SH \"" + Capitals(heading) + "\"\n" + RoffParagraphs(text);
}

} // namespace kiv
