#include "shell/thumbnails.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "shell/way_back.h"
#include "shell/workspace.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"
#include "utilities/picture_records.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace kiv {

namespace {

constexpr std::string_view kJpeg = ".jpg";

bool IsJpegName(std::string_view name)
{
    return EqualsNoCase(LastChars(name, kJpeg.size()), kJpeg);
}

/// Thumbnails are JPEGs, whatever the picture is.
std::string OwnThumbnailName(std::string_view picture)
{
    std::string name = ThumbnailNameOf(picture);
    if (!IsJpegName(name))
        name.replace(name.rfind('.'), npos, kJpeg);
    return name;
}

/// A picture and the thumbnail that it is to have.
struct Pair {
    std::string picture;
    std::string thumbnail;
};

/// The pictures of the current directory that are to have a thumbnail. Of two whose thumbnails
/// would have one name, case aside, it is the JPEG's, else that of the first.
std::vector<Pair> PairsOf(const std::vector<std::string>& names)
{
    std::map<std::string, Pair> pairs;
    for (const std::string& name : names) {
        if (IsThumbnail(name) || name.starts_with('.'))
            continue;
        Pair pair{name, OwnThumbnailName(name)};
        Pair& kept = pairs[UpperCase(pair.thumbnail)];
        if (kept.picture.empty() || (IsJpegName(name) && !IsJpegName(kept.picture)))
            kept = std::move(pair);
    }
    std::vector<Pair> list;
    list.reserve(pairs.size());
    for (auto& [key, pair] : pairs)
        list.push_back(std::move(pair));
    return list;
}

/// How many of them there are, for the status.
struct Counts {
    int made = 0;
    int fresh = 0;
    int of_others = 0;
    int failed = 0;
};

class ThumbnailRun {
  public:
    ThumbnailRun(Machine& machine, const ThumbnailWish& wish)
        : files_(machine.files), reporter_(machine.reporter), wish_(wish)
    {
        for (std::string& name : PictureFiles(machine))
            names_.push_back(std::move(name));
        for (const std::string& name : names_)
            if (IsThumbnail(name))
                bases_.insert(std::string(Before(name, '.')));
    }

    void MakeAll()
    {
        const std::vector<Pair> pairs = PairsOf(names_);
        int done = 0;
        for (const Pair& pair : pairs) {
            Look(pair);
            reporter_.Step(++done, static_cast<int>(pairs.size()));
        }
        Tell();
    }

  private:
    /// What bears the thumbnail's name, or a picture of another kind that goes with this one.
    bool IsOfOthers(const Pair& pair, const std::string& mark) const
    {
        if (files_.IsLink(pair.thumbnail)) // its end may lie anywhere
            return true;
        if (files_.NameIsTaken(pair.thumbnail))
            return mark.empty() && !wish_.over_others;
        return bases_.contains(std::string(Before(pair.thumbnail, '.')));
    }

    std::string MarkAt(const std::string& thumbnail) const
    {
        return files_.FileExists(thumbnail)
                   ? MarkOfThumbnail(files_.ReadPart(thumbnail, 0, kThumbnailHead))
                   : "";
    }

    void Look(const Pair& pair)
    {
        const std::string mark = MarkAt(pair.thumbnail);
        if (IsOfOthers(pair, mark)) {
            ++counts_.of_others;
            TellIfOlder(pair);
            return;
        }
        const std::string picture = files_.ReadFile(pair.picture);
        if (!mark.empty() && mark == ThumbnailMark(picture, wish_.look)) {
            ++counts_.fresh;
            return;
        }
        Make(pair, picture);
    }

    void Make(const Pair& pair, const std::string& picture)
    {
        std::string thumbnail;
        try {
            thumbnail = MakeThumbnail(picture, wish_.look);
        } catch (const RunError& error) {
            ++counts_.failed;
            reporter_.Withhold(
                Joined({"no thumbnail could be made of ", pair.picture, ": ", error.text}),
                {AbsolutePath(pair.picture, files_.CurrentDirectory())}, error.hint);
            return;
        }
        files_.WriteFile(pair.thumbnail, thumbnail);
        ++counts_.made;
    }

    void TellIfOlder(const Pair& pair)
    {
        if (!files_.FileExists(pair.thumbnail) ||
            files_.Stamp(pair.thumbnail).changed >= files_.Stamp(pair.picture).changed)
            return;
        reporter_.Withhold(
            Joined({pair.thumbnail, " is older than its picture and was not made by kiv"}),
            {AbsolutePath(pair.thumbnail, files_.CurrentDirectory())},
            "It stays as it is. Move it away, or let thumbs write over it with --force.");
    }

    void Tell()
    {
        std::string text = Joined(
            {Decimal(counts_.made), counts_.made == 1 ? " thumbnail" : " thumbnails", " made"});
        const std::pair<int, std::string_view> others[] = {
            {counts_.fresh, " up to date"},
            {counts_.of_others, " not made by kiv and left alone"},
            {counts_.failed, " could not be made"},
        };
        for (const auto& [count, what] : others)
            if (count > 0)
                Append(text, {", ", Decimal(count), what});
        reporter_.Status(text);
    }

    Files& files_;
    Reporter& reporter_;
    const ThumbnailWish& wish_;
    std::vector<std::string> names_;
    std::set<std::string, std::less<>> bases_; // of the thumbnails that are there
    Counts counts_;
};

} // namespace

void MakeThumbnails(Workspace& workspace, const ThumbnailWish& wish)
{
    Machine& machine = workspace.machine();
    const WayBack way_back(machine.files);
    if (!wish.folder.empty())
        machine.files.ChangeDirectory(wish.folder);
    const std::unique_ptr<FolderLock> lock =
        machine.files.LockFolder(machine.files.CurrentDirectory());
    ThumbnailRun(machine, wish).MakeAll();
}

} // namespace kiv
