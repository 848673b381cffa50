#include "utilities/kept_captions.h"

#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"
#include "utilities/picture_records.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_map>
#include <unordered_set>

namespace kiv {

namespace {

constexpr std::size_t kMostTold = 20; // entries; the others are counted

/// What browsers show beside the two formats of the lists.
constexpr std::array<std::string_view, 9> kOtherFormats = {
    "*.avif", "*.bmp", "*.jpeg", "*.jpe", "*.png", "*.svg", "*.tif", "*.tiff", "*.webp",
};

/// The texts of an entry: all that stands behind the first bar.
std::string_view TextsOf(std::string_view line)
{
    const std::size_t bar = line.find('|');
    return bar == npos ? std::string_view() : line.substr(bar + 1);
}

bool SaysNothing(std::string_view texts)
{
    return texts.find_first_not_of("| ") == npos;
}

/// Knows which entries come back in the new "_alt.txt": the first one of each full-size picture.
class NewEntries {
  public:
    explicit NewEntries(const std::vector<std::string>& pictures)
    {
        for (const std::string& name : pictures) {
            names_.insert(name);
            by_upper_.try_emplace(UpperCase(name), name);
            if (!IsThumbnail(name))
                full_size_.insert(name);
        }
    }

    /// An entry whose picture or its thumbnail was met before is passed over by the lists.
    bool Take(const std::string& file)
    {
        const bool is_first = met_.insert(file).second;
        met_.insert(ThumbnailNameOf(file));
        return is_first && full_size_.contains(file);
    }

    std::string SpellingOf(const std::string& file) const
    {
        if (names_.contains(file))
            return file;
        const auto found = by_upper_.find(UpperCase(file));
        return found == by_upper_.end() ? "" : found->second;
    }

  private:
    std::unordered_set<std::string> names_;
    std::unordered_set<std::string> full_size_;
    std::unordered_set<std::string> met_;
    std::unordered_map<std::string, std::string> by_upper_;
};

/// The old lines, and those of `lost` that are not among them.
std::string WithLines(const std::string& old, const std::vector<LostLine>& lost)
{
    std::unordered_set<std::string_view> there;
    for (std::string_view rest = old; !rest.empty();)
        there.insert(TakeLine(rest));
    std::string text = old;
    if (!old.empty() && !old.ends_with('\n'))
        text += kCrLf;
    for (const LostLine& line : lost)
        if (there.insert(line.text).second)
            Append(text, {line.text, kCrLf});
    return text;
}

void TellOfEntry(Reporter& reporter, const LostLine& lost, const std::string& alt_file)
{
    const std::string quoted = Joined({"\"", lost.file, "\""});
    std::string what;
    std::string other_name = "the picture";
    if (lost.spelled_as == lost.file) {
        what = quoted + " has no such line in _alt.txt any more, which has one for each picture "
                        "that is no thumbnail";
    } else if (!lost.spelled_as.empty()) {
        other_name = "\"" + lost.spelled_as + "\"";
        what = Joined({"the picture ", quoted, " is spelled ", other_name, " in the folder"});
    } else {
        what = "there is no picture " + quoted;
    }
    reporter.Withhold(
        Joined({what, "; its texts are in ", kOldAltFile, " now: ", TextsOf(lost.text)}),
        {alt_file, lost.line, {}},
        Joined(
            {"Copy those that you still want to the line of ", other_name, " in ", kAltFile, "."}));
}

void TellOfLost(Reporter& reporter, const std::vector<LostLine>& lost, const std::string& alt_file)
{
    std::size_t entries = 0;
    std::size_t remarks = 0;
    for (const LostLine& line : lost) {
        if (line.file.empty())
            ++remarks;
        else if (++entries <= kMostTold)
            TellOfEntry(reporter, line, alt_file);
    }
    if (entries > kMostTold)
        reporter.Withhold(
            Joined({std::to_string(entries - kMostTold),
                    " more entries go with no picture, and are in ", kOldAltFile, " now"}),
            {alt_file});
    if (remarks > 0)
        reporter.Withhold(
            Joined({std::to_string(remarks), remarks == 1 ? " remark" : " remarks", " of ",
                    kAltFile, remarks == 1 ? " is" : " are", " in ", kOldAltFile, " now"}),
            {alt_file});
}

} // namespace

std::vector<LostLine> LostLines(std::string_view alt_bytes,
                                const std::vector<std::string>& pictures)
{
    NewEntries entries(pictures);
    std::vector<LostLine> lost;
    int number = 0;
    while (!alt_bytes.empty()) {
        const std::string_view line = TakeLine(alt_bytes);
        ++number;
        if (line.starts_with(';'))
            lost.push_back({number, line, {}, {}});
        if (line.empty() || line.starts_with(';'))
            continue;
        const std::string file(Before(line, '|'));
        if (!entries.Take(file) && !SaysNothing(TextsOf(line)))
            lost.push_back({number, line, line.substr(0, file.size()), entries.SpellingOf(file)});
    }
    return lost;
}

void KeepLostLines(Machine& machine, const std::vector<LostLine>& lost)
{
    if (lost.empty())
        return;
    Files& files = machine.files;
    if (!files.FileExists(kOldAltFile)) {
        files.WriteNewSource(kOldAltFile, WithLines("", lost));
    } else {
        const std::string old = files.ReadFile(kOldAltFile);
        const std::string text = WithLines(old, lost);
        if (text != old)
            files.ReplaceSource(kOldAltFile, old, text);
    }
    TellOfLost(machine.reporter, lost, AbsolutePath(kAltFile, files.CurrentDirectory()));
}

void TellOfOtherFormats(Machine& machine)
{
    std::array<int, kOtherFormats.size()> counts{};
    int all = 0;
    for (const std::string& name : machine.files.ListFiles(".", "*.*"))
        for (std::size_t i = 0; i < kOtherFormats.size(); ++i)
            if (FitsPattern(name, kOtherFormats[i])) {
                ++counts[i];
                ++all;
            }
    if (all == 0)
        return;
    std::string kinds;
    for (std::size_t i = 0; i < kOtherFormats.size(); ++i)
        if (counts[i] > 0)
            Append(kinds, {kinds.empty() ? "" : ", ", Decimal(counts[i]), " ", kOtherFormats[i]});
    machine.reporter.Withhold(
        Joined({all == 1 ? "1 picture is" : Decimal(all) + " pictures are",
                " in none of the lists: ", kinds}),
        {}, "Lists hold *.jpg and *.gif alone: save the pictures so, or write their tags by hand.");
}

} // namespace kiv
