#include "desktop/command_words.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

struct CommandWords {
    std::string_view name;
    std::string_view tip;
};

// clang-format off
constexpr auto kWords = std::to_array<CommandWords>({
    {"build", "Build the pages of the current directory"},
    {"build-one", "Build the pages of the current directory alone"},
    {"group", "Build the current directory and every directory of its _group.txt, with the New Year switch on"},
    {"edit-template", "Open _template.txt in the editor"},
    {"edit-content", "Open _html.txt in the editor"},
    {"explore", "Show the current directory in the file manager"},
    {"explore-1", "Show the first output directory of the page list in the file manager"},
    {"explore-2", "Show the last output directory of the page list in the file manager"},
    {"store-directory", "Start in the current directory from now on"},
    {"choose-directory", "Choose another current directory"},
    {"exit", "Start in the current directory from now on, and end the program"},
    {"upload", "Upload what the batch file lists"},
    {"lanthorn", "Start Lanthorn"},
    {"lower-case", "Lower-case the name of every file in the current directory"},
    {"rename", "Find a text in every file name and put another in its place"},
    {"fix-names", "Make the name of every file in the current directory safe for the web"},
    {"thumb-names", "Put \"_t\" before the ending of every GIF and JPEG picture"},
    {"dimensions", "Calculate the new height or width of a picture"},
    {"edit-contents", "Open the _html.txt of every directory of the group in the editor"},
    {"edit-templates", "Open the _template.txt of every directory of the group in the editor"},
    {"edit-upload-list", "Open the upload list in the editor"},
    {"edit-upload-batch", "Open the upload batch file in the editor"},
    {"quit", "End the program; the directory to start in stays as it is"},
    {"jump", "Make this directory the current one"},
    {"edit-jumps", "Open the list of this menu in the editor"},
    {"reload-jumps", "Read the list of this menu again"},
    {"convert", "Make HTML of the text in the clipboard"},
    {"convert-news", "Make a news line and a list entry of the line in the clipboard"},
    {"convert-names", "Make scripts for the form fields in the clipboard"},
    {"convert-quotes", "Clean the text in the clipboard of curly quotes and the like"},
    {"convert-rs", "Make assignments of the tab-delimited names in the clipboard"},
    {"convert-js", "Make script lines that write the text in the clipboard"},
    {"close-paragraphs", "End each line of the text in the clipboard that ends in <p> with </p>"},
    {"convert-tabs", "Make rows with bars of the table in the clipboard"},
    {"pictures", "List the pictures of the current directory with their sizes"},
    {"pictures-images", "List the pictures of the folder images with their sizes"},
    {"new-year", "Take the lines between @@EOY marks into builds, or leave them out again"},
    {"sitemap", "Merge the site maps of the group into one file and open it in the editor"},
    {"single-page", "Build all pages into _singlehtml.txt when that file is there"},
    {"news", "Compose a news item"},
    {"grab", "List the titles of the pages in the current directory"},
    {"grab-redirect", "List the titles of the pages, each with a redirect"},
    {"grab-all", "List the titles and the contents of the pages"},
    {"grab-trimmed", "List the titles and the contents of the pages, without what frames them"},
    {"reference", "Look up the syntax of page lists and templates"},
});
// clang-format on

} // namespace

std::string_view CommandTip(std::string_view name)
{
    const auto* const found = std::find_if(
        kWords.begin(), kWords.end(), [&](const CommandWords& row) { return row.name == name; });
    return found == kWords.end() ? std::string_view() : found->tip;
}

} // namespace kiv
