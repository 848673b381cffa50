// The utilities with what the workspace knows: the editor, the user's addresses, what an earlier
// grab has chosen, the way to another working directory.
#pragma once

#include "utilities/news_composer.h"

#include <optional>
#include <string>
#include <string_view>

namespace kiv {

struct ConversionWindow;
class Workspace;

struct GrabChoice {
    bool redirect = false;
    bool all = false;
    bool trimmed = false; // implies `all`
};
/// Lists the titles of the pages of the current directory. What is chosen stays chosen until a grab
/// has written its list.
void GrabTitles(Workspace& workspace, const GrabChoice& choice);

/// Works in a folder below the working directory, or in itself when `folder` is empty.
void SizePictures(Workspace& workspace, std::string_view folder);

/// Converts a text; nothing when it is refused with a message.
std::optional<std::string> ConvertText(Workspace& workspace, const ConversionWindow& window,
                                       std::string_view text);
/// Converts the clipboard's text in place.
void ConvertClipboard(Workspace& workspace, ConversionWindow& window);
/// Closes the paragraphs of the clipboard's text.
void CloseParagraphs(Workspace& workspace);

/// Writes a news item and makes its site the working directory. Returns whether it was written.
bool WriteNews(Workspace& workspace, const NewsItem& item, NewsSettings settings);

} // namespace kiv
