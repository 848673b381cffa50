// The marks in a page list behind which the news composer puts an item, and what it says of them.
#pragma once

#include "platform/reporter.h"

#include <string>
#include <string_view>
#include <vector>

namespace kiv {

inline constexpr std::string_view kNewsLineMark = ";inserthere1";  // of the bang line
inline constexpr std::string_view kNewsEntryMark = ";inserthere2"; // of the page entry

/// A mark with the line end that makes it one.
std::string NewsMarkLine(std::string_view mark);

enum class NewsMark {
    found,
    absent,
    unusable, // there, but with no CR LF right behind it
};

/// Whether a page list has a place for what goes behind `mark`.
NewsMark FindNewsMark(std::string_view page_list, std::string_view mark);

/// A page list that an item was for.
struct NewsList {
    std::string path;       // absolute
    std::string_view bytes; // as it was before the item
    bool is_home = false;   // a home page list, which gets no page entry
};

/// Tells in the status what was written and what each list has got, and notes each list that had no
/// place for something, with what to do. The list of the site comes first.
void TellNews(Reporter& reporter, std::string_view article, const std::vector<NewsList>& lists);

} // namespace kiv
