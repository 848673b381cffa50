#include "utilities/picture_sections.h"

#include "text/joined_text.h"
#include "text/text.h"

#include <unordered_map>

namespace kiv {

namespace {

constexpr std::string_view kTagEnd = "\">";
constexpr std::string_view kLinkEnd = "\"></a>";

/// The rows of each base name, in row order.
using RowsByBase = std::unordered_map<std::string, std::vector<int>>;

class Emitter {
  public:
    Emitter(const PictureTable& pictures, std::string_view folder_name)
        : pictures_(pictures), folder_name_(folder_name)
    {
    }

    void EmitThumbnail(const PictureRecord& picture, const RowsByBase& rows);
    void EmitFull(const PictureRecord& picture);

    PictureSections sections;

  private:
    void EmitPair(const PictureRecord& thumbnail, const PictureRecord& full);

    std::string Img(const PictureRecord& picture, std::string_view end) const;
    std::string Box(const PictureRecord& picture, std::string_view content) const;

    const PictureTable& pictures_;
    std::string_view folder_name_;
};

/// The picture's note: its credit, then its caption.
std::string Note(const PictureRecord& picture)
{
    std::string note;
    if (!picture.credit.empty())
        Append(note, {"<div class=\"credit\">", picture.credit, "</div>"});
    if (!picture.caption.empty())
        Append(note, {note.empty() ? "<br>" : "", picture.caption});
    return note;
}

/// The bang call with what is known of one picture.
std::string Bang(const PictureRecord& picture)
{
    return Joined({"!!1[", picture.file, "|", Decimal(picture.size.width), "|",
                   Decimal(picture.size.height), "|", picture.alt, "|", picture.base, "|",
                   picture.credit, "|", picture.caption, "]"});
}

std::string Popup(std::string_view base, std::string_view target, std::string_view width,
                  std::string_view height)
{
    return Joined({"!!pop[p", base, "|", target, "|", width, "|", height, "]"});
}

std::string Emitter::Img(const PictureRecord& picture, std::string_view end) const
{
    return Joined({"<img src=\"", folder_name_, "/", picture.file, "\" width=\"",
                   Decimal(picture.size.width), "\" height=\"", Decimal(picture.size.height),
                   "\" border=\"0\" alt=\"", picture.alt, end});
}

/// A box as wide as the picture, with its note under the content.
std::string Emitter::Box(const PictureRecord& picture, std::string_view content) const
{
    return Joined({"<div class=\"picr\" style=\"width:", Decimal(picture.size.width), "px;\">",
                   content, Note(picture), "</div>"});
}

void Emitter::EmitThumbnail(const PictureRecord& picture, const RowsByBase& rows)
{
    const std::string img = Img(picture, kTagEnd);
    Append(sections.thumbnail_tag, {kCrLf, img});
    Append(sections.thumbnail_box, {kCrLf, Box(picture, img)});
    Append(sections.thumbnail_bang, {kCrLf, Bang(picture)});
    if (!picture.base.ends_with("_t"))
        return;
    const auto partners = rows.find(picture.main_base);
    if (partners == rows.end())
        return;
    for (const int row : partners->second)
        EmitPair(picture, pictures_[row]);
}

void Emitter::EmitPair(const PictureRecord& thumbnail, const PictureRecord& full)
{
    const std::string width = Decimal(full.size.width);
    const std::string height = Decimal(full.size.height);
    const std::string popup_width = Decimal(full.size.width + 40LL);
    const std::string popup_height = Decimal(full.size.height + 40LL);
    const std::string page_height = Decimal(full.size.height + 60LL);

    std::string pair = Joined({"!!1[", thumbnail.file,
                               "|",    Decimal(thumbnail.size.width),
                               "|",    Decimal(thumbnail.size.height),
                               "|",    thumbnail.alt,
                               "|",    thumbnail.base,
                               "|",    thumbnail.main_base,
                               "|",    full.file,
                               "|",    width,
                               "|",    height,
                               "|",    popup_width,
                               "|",    popup_height,
                               "|",    page_height,
                               "]"});
    Append(sections.pair, {pair, kCrLf});
    sections.bang_list.push_back(std::move(pair));

    const std::string picture_file = Joined({folder_name_, "/", full.file});
    const std::string picture_page = Joined({folder_name_, "/", full.base, ".htm"});
    const std::string img = Img(thumbnail, kLinkEnd);
    const std::string popup = Popup(full.base, picture_file, popup_width, popup_height) + img;
    const std::string page_popup = Popup(full.base, picture_page, popup_width, page_height) + img;
    Append(sections.popup_box, {kCrLf, Box(thumbnail, popup)});
    Append(sections.page_popup_box, {kCrLf, Box(thumbnail, page_popup)});
    Append(sections.popup, {kCrLf, popup});
}

void Emitter::EmitFull(const PictureRecord& picture)
{
    const std::string img = Img(picture, kTagEnd);
    const std::string head =
        Joined({"@file = ", picture.base, "\r\n@title = ", picture.alt, kCrLf});

    Append(sections.new_alt_file,
           {picture.file, "|", picture.own_alt, "|", picture.credit, "|", picture.caption, kCrLf});
    Append(sections.full_tag, {kCrLf, img});
    Append(sections.full_box, {kCrLf, Box(picture, img)});
    Append(sections.full_bang, {kCrLf, Bang(picture)});
    Append(sections.page_entries, {head, "@TIGHTPRINT\r\n@@4\r\n", img, "\r\n@@5\r\n\r\n"});
    Append(sections.include, {head, img, kCrLf});
}

} // namespace

PictureSections EmitPictures(const PictureTable& pictures, int count, std::string_view folder_name)
{
    RowsByBase rows;
    for (int row = 1; row <= count; ++row)
        rows[pictures[row].base].push_back(row);
    Emitter emitter(pictures, folder_name);
    for (int row = 1; row <= count; ++row) {
        const PictureRecord& picture = pictures[row];
        if (IsThumbnail(picture.file))
            emitter.EmitThumbnail(picture, rows);
        else
            emitter.EmitFull(picture);
    }
    return std::move(emitter.sections);
}

std::string PictureListText(const PictureSections& sections)
{
    struct Listed {
        const std::string& section;
        std::string_view end = kCrLf;
    };
    const Listed kListed[] = {
        {sections.full_tag},       {sections.thumbnail_tag},
        {sections.popup},          {sections.popup_box},
        {sections.page_popup_box}, {sections.full_box},
        {sections.thumbnail_box},  {sections.pair},
        {sections.full_bang},      {sections.thumbnail_bang, "\r\n\r\n"},
        {sections.page_entries},
    };
    std::string list;
    for (const Listed& listed : kListed)
        if (!listed.section.empty())
            Append(list, {listed.section, listed.end});
    return list;
}

std::string BangListText(const PictureSections& sections)
{
    std::string list = "\r\n;!!1 = <a href=\"!6.htm\"><img src=\"images/!1\" width=!2 height=!3 "
                       "alt=\"!4\"></a>\r\n";
    return list.append(sections.pair).append(kCrLf);
}

std::string BangTableText(const PictureSections& sections, std::size_t cells_per_row,
                          bool active_definition)
{
    std::string table(kCrLf);
    // Commented out in all tables but one, for the user to copy.
    Append(table, {active_definition ? "" : ";",
                   "!!1 = <td>!!pop[p!6|images/!7|!10|!11]<img src=\"images/!1\" width=\"!2\" "
                   "height=\"!3\" alt=\"!4\" border=\"0\"></a><br>!4</td>\r\n<tr>\r\n"});
    for (std::size_t k = 0; k < sections.bang_list.size(); ++k) {
        if (k > 0 && k % cells_per_row == 0)
            table.append("</tr><tr>\r\n");
        Append(table, {sections.bang_list[k], kCrLf});
    }
    return table.append("</tr>\r\n");
}

} // namespace kiv
