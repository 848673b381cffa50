#include "tests/cases/case_file.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace kiv::test {

std::vector<std::string> WithoutBlankEnds(std::vector<std::string> lines)
{
    for (std::string& line : lines)
        line.erase(line.find_last_not_of(' ') + 1);
    while (!lines.empty() && lines.back().empty())
        lines.pop_back();
    return lines;
}

namespace {

int HexDigit(char c)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const std::size_t at = kDigits.find(c);
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

/// "%{0D0A}" as the bytes 0D and 0A; anything that is no such escape stays.
std::string Decoded(std::string_view line)
{
    std::string text;
    while (true) {
        const std::size_t escape = line.find("%{");
        text += line.substr(0, escape);
        if (escape == std::string_view::npos)
            return text;
        line.remove_prefix(escape);
        const std::size_t end = line.find('}');
        std::string bytes;
        bool valid = end != std::string_view::npos && end > 2 && end % 2 == 0;
        for (std::size_t i = 2; valid && i < end; i += 2) {
            const int high = HexDigit(line[i]);
            const int low = HexDigit(line[i + 1]);
            valid = high >= 0 && low >= 0;
            bytes.push_back(static_cast<char>(static_cast<unsigned char>(high * 16 + low)));
        }
        text += valid ? bytes : std::string(1, line[0]);
        line.remove_prefix(valid ? end + 1 : 1);
    }
}

std::vector<std::string> CutArguments(std::string_view text)
{
    std::vector<std::string> arguments;
    bool open = false;
    bool quoted = false;
    for (const char c : text) {
        if (c == '"') {
            quoted = !quoted;
            if (!open)
                arguments.emplace_back();
            open = true;
        } else if (c == ' ' && !quoted) {
            open = false;
        } else {
            if (!open)
                arguments.emplace_back();
            open = true;
            arguments.back() += c;
        }
    }
    for (std::string& argument : arguments)
        argument = Decoded(argument);
    return arguments;
}

/// The lines of one section; what becomes of them is decided when the section ends.
struct Section {
    std::string word;
    std::string rest;
    std::vector<std::string> lines;

    std::string Text(std::string_view line_end) const
    {
        constexpr std::string_view kNoEnd = "%{-}";
        std::string text;
        for (const std::string& line : lines) {
            const bool open = line.ends_with(kNoEnd);
            text += Decoded(open ? line.substr(0, line.size() - kNoEnd.size()) : line);
            if (!open)
                text += line_end;
        }
        return text;
    }

    std::vector<std::string> DecodedLines() const
    {
        std::vector<std::string> decoded;
        for (const std::string& line : lines)
            decoded.push_back(Decoded(line));
        return decoded;
    }

    /// Lines joined with CR LF, no line end after the last.
    std::string Message() const
    {
        std::string text = Text("\r\n");
        if (!lines.empty() && text.ends_with("\r\n") && !lines.back().ends_with("%{-}"))
            text.resize(text.size() - 2);
        return text;
    }
};

using Take = std::function<void(Case&, const Section&)>;

const std::map<std::string, Take>& Directives()
{
    static const std::map<std::string, Take> directives = {
        {"note", [](Case&, const Section&) {}},
        {"args", [](Case& c, const Section& s) { c.arguments = CutArguments(s.rest); }},
        {"in", [](Case& c, const Section& s) { c.in[Decoded(s.rest)] = s.Text("\n"); }},
        {"folder", [](Case& c, const Section& s) { c.folders.push_back(Decoded(s.rest)); }},
        {"stdin", [](Case& c, const Section& s) { c.standard_input = s.Text("\n"); }},
        {"out", [](Case& c, const Section& s) { c.out[Decoded(s.rest)] = s.Text("\r\n"); }},
        {"absent", [](Case& c, const Section& s) { c.absent.insert(Decoded(s.rest)); }},
        {"message", [](Case& c, const Section& s) { c.messages.push_back(s.Message()); }},
        {"warning", [](Case& c, const Section& s) { c.warnings.push_back(Decoded(s.rest)); }},
        {"status", [](Case& c, const Section& s) { c.status = Decoded(s.rest); }},
        {"files", [](Case& c, const Section& s) { c.files = s.DecodedLines(); }},
        {"launched", [](Case& c, const Section& s) { c.launched = s.DecodedLines(); }},
        {"renamed", [](Case& c, const Section& s) { c.renamed = s.DecodedLines(); }},
        {"result", [](Case& c, const Section& s) { c.result = s.Text("\r\n"); }},
        {"why",
         [](Case& c, const Section& s) {
             c.questions.push_back({CutArguments(s.rest), WithoutBlankEnds(s.DecodedLines())});
         }},
        {"findings", [](Case& c, const Section& s) { c.findings = s.DecodedLines(); }},
        {"mend", [](Case& c, const Section& s) { c.mends[Decoded(s.rest)] = s.Text("\n"); }},
        {"error", [](Case& c, const Section& s) { c.error = s.rest; }},
        {"where", [](Case& c, const Section& s) { c.where = Decoded(s.rest); }},
        {"hint", [](Case& c, const Section& s) { c.hint = Decoded(s.rest); }},
        {"not-on-windows", [](Case& c, const Section& s) { c.not_on_windows = s.rest; }},
    };
    return directives;
}

class CaseReader {
  public:
    explicit CaseReader(std::string file) : file_(std::move(file)) {}

    void Take(std::string line, int number)
    {
        if (line.ends_with('\r'))
            line.pop_back();
        if (!line.starts_with("#:")) {
            if (!cases_.empty())
                section_.lines.push_back(std::move(line));
            return;
        }
        EndSection();
        const std::size_t blank = line.find(' ');
        section_ = {line.substr(2, blank - 2),
                    blank == std::string::npos ? "" : line.substr(blank + 1),
                    {}};
        place_ = file_ + ":" + std::to_string(number);
        if (section_.word == "case") {
            cases_.emplace_back();
            cases_.back().title = section_.rest;
            cases_.back().place = place_;
        } else if (!Directives().contains(section_.word)) {
            throw std::runtime_error(place_ + ": unknown directive " + section_.word);
        }
    }

    std::vector<Case> End()
    {
        EndSection();
        return std::move(cases_);
    }

  private:
    void EndSection()
    {
        if (cases_.empty() || section_.word.empty() || section_.word == "case")
            return;
        Directives().at(section_.word)(cases_.back(), section_);
    }

    std::string file_;
    std::string place_;
    Section section_;
    std::vector<Case> cases_;
};

} // namespace

std::vector<Case> ReadCaseFile(const std::string& path)
{
    CaseReader reader(std::filesystem::path(path).filename().string());
    std::ifstream stream(path, std::ios::binary);
    int number = 0;
    for (std::string line; std::getline(stream, line);)
        reader.Take(line, ++number);
    return reader.End();
}

} // namespace kiv::test
