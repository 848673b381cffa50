#include "exchange/adopted_bodies.h"

#include "exchange/protected_line.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kMostPieces = 12; // of a page that are included as they are
constexpr std::size_t kNear = 4;        // so few lines between two such pieces go with them

/// A page's name as part of a file's, "sub_about": nothing in it that a build acts on.
std::string PlainStem(std::string_view page)
{
    page = page.substr(0, page.rfind('.'));
    std::string stem;
    for (const char c : page.substr(page.size() - std::min<std::size_t>(page.size(), 60))) {
        const bool is_plain =
            (c >= '0' && c <= '9') || (AsciiUpper(c) >= 'A' && AsciiUpper(c) <= 'Z');
        stem += is_plain || c == '-' ? c : '_';
    }
    return stem;
}

/// Lines that are said one by one, or not at all.
struct Piece {
    std::size_t first;
    std::size_t end;
    bool is_said;
};

std::vector<Piece> PiecesOf(const std::vector<std::optional<std::string>>& said)
{
    std::vector<Piece> pieces;
    for (std::size_t i = 0; i < said.size(); ++i) {
        const bool is_said = said[i].has_value();
        if (!pieces.empty() && pieces.back().is_said == is_said) {
            ++pieces.back().end;
            continue;
        }
        // What lies between two pieces that are not said, and is short, goes with them.
        const std::size_t count = pieces.size();
        if (!is_said && count >= 2 && pieces.back().end - pieces.back().first < kNear) {
            pieces.pop_back();
            pieces.back().end = i + 1;
        } else {
            pieces.push_back({i, i + 1, is_said});
        }
    }
    return pieces;
}

bool IsSayable(const std::vector<Piece>& pieces, std::size_t lines)
{
    std::size_t unsaid = 0;
    std::size_t count = 0;
    for (const Piece& piece : pieces)
        if (!piece.is_said) {
            unsaid += piece.end - piece.first;
            ++count;
        }
    return count <= kMostPieces && unsaid * 2 <= lines;
}

/// As a file has them that ends without a line end.
std::string Inner(std::span<const std::string_view> lines)
{
    std::string text = WithEnds(lines);
    text.resize(text.size() - kCrLf.size());
    return text;
}

} // namespace

std::string IncludedFiles::AddText(std::string_view page, std::string content)
{
    const auto known = names_.find(content);
    if (known != names_.end())
        return known->second;
    std::string name;
    const std::string stem = Joined({texts_, "\\", PlainStem(page)});
    for (int number = 1; name.empty() || !taken_.insert(LowerCase(name)).second; ++number)
        name = Joined({stem, number == 1 ? "" : "-" + std::to_string(number), ".txt"});
    names_.emplace(content, name);
    files_.emplace(name, std::move(content));
    return name;
}

std::string IncludedFiles::AddPart(std::string_view name, std::string content)
{
    std::string path = Joined({parts_, "\\", name, ".txt"});
    files_.insert_or_assign(path, std::move(content));
    return path;
}

std::string SayAsItIs(std::string_view text, std::string_view page, IncludedFiles& files)
{
    return "!++" + files.AddText(page, std::string(text));
}

std::vector<std::string> SayLines(std::span<const std::string_view> lines, std::string_view page,
                                  IncludedFiles& files)
{
    std::vector<std::optional<std::string>> said;
    for (const std::string_view line : lines)
        said.push_back(ProtectedLine(line));
    const std::vector<Piece> pieces = PiecesOf(said);
    if (!IsSayable(pieces, lines.size()))
        return {SayAsItIs(Inner(lines), page, files)};
    std::vector<std::string> sources;
    for (const Piece& piece : pieces)
        if (piece.is_said)
            for (std::size_t i = piece.first; i < piece.end; ++i)
                sources.push_back(std::move(*said[i]));
        else
            sources.push_back(
                SayAsItIs(Inner(lines.subspan(piece.first, piece.end - piece.first)), page, files));
    return sources;
}

} // namespace kiv
