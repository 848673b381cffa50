#include "exchange/shared_pieces.h"

#include "text/text.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <utility>

namespace kiv {

namespace {

constexpr std::size_t kLeastLines = 5;
constexpr std::size_t kLeastPieceLength = 200; // in characters, its lines' ends among them
constexpr std::size_t kMostShared = 200;
constexpr std::size_t kMostOnPage = 8;     // who edits a page wants to see its text
constexpr std::size_t kLongestPage = 3000; // in lines; longer ones are included whole

/// A line of a page.
struct Spot {
    std::size_t page;
    std::size_t line;
};

class PieceSearch {
  public:
    explicit PieceSearch(const std::vector<OwnText>& pages);

    SharedPieces Find();

  private:
    void NoteWindows(std::size_t page);
    void TakeAt(const Spot& spot);
    std::vector<Spot> Alike(const Spot& spot) const;
    std::size_t LengthAt(const std::vector<Spot>& alike) const;
    bool IsSame(const Spot& spot, const Spot& other) const;
    bool IsFree(const Spot& spot) const { return spans_[spot.page][spot.line] != 0; }
    std::string_view LineAt(const Spot& spot) const
    {
        return (*pages_[spot.page].lines)[spot.line];
    }

    const std::vector<OwnText>& pages_;
    std::vector<std::vector<std::size_t>> spans_;  // of each line its span, from 1; 0: it is taken
    std::vector<std::vector<std::size_t>> hashes_; // of the window that begins at a line
    std::unordered_map<std::size_t, std::vector<Spot>> spots_; // by window, one for each page
    SharedPieces found_;
};

PieceSearch::PieceSearch(const std::vector<OwnText>& pages)
    : pages_(pages), spans_(pages.size()), hashes_(pages.size())
{
    found_.places.resize(pages.size());
    for (std::size_t page = 0; page < pages.size(); ++page) {
        const std::size_t count = pages[page].lines->size();
        spans_[page].assign(count, 0);
        hashes_[page].assign(count, 0);
        if (count > kLongestPage)
            continue;
        for (std::size_t span = 0; span < pages[page].spans.size(); ++span)
            for (std::size_t i = pages[page].spans[span].first; i < pages[page].spans[span].end;
                 ++i)
                spans_[page][i] = span + 1;
        NoteWindows(page);
    }
}

void PieceSearch::NoteWindows(std::size_t page)
{
    const std::vector<std::string_view>& lines = *pages_[page].lines;
    for (std::size_t i = 0; i + kLeastLines <= lines.size(); ++i) {
        if (spans_[page][i] == 0 || spans_[page][i] != spans_[page][i + kLeastLines - 1])
            continue;
        std::size_t hash = 1;
        for (std::size_t line = i; line < i + kLeastLines; ++line)
            hash = hash * 31 + std::hash<std::string_view>()(lines[line]);
        hashes_[page][i] = hash;
        std::vector<Spot>& spots = spots_[hash];
        if (spots.empty() || spots.back().page != page)
            spots.push_back({page, i});
    }
}

/// Whether both go on in their spans with the same line.
bool PieceSearch::IsSame(const Spot& spot, const Spot& other) const
{
    return spot.line < spans_[spot.page].size() && other.line < spans_[other.page].size() &&
           IsFree(spot) && IsFree(other) && LineAt(spot) == LineAt(other);
}

/// The places where the same lines begin, the given one first.
std::vector<Spot> PieceSearch::Alike(const Spot& spot) const
{
    std::vector<Spot> alike{spot};
    const auto spots = spots_.find(hashes_[spot.page][spot.line]);
    if (spots == spots_.end())
        return alike;
    for (const Spot& other : spots->second) {
        bool is_same = other.page != spot.page && found_.places[other.page].size() < kMostOnPage;
        for (std::size_t i = 0; is_same && i < kLeastLines; ++i)
            is_same = IsSame({spot.page, spot.line + i}, {other.page, other.line + i});
        if (is_same)
            alike.push_back(other);
    }
    return alike;
}

/// How many lines they have in common, none of them over the end of a span.
std::size_t PieceSearch::LengthAt(const std::vector<Spot>& alike) const
{
    const auto goes_on = [&](std::size_t length) {
        return std::ranges::all_of(alike, [&](const Spot& spot) {
            const Spot next{spot.page, spot.line + length};
            return IsSame({alike.front().page, alike.front().line + length}, next) &&
                   spans_[next.page][next.line] == spans_[spot.page][spot.line];
        });
    };
    std::size_t length = 0;
    while (goes_on(length))
        ++length;
    return length;
}

void PieceSearch::TakeAt(const Spot& spot)
{
    const std::vector<Spot> alike = Alike(spot);
    const std::size_t length = alike.size() < 2 ? 0 : LengthAt(alike);
    std::vector<std::string_view> piece;
    std::size_t size = 0;
    for (std::size_t i = 0; i < length; ++i) {
        piece.push_back(LineAt({spot.page, spot.line + i}));
        size += piece.back().size() + 2;
    }
    if (length < kLeastLines || size < kLeastPieceLength)
        return;
    for (const Spot& each : alike) {
        found_.places[each.page].push_back({found_.pieces.size(), each.line});
        std::fill_n(spans_[each.page].begin() + static_cast<std::ptrdiff_t>(each.line), length, 0U);
    }
    found_.pieces.push_back(std::move(piece));
}

SharedPieces PieceSearch::Find()
{
    for (std::size_t page = 0; page < pages_.size(); ++page)
        for (std::size_t line = 0; line < spans_[page].size(); ++line) {
            if (found_.pieces.size() == kMostShared || found_.places[page].size() == kMostOnPage)
                break;
            if (hashes_[page][line] != 0 && IsFree({page, line}))
                TakeAt({page, line});
        }
    for (std::vector<PiecePlace>& places : found_.places)
        std::ranges::sort(places, {}, &PiecePlace::first);
    return std::move(found_);
}

} // namespace

SharedPieces FindPieces(const std::vector<OwnText>& pages)
{
    return PieceSearch(pages).Find();
}

} // namespace kiv
