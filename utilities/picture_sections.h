// The text sections of the picture list.
#pragma once

#include "utilities/picture_records.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// Every section begins empty and grows record by record.
struct PictureSections {
    std::string new_alt_file;
    std::string full_tag;
    std::string full_box;
    std::string full_bang;
    std::string page_entries;
    std::string include;
    std::string thumbnail_tag;
    std::string thumbnail_box;
    std::string thumbnail_bang;
    std::string pair;
    std::string popup;
    std::string popup_box;
    std::string page_popup_box;
    std::vector<std::string> bang_list; // one call for each thumbnail and full-size picture
};

/// The sections of records 1 to `count`. `folder_name` stands before every picture's name.
PictureSections EmitPictures(const PictureTable& pictures, int count, std::string_view folder_name);

/// The content of "_piclist.txt".
std::string PictureListText(const PictureSections& sections);

/// The content of "_banglist.txt", and of the bang lists that are tables.
std::string BangListText(const PictureSections& sections);
std::string BangTableText(const PictureSections& sections, std::size_t cells_per_row,
                          bool active_definition);

} // namespace kiv
