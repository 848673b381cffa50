// News item composer: an article becomes a body file of a site, a bang line and a page list entry.
#pragma once

#include "platform/machine.h"
#include "utilities/news_settings.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kiv {

/// Where articles lie, below the folder of the page list.
inline constexpr std::string_view kNewsArticleFolder = "txt\\";

/// The end of the newest entry. The empty line behind "@@EOY" lets the next run find and remove
/// that switch.
inline constexpr std::string_view kNewsEntryEnd = "@@EOY\r\n\r\n";

/// The fields of the window "News Item".
struct NewsItem {
    std::size_t site = 0;  // number of the preset, from 1; 0 or past the last: none is chosen
    std::string file_name; // `Text1`, without extension
    std::string date;
    std::string title;
    std::string newspaper;
    std::string byline;
    std::string subhead;
    std::string text; // `Text7`
    std::string lead; // `Text8`
    bool single_spaced = false;
    bool as_is = false; // the text is not cleaned
};

/// Typing the file name: fills the date and the newspaper as far as the name tells them.
void FillFromName(NewsItem& item, const NewsSettings& settings);

/// The six header values in the order of the bang line, joined with "|": "Show Source String".
std::string SourceString(const NewsItem& item);

/// "Grab source": puts the fields of a source string or bang line, the first line of `clipboard`,
/// into the header fields. Missing ones become empty.
void GrabSource(NewsItem& item, std::string_view clipboard);

/// What the composer needs of its surroundings.
struct NewsDesk {
    NewsSettings settings;
    std::string editor_command;
    /// Makes a folder (full path, ends in "\") the working directory, with all that belongs to it.
    std::function<void(std::string_view folder)> switchto;
};

/// "Do It!": tests the fields, then composes the item. Returns whether it was written; else a
/// message says why. Throws RunError of kind `file` for a missing folder or page list.
bool ComposeNews(Machine& machine, const NewsDesk& desk, const NewsItem& item);

/// The text cleaner: blank lines part paragraphs, and the text is cleaned as an e-mail is.
std::string cleanme(std::string_view text);

} // namespace kiv
