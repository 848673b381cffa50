#include "tests/manual/source_text.h"

#include "tests/support/folders.h"

#include <cctype>

namespace kiv::test {

namespace {

namespace fs = std::filesystem;

/// Position behind the literal that begins with the quote at `at`.
std::size_t EndOfLiteral(std::string_view code, std::size_t at)
{
    const char quote = code[at];
    for (++at; at < code.size() && code[at] != quote; ++at)
        if (code[at] == '\\')
            ++at;
    return at + 1;
}

bool IsRaw(std::string_view code, std::size_t quote)
{
    return quote > 0 && code[quote - 1] == 'R';
}

/// Position behind the raw literal whose quote is at `at`: R"mark( … )mark".
std::size_t EndOfRaw(std::string_view code, std::size_t at)
{
    const std::size_t open = code.find('(', at);
    const std::string close = ")" + std::string(code.substr(at + 1, open - at - 1)) + "\"";
    return code.find(close, open) + close.size();
}

std::string Decoded(std::string_view literal)
{
    std::string text;
    for (std::size_t i = 0; i < literal.size(); ++i) {
        if (literal[i] != '\\' || i + 1 == literal.size()) {
            text += literal[i];
            continue;
        }
        const char c = literal[++i];
        text += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
    }
    return text;
}

/// Whether a quote at `at` stands between digits, as in 1'000.
bool IsDigitMark(std::string_view code, std::size_t at)
{
    return code[at] == '\'' && at > 0 && std::isdigit(static_cast<unsigned char>(code[at - 1]));
}

} // namespace

std::string CodeOf(const fs::path& file)
{
    const std::string source = ReadBytes(file);
    const std::string_view all = source;
    std::string code;
    for (std::size_t at = 0; at < all.size();) {
        const std::size_t plain = std::min(all.find_first_of("/\"'", at), all.size());
        code.append(all.substr(at, plain - at));
        at = plain;
        if (at == all.size())
            break;
        std::size_t end = at + 1;
        if (all.substr(at).starts_with("//"))
            end = at = std::min(all.find('\n', at), all.size());
        else if (all.substr(at).starts_with("/*"))
            end = at = all.find("*/", at) + 2;
        else if (all[at] == '"' && IsRaw(all, at))
            end = EndOfRaw(all, at);
        else if (all[at] == '"' || (all[at] == '\'' && !IsDigitMark(all, at)))
            end = EndOfLiteral(all, at);
        code.append(all.substr(at, end - at));
        at = end;
    }
    return code;
}

std::vector<std::string> CodesOf(const std::vector<std::string>& folders)
{
    std::vector<std::string> codes;
    for (const std::string& folder : folders)
        for (const fs::directory_entry& entry : fs::directory_iterator(fs::path(KIV_ROOT) / folder))
            if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h")
                codes.push_back(CodeOf(entry.path()));
    return codes;
}

std::vector<std::string> Literals(std::string_view code)
{
    std::vector<std::string> literals;
    bool joins = false; // only white space since the last literal
    for (std::size_t at = 0; at < code.size();) {
        const char c = code[at];
        if (c == '"' && !IsRaw(code, at)) {
            const std::size_t end = EndOfLiteral(code, at);
            const std::string text = Decoded(code.substr(at + 1, end - at - 2));
            if (joins)
                literals.back() += text;
            else
                literals.push_back(text);
            joins = true;
            at = end;
            continue;
        }
        joins = joins && std::isspace(static_cast<unsigned char>(c)) != 0;
        if (c == '"')
            at = EndOfRaw(code, at);
        else if (c == '\'' && !IsDigitMark(code, at))
            at = EndOfLiteral(code, at);
        else
            ++at;
    }
    return literals;
}

std::vector<std::string> LiteralsBehind(std::string_view code, std::string_view opening)
{
    std::vector<std::string> literals;
    for (std::size_t at = code.find(opening); at != std::string_view::npos;
         at = code.find(opening, at + 1)) {
        std::size_t end = at + opening.size();
        for (int depth = 1; depth > 0 && end < code.size();) {
            const char c = code[end];
            depth += c == '(' || c == '{' ? 1 : c == ')' || c == '}' ? -1 : 0;
            end = c == '"' || c == '\'' ? EndOfLiteral(code, end) : end + 1;
        }
        for (std::string& literal : Literals(code.substr(at, end - at)))
            literals.push_back(std::move(literal));
    }
    return literals;
}

} // namespace kiv::test
