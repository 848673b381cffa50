// Pictures that are shown in another shape than their own.
#include "inspect/finding_table.h"
#include "inspect/findings.h"
#include "inspect/page_links.h"
#include "platform/run_error.h"
#include "text/joined_text.h"
#include "text/text.h"

#include <map>
#include <optional>

namespace kiv {

namespace {

/// The sizes of pictures, each looked up once.
class Sizes {
  public:
    explicit Sizes(PictureLoader& loader) : loader_(loader) {}

    /// None of what is no picture that can be measured.
    std::optional<PictureSize> Of(const std::string& path)
    {
        const auto [entry, is_new] = sizes_.try_emplace(path);
        if (!is_new)
            return entry->second;
        try {
            entry->second = loader_.Size(path);
        } catch (const RunError&) {
            entry->second.reset();
        }
        return entry->second;
    }

  private:
    PictureLoader& loader_;
    std::map<std::string, std::optional<PictureSize>> sizes_;
};

/// Whether sides are the picture's own, made larger or smaller alike: one of them may be a pixel
/// off. Lines and dots are stretched on purpose.
bool Fits(const SizedPicture& shown, const PictureSize& own)
{
    if (own.width <= 2 || own.height <= 2)
        return true;
    const long long across = static_cast<long long>(shown.width) * own.height;
    const long long down = static_cast<long long>(shown.height) * own.width;
    const long long off = across > down ? across - down : down - across;
    return off <= own.width || off <= own.height;
}

bool IsJpeg(std::string_view path)
{
    return EqualsNoCase(LastChars(path, 4), ".jpg") || EqualsNoCase(LastChars(path, 5), ".jpeg");
}

/// What the file holds; "" when it cannot be read.
std::string ContentOf(const SiteView& site, const std::string& path)
{
    try {
        return site.files.ReadFile(path);
    } catch (const RunError&) {
        return {};
    }
}

/// A camera may have noted in it that the picture is to be turned.
bool IsPhoto(const SiteView& site, const std::string& path)
{
    return IsJpeg(path) && Contains(ContentOf(site, path), "Exif");
}

PictureSize Turned(const PictureSize& size)
{
    return {size.height, size.width};
}

/// Whether a name says that the file is of a kind whose size can be read.
bool IsMeasured(std::string_view path)
{
    return IsJpeg(path) || EqualsNoCase(LastChars(path, 4), ".gif") ||
           EqualsNoCase(LastChars(path, 4), ".png");
}

/// Browsers go by what a file holds: one that is of a kind that cannot be measured here, whatever
/// its name, is not judged.
bool IsBroken(const SiteView& site, const std::string& path)
{
    try {
        site.pictures.Size(path);
        return false;
    } catch (const RunError& error) {
        if (error.kind != ErrorKind::picture)
            return false;
    }
    const std::string content = ContentOf(site, path);
    return !content.starts_with("RIFF") && FromChar(content, 5).substr(0, 4) != "ftyp";
}

std::string Sides(int width, int height)
{
    return Joined({Decimal(width), " by ", Decimal(height)});
}

} // namespace

void FindBrokenPictures(const SiteView& site, FindingSink& sink)
{
    std::map<std::string, bool> broken; // by path
    ForEachLink(site, [&](const LinkedPage& page, const PageLink& link, const Target& target) {
        if (link.kind != LinkKind::picture || target.state != Target::State::found ||
            !IsMeasured(target.path))
            return;
        const auto [entry, is_new] = broken.try_emplace(target.path);
        if (is_new)
            entry->second = IsBroken(site, target.path);
        if (entry->second)
            sink.Add(
                PlaceOf(page, link),
                Joined({"the file ", InQuotes(link.address), " is no picture that can be shown"}),
                "save the picture anew");
    });
}

void FindPictureSizes(const SiteView& site, FindingSink& sink)
{
    Sizes sizes(site.pictures);
    ForEachPage(site, [&](const LinkedPage& page) {
        for (const SizedPicture& shown : page.facts.pictures) {
            const Target& target = *page.targets[shown.link];
            // What lies beside the site is looked at, but not what an address has from the root.
            const bool is_elsewhere =
                target.spelling.starts_with('/') && !site.linked->IsInside(target.path);
            if (target.state != Target::State::found || is_elsewhere)
                continue;
            const std::optional<PictureSize> own = sizes.Of(target.path);
            if (!own || Fits(shown, *own) ||
                (Fits(shown, Turned(*own)) && IsPhoto(site, target.path)))
                continue;
            const PageLink& link = page.facts.links[shown.link];
            sink.Add(PlaceOf(page, link),
                     Joined({"the picture ", InQuotes(link.address), " is ",
                             Sides(own->width, own->height), " pixels, but is shown as ",
                             Sides(shown.width, shown.height)}),
                     Joined({"write width=\"", Decimal(own->width), "\" height=\"",
                             Decimal(own->height), "\", or give one of them alone"}));
        }
    });
}

} // namespace kiv
