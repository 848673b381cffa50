#include "cli/call_texts.h"

#include <algorithm>
#include <array>

namespace kiv {

namespace {

constexpr std::array kCommandTexts = std::to_array<CommandText>({
    {"build", "[DIR] [--eoy]", "Build the pages of a site section (\"Do it!\")",
     "Reads _html.txt and _template.txt of DIR and writes its pages, _toc.txt and _sitemap.txt. "
     "When _singlehtml.txt is there, it receives all pages in one."},
    {"group", "[DIR]", "Build a site section and every folder of its _group.txt (\"group\")",
     "The New Year blocks are switched on. Without _group.txt nothing is built."},
    {"sitemap", "[DIR]",
     "Merge the site maps of a group into _sitemap-master.txt (\"Assemble Site Map\")",
     "Without _group.txt nothing is done."},
    {"grab", "[DIR] [--redirect] [--all | --trimmed]",
     "Make a starting page list from a folder of pages (\"Grab titles\")",
     "Writes grabtitles.txt with the name and title of every HTML and ASP page of DIR."},
    {"pictures", "[DIR] [--folder NAME]", "Write picture lists (\"picture sizer\")",
     "Measures the JPEG and GIF pictures of the folder and writes _alt.txt, _piclist.txt, the "
     "bang lists and _pichtml.txt there. Captions come from _alt.txt."},
    {"convert",
     "[--mode MODE] [--links-list] [--single-spaced] [--poetry-p] [--poetry-br] "
     "[--keep-smart-quotes] [--prefix TEXT]",
     "Convert standard input to material for a page",
     "The result goes to standard output as it is, without a line end of its own. MODE is rs "
     "(x=rs(\"x\") from tab-separated names), js (lines to script-writing calls), getnames (form "
     "fields to a mail script), cleanquotes (entities and plain quotes), newsgrabber (a news line "
     "to a page-list entry), tabtopipe (tab-separated rows to table rows) or ptop (<p> at the end "
     "of a line to </p>); without it an e-mail becomes HTML paragraphs."},
    {"fix-names", "[DIR] [--dry-run]",
     "Make the names of all files safe for the web (\"Fix names\")",
     "My Photo (1).JPG becomes my-photo--1-.jpg: small letters, and hyphens for what a web address "
     "does not bear. Nothing is ever overwritten: the run stops at the first name that is taken. "
     "undo-renames takes it back, from the report that --json prints."},
    {"thumb-names", "[DIR] [--dry-run]", "Mark all pictures as thumbnails (\"add \"_t.gif\"\")",
     "Photo.jpg becomes Photo_t.jpg, and so do all GIF and JPEG pictures that are not named so "
     "already. Nothing is ever overwritten: the run stops at the first name that is taken."},
    {"rename", "[DIR] FIND REPLACEMENT [--dry-run]",
     "Replace text in the names of all files (\"Rename files\")",
     "Every FIND in a name becomes REPLACEMENT, in the extension, too; capitals matter. Nothing is "
     "ever overwritten: the run stops at the first name that is taken."},
    {"undo-renames", "[DIR] --report FILE", "Put the names of a renamer's report back",
     "FILE is what fix-names, thumb-names or rename printed with --json in the same DIR. The last "
     "rename is undone first. Nothing is ever overwritten: the run stops at the first name that is "
     "taken and at the first file that is gone. Started again, it goes on from there."},
    {"dimensions", "START_WIDTH START_HEIGHT NEW_WIDTH NEW_HEIGHT",
     "Scale a picture's width and height in proportion (\"Calculate dimensions\")",
     "Prints the new width and the new height. Leave one of them empty ('') or 0 to have it "
     "computed; with both given the height is computed."},
    {"news",
     "--site N --name NAME [--date D] [--title T] [--newspaper P] [--byline B] [--subhead S] "
     "[--lead FILE] --text FILE [--single-spaced] [--as-is]",
     "Add a news item to a site (\"New News\")",
     "Writes the article to txt\\NAME.txt of the site and enters it in the site's page list. The "
     "sites stand in c:\\utils\\kivnews.ini. Date and newspaper that are not given are read from "
     "NAME."},
    {"reference", "1..4", "Print a section of the quick reference (\"Help\")",
     "1 at-variables, 2 bang macros, 3 the head of _html.txt, 4 everything else."},
});

#ifdef _WIN32
constexpr std::string_view kPaths =
    "Drives are the machine's own; --drive-c and the environment may put a folder in the place of "
    "one. / and \\ both part folders, and names ignore case.\n\n"
    "Only --name and -h are options: -5 and - are values, and so is everything behind --.";
constexpr std::string_view kEnvironment =
    "KIV_DRIVE_X: a folder that stands for drive X, for any letter but Z; --drive-c beats "
    "KIV_DRIVE_C.";
#else
constexpr std::string_view kPaths =
    "A path is a native one or a path with a drive. Z: is the root folder, C: holds the settings "
    "(C:\\utils) and lies in the user's data folder unless told otherwise. / and \\ both part "
    "folders, and names ignore case.\n\n"
    "Only --name and -h are options: -5 and - are values, and so is everything behind --.";
constexpr std::string_view kEnvironment =
    "KIV_DRIVE_C: the folder of drive C:, when --drive-c is not given; else it is kiv/drive_c in "
    "XDG_DATA_HOME or ~/.local/share. KIV_DRIVE_X: the folder of drive X, for any other letter "
    "but Z.";
#endif

constexpr std::array kTopics = std::to_array<Topic>({
    {"Paths", kPaths},
    {"Output",
     "Plain: the final status on standard output, or the result of convert, dimensions and "
     "reference; messages on standard error, each behind kiv: and a fatal error behind kiv: "
     "error:. With --json: one object with the keys status, "
     "messages, error, files, launched and warnings, and renamed or result where there is such.\n\n"
     "Without --launch no program is started; the report lists what would have been. A dry run "
     "prints the renames and touches nothing; it fails where the renaming would."},
    {"Exit status", "0 done; 1 a fatal error of the run; 2 a wrong call, nothing was touched."},
    {"Environment", kEnvironment},
    {"Files",
     "C:\\utils\\kiv_editpad.txt: the editor command. C:\\utils\\ftplist.txt: the upload list. "
     "C:\\utils\\kivaddr.ini: addresses in generated pages. C:\\utils\\kivnews.ini: the sites of "
     "the news composer."},
    {"Examples", "Build a site, and see its report:\n"
                 "  kiv-cli build ~/sites/museum\n"
                 "  kiv-cli --json build ~/sites/museum\n\n"
                 "See which names would change, change them, take it back:\n"
                 "  kiv-cli fix-names ~/pictures --dry-run\n"
                 "  kiv-cli --json fix-names ~/pictures > names.json\n"
                 "  kiv-cli undo-renames ~/pictures --report names.json\n\n"
                 "Make a table of tab-separated rows:\n"
                 "  kiv-cli convert --mode tabtopipe --prefix '!!1' < rows.txt"},
});

} // namespace

std::span<const CommandText> CommandTexts()
{
    return kCommandTexts;
}

const CommandText& TextOf(std::string_view name)
{
    return *std::find_if(kCommandTexts.begin(), kCommandTexts.end(),
                         [&](const CommandText& text) { return text.name == name; });
}

std::span<const Topic> Topics()
{
    return kTopics;
}

std::string Wrapped(std::string_view text, std::size_t width)
{
    std::string lines;
    while (!text.empty()) {
        std::size_t end = text.find('\n');
        std::size_t next = end == std::string_view::npos ? text.size() : end + 1;
        end = std::min(end, text.size());
        if (end > width) {
            end = text.rfind(' ', width);
            next = end + 1;
        }
        lines.append(text.substr(0, end)).append("\n");
        text.remove_prefix(next);
    }
    return lines;
}

} // namespace kiv
