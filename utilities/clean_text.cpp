#include "utilities/clean_text.h"

#include "text/joined_text.h"
#include "text/text.h"
#include "utilities/char_entities.h"

#include <array>

namespace kiv {

namespace {

/// Rows of the entity table that find one character each, applied together in one pass.
class CharacterRows {
  public:
    /// Whether one pass gives what the rows would give one after the other: no row of the pass may
    /// put in what `row` finds.
    bool Fits(const EntityRow& row) const { return !Contains(put_in_, row.find); }

    void Add(const EntityRow& row)
    {
        std::string_view& replacement = replacements_[static_cast<unsigned char>(row.find[0])];
        if (replacement.empty())
            replacement = row.replacement;
        put_in_.append(row.replacement);
    }

    void Apply(std::string& text)
    {
        if (put_in_.empty())
            return;
        std::string replaced;
        std::size_t done = 0;
        for (std::size_t at = 0; at < text.size(); ++at) {
            const std::string_view value = replacements_[static_cast<unsigned char>(text[at])];
            if (value.empty())
                continue;
            replaced.append(text, done, at - done).append(value);
            done = at + 1;
        }
        if (done > 0)
            text = std::move(replaced.append(text, done));
        *this = {};
    }

  private:
    std::array<std::string_view, 256> replacements_{};
    std::string put_in_;
};

} // namespace

std::string_view TakeAnyLine(std::string_view& rest)
{
    const std::size_t end = rest.find_first_of("\r\n");
    const std::string_view line = rest.substr(0, end);
    if (end == npos) {
        rest = {};
        return line;
    }
    rest.remove_prefix(end + (rest.substr(end, 2) == kCrLf ? 2 : 1));
    return line;
}

void CollapseBlanks(std::string& text)
{
    std::size_t kept = text.find("  ");
    if (kept == npos)
        return;
    for (std::size_t at = kept; at < text.size(); ++at)
        if (text[at] != ' ' || kept == 0 || text[kept - 1] != ' ')
            text[kept++] = text[at];
    text.resize(kept);
}

void ReplaceEntities(std::string& text)
{
    CharacterRows together;
    for (const EntityRow& row : CharEntityTable()) {
        if (row.find.size() > 1 || !together.Fits(row))
            together.Apply(text);
        if (row.find.size() == 1)
            together.Add(row);
        else
            ReplaceEach(text, row.find, row.replacement);
    }
    together.Apply(text);
}

} // namespace kiv
