#include "cli/call_table.h"

#include "cli/commands.h"
#include "inspect/finding_table.h"
#include "text/windows1252.h"

namespace kiv {

namespace {

constexpr bool kRequired = true;
constexpr bool kOptional = false;

// clang-format off
// Name, what stands for the value, what it is for, what it takes, whether it is required, choices.

constexpr OptionRow kGlobalOptions[] = {
    {"--help", "", "Show this help; -h is the same"},
    {"--version", "", "Show the version"},
    {"--drive-c", "DIR", "Native folder that stands for drive C:", Takes::folder},
    {"--now", "YYYY-MM-DDTHH:MM:SS", "The date and time that pages see", Takes::date_time},
    {"--json", "", "Print one JSON object about the run"},
    {"--launch", "", "Start the programs that the command starts"},
    {"--verbose", "", "Print every warning whole, however many there are"},
};

constexpr OptionRow kDirectory{"DIR", "", "The site's folder (default: the current one)",
                               Takes::folder};
constexpr OptionRow kOneDirectory[] = {kDirectory};
constexpr OptionRow kDryRun[] = {{"--dry-run", "", "Show the renames and touch nothing"}};
constexpr OptionRow kSync{"--sync", "", "Wait until the disk keeps what was written"};
constexpr OptionRow kStrict{"--strict", "", "Exit with 3 when there was any warning"};
constexpr OptionRow kChanged{"--changed", "", "Print the files that changed, one a line"};
constexpr OptionRow kNul{.name = "-0", .about = "End each of these with NUL instead of a line end",
                         .needs = "--changed"};
constexpr OptionRow kBuildOptions[] = {
    {"--eoy", "", "Keep the New Year text between @@EOY lines"},
    kSync, kStrict, kChanged, kNul,
};
constexpr OptionRow kGroupOptions[] = {kSync, kStrict, kChanged, kNul};
constexpr OptionRow kInitOptions[] = {
    {"--news", "", "Add a section for news, ready for \"kiv-cli news\""},
    {.name = "--section", .value = "NAME", .about = "Add a section in the folder NAME",
     .takes = Takes::text, .fault = SectionFault},
};
constexpr OptionRow kAdoptArguments[] = {
    {"FOLDER", "", "The folder of the pages", Takes::folder, kRequired},
};
constexpr OptionRow kAdoptOptions[] = {
    {"--to", "DIR", "The new site's folder (default: FOLDER-site in the current one)", Takes::folder},
};
constexpr OptionRow kWithGroup = {"--group", "",
                                  "Build every folder of _group.txt, too, as group does"};
constexpr OptionRow kWatchOptions[] = {kWithGroup};
constexpr OptionRow kPreviewOptions[] = {
    {.name = "--port", .value = "N",
     .about = "Serve at this port (default: 8098, or a free one); 0 is a free one",
     .takes = Takes::number, .fault = PortFault},
    {"--open", "", "Open the browser"},
    {"--root", "DIR", "Serve this folder, at or above the site's", Takes::folder},
    kWithGroup,
};
constexpr OptionRow kGrabOptions[] = {
    {"--redirect", "", "Add a redirect line to each page, one folder up"},
    {"--all", "", "Copy the lines of each page"},
    {.name = "--trimmed", .about = "Copy the lines of each page's body", .excludes = "--all"},
};
constexpr OptionRow kPicturesOptions[] = {
    {"--folder", "NAME", "Work in this folder below DIR", Takes::text},
};
constexpr OptionRow kThumbsOptions[] = {
    {.name = "--size", .value = "N", .about = "The longer side in pixels (default: 200)",
     .takes = Takes::number, .fault = SizeFault},
    {.name = "--quality", .value = "N", .about = "The quality, 1 to 100 (default: 85)",
     .takes = Takes::number, .fault = QualityFault},
    {"--folder", "NAME", "Work in this folder below DIR", Takes::text},
    {"--force", "", "Also over thumbnails that kiv did not make"},
};
constexpr OptionRow kUploadOptions[] = {
    {"--dry-run", "", "Tell what would be sent; nothing is started"},
};
constexpr OptionRow kEncodeOptions[] = {
    {"--to", "ENCODING", "The encoding that the sources are to be in", Takes::text, kRequired,
     EncodingWords},
    {"--dry-run", "", "Tell what would change and touch nothing"},
    {"--check", "", "The same; exit code 3 when a source is not in the encoding"},
};
constexpr OptionRow kBaseOptions[] = {
    {.name = "--base", .value = "URL", .about = "The address of the site's folder on the web",
     .takes = Takes::text, .required = true, .fault = AddressFault},
};
constexpr OptionRow kConvertOptions[] = {
    {"--mode", "MODE", "The conversion (default: e-mail to HTML)", Takes::text, kOptional,
     ConvertModes},
    {"--links-list", "", "No paragraph tags, for a list of links"},
    {"--single-spaced", "", "Each line is a paragraph"},
    {"--poetry-p", "", "Lines end in <br>, stanzas are paragraphs"},
    {"--poetry-br", "", "Lines end in <br>, stanzas in <br><br>"},
    {"--keep-smart-quotes", "", "cleanquotes leaves curly quotes as entities"},
    {"--prefix", "TEXT", "What tabtopipe puts in front of each row", Takes::text},
};
constexpr OptionRow kDimensionsArguments[] = {
    {"START_WIDTH", "", "The picture's width", Takes::text, kRequired},
    {"START_HEIGHT", "", "The picture's height", Takes::text, kRequired},
    {"NEW_WIDTH", "", "The new width, or empty", Takes::text, kRequired},
    {"NEW_HEIGHT", "", "The new height, or empty", Takes::text, kRequired},
};
constexpr OptionRow kReferenceArguments[] = {
    {"SECTION", "", "The section", Takes::text, kRequired, ReferenceSections},
};
constexpr OptionRow kRenameArguments[] = {
    kDirectory,
    {"FIND", "", "The text to look for", Takes::text, kRequired},
    {"REPLACEMENT", "", "What it becomes", Takes::text, kRequired},
};
constexpr OptionRow kUndoOptions[] = {
    {"--report", "FILE", "A renamer's JSON report (default: the last run in DIR)", Takes::file},
};
constexpr OptionRow kNewsOptions[] = {
    {"--site", "N", "Number of the site, from 1", Takes::number, kRequired},
    {"--name", "NAME", "Name of the .txt file, without .txt", Takes::text, kRequired},
    {"--date", "D", "Date of the item (default: read from NAME)", Takes::text},
    {"--title", "T", "Title of the item", Takes::text},
    {"--newspaper", "P", "Newspaper (default: read from NAME)", Takes::text},
    {"--byline", "B", "Who wrote it", Takes::text},
    {"--subhead", "S", "Subhead", Takes::text},
    {"--lead", "FILE", "A lead sentence, a text file; set in bold", Takes::file},
    {"--text", "FILE", "The article, a text file", Takes::file, kRequired},
    {"--single-spaced", "", "Each line of the article is a paragraph"},
    {"--as-is", "", "The article is HTML already"},
};

constexpr OptionRow kWhyArguments[] = {
    kDirectory,
    {"PLACE", "", "A page or a source, with or without a line", Takes::text, kRequired},
};
constexpr OptionRow kWhyOptions[] = {
    {"--find", "TEXT", "The lines that hold this text", Takes::text},
    {"--eoy", "", "As with the New Year text between @@EOY lines"},
};

constexpr OptionRow kCheckOptions[] = {
    {.name = "--only", .value = "NAMES",
     .about = "Look for these findings alone, a comma between two", .takes = Takes::text,
     .fault = FindingNamesFault, .listed = FindingNames},
    {.name = "--not", .value = "NAMES", .about = "Look for all findings but these",
     .takes = Takes::text, .fault = FindingNamesFault, .listed = FindingNames},
    {"--fail-on", "SEVERITY", "The least that gives exit code 3 (default: error)", Takes::text,
     kOptional, FailureSeverities},
    {"--external", "", "List the addresses on other hosts, too; none is fetched"},
};

constexpr CallRow kCalls[] = {
    {.name = "init",
     .about = "Begin a site, or a further section of one",
     .details = "Writes a small site into DIR, which is made when it is missing: a page list, a template, "
         "a style sheet and a picture. Nothing that is there already is touched; where it lacks a "
         "line, the line is told. Where there is a site already, only the sections are added.",
     .example = "kiv-cli init ~/sites/bakery\n"
                "kiv-cli init ~/sites/bakery --news --section shop",
     .arguments = kOneDirectory, .options = kInitOptions, .start = Start::folder, .run = RunInit},
    {.name = "adopt",
     .about = "Make a site of pages that are there",
     .details = "Reads the pages of FOLDER, which is never written to, and writes page list, template and "
         "what they include into a new folder, such that building it gives back the pages. What stands "
         "beside the pages is copied. Each page is built in memory and compared before the command "
         "says that it is the same.",
     .example = "kiv-cli adopt old-pages --to ~/sites/mill\n"
                "kiv-cli adopt old-pages --to ~/sites/mill --json",
     .arguments = kAdoptArguments, .options = kAdoptOptions, .start = Start::drive_c, .run = RunAdopt},
    {.name = "build",
     .about = "Build the pages of a site section (\"Do it!\")",
     .details = "Reads _html.txt and _template.txt of DIR and writes its pages, _toc.txt and "
         "_sitemap.txt. When _singlehtml.txt is there, it receives all pages in one.",
     .example = "kiv-cli build ~/sites/museum\n"
                "kiv-cli build ~/sites/museum --json\n"
                "kiv-cli build --changed | rsync --files-from=- . host:museum",
     .arguments = kOneDirectory, .options = kBuildOptions, .builds = true, .run = RunBuild},
    {.name = "group",
     .about = "Build a site section and every folder of its _group.txt (\"group\")",
     .details = "The New Year blocks are switched on. Without _group.txt nothing is built.",
     .example = "kiv-cli group ~/sites/museum",
     .arguments = kOneDirectory, .options = kGroupOptions, .builds = true, .run = RunGroup},
    {.name = "watch",
     .about = "Build a site section, and again whenever one of its sources is saved",
     .details = "Tells of each build in a line: the time of day, how long it took, what changed. An "
         "error does not end it: mend the source and save it. Sources are the files that a build "
         "reads or looks for, not style sheets and pictures; preview shows those, too. A page that "
         "was removed by hand is made again at the next change. Ctrl+C ends it, or SIGTERM where it "
         "runs in the background: the code is 0 between two builds, and 1 when a build was at work, "
         "which ends between two pages.",
     .example = "kiv-cli watch ~/sites/museum\n"
                "kiv-cli watch ~/sites/museum --group",
     .arguments = kOneDirectory, .options = kWatchOptions, .builds = true, .goes_on = true,
     .run = RunWatch},
    {.name = "preview",
     .about = "Show a site section in the browser, and build it whenever a source is saved",
     .details = "Prints the address first, then what watch prints, and ends as that does. A page "
         "in the browser loads again when it, its style or a picture of it has changed, and stays at "
         "its place. With Alt held, "
         "what is pointed at is framed and named with its source line; a click opens that line in "
         "the editor, a click with Shift tells how it came about. Without --root the nearest folder "
         "at or above DIR is served that all of the site's addresses stay within. Only this machine "
         "is answered.",
     .example = "kiv-cli preview ~/sites/museum --open\n"
                "kiv-cli preview ~/sites/museum --port 0 --root ~/sites",
     .arguments = kOneDirectory, .options = kPreviewOptions, .builds = true, .goes_on = true,
     .starts_programs = true, .run = RunPreview},
    {.name = "why",
     .about = "Tell why a line of a page looks so, or where a line of a source went",
     .details = "PLACE is a page, such as visit or visit.htm, or a source, such as _html.txt; behind "
         "a \":\" stands a line. A page alone shows each of its lines beside its source; with a line "
         "or --find, all that was done to the line, step by step. Without DIR, in a folder that has no "
         "page list, PLACE's own path leads to the section. Nothing is written.",
     .example = "kiv-cli why ~/sites/museum visit\n"
                "kiv-cli why ~/sites/museum visit.htm:12\n"
                "kiv-cli why ~/sites/museum visit.htm --find Opening\n"
                "kiv-cli why ~/sites/museum _html.txt:30",
     .arguments = kWhyArguments, .options = kWhyOptions, .looks_only = true, .builds = true,
     .run = RunWhy},
    {.name = "check",
     .about = "Look for what is wrong in a site section and on its pages",
     .details = "Builds in memory, with the members of _group.txt where there are any, and looks at "
         "sources and pages. Nothing is written.",
     .example = "kiv-cli check ~/sites/museum\n"
                "kiv-cli check ~/sites/museum --fail-on warning\n"
                "kiv-cli check ~/sites/museum --only dead-link,dead-picture",
     .arguments = kOneDirectory, .options = kCheckOptions, .looks_only = true, .run = RunCheck,
     .names = FindingHelp},
    {.name = "sitemap",
     .about = "Merge the site maps of a group into _sitemap-master.txt (\"Assemble Site Map\")",
     .details = "Without _group.txt nothing is done.",
     .example = "kiv-cli sitemap ~/sites/museum",
     .arguments = kOneDirectory, .run = RunSiteMap},
    {.name = "grab",
     .about = "Make a starting page list from a folder of pages (\"Grab titles\")",
     .details = "Writes grabtitles.txt with the name and title of every HTML and ASP page of DIR.",
     .example = "kiv-cli grab ~/old-pages --trimmed",
     .arguments = kOneDirectory, .options = kGrabOptions, .run = RunGrab},
    {.name = "pictures",
     .about = "Write picture lists (\"picture sizer\")",
     .details = "Measures the *.jpg and *.gif files of the folder and writes _alt.txt, "
         "_piclist.txt, the bang lists and _pichtml.txt there. Captions come from _alt.txt.",
     .example = "kiv-cli pictures ~/sites/museum --folder images",
     .arguments = kOneDirectory, .options = kPicturesOptions, .run = RunPictures},
    {.name = "thumbs",
     .about = "Make the thumbnails that picture lists pair with their pictures",
     .details = "Makes boat_t.jpg for boat.jpg or boat.gif where it is missing, or where kiv made it of "
         "other bytes or with another size or quality. Pictures are turned as the camera was held. "
         "A thumbnail that kiv did not make stays.",
     .example = "kiv-cli thumbs ~/sites/museum/images\n"
                "kiv-cli thumbs ~/sites/museum --folder images --size 160",
     .arguments = kOneDirectory, .options = kThumbsOptions, .run = RunThumbs},
    {.name = "convert",
     .about = "Convert standard input to material for a page",
     .details = "The result goes to standard output as it is, without a line end of its own. "
         "Without a mode an e-mail becomes HTML paragraphs. rs makes x=rs(\"x\") of "
         "tab-separated names, js script-writing calls of lines, getnames a mail script of form "
         "fields, cleanquotes entities and plain quotes, newsgrabber a page-list entry of a news "
         "line, tabtopipe table rows of tab-separated ones; ptop makes </p> of a <p> at the end "
         "of a line. The rows for tabtopipe have a CR LF between them, as copied ones have on "
         "Windows: where LF alone stands there, all is one row.",
     .example = "kiv-cli convert --mode tabtopipe --prefix '!!1' < rows.txt",
     .options = kConvertOptions, .start = Start::drive_c, .run = RunConvert},
    {.name = "dimensions",
     .about = "Scale a picture's width and height in proportion (\"Calculate dimensions\")",
     .details = "Prints the new width and the new height. Leave one of them empty ('') or 0 to "
         "have it computed; with both given the height is computed.",
     .example = "kiv-cli dimensions 800 600 400 ''",
     .arguments = kDimensionsArguments, .start = Start::nothing, .run = RunDimensions},
    {.name = "reference",
     .about = "Print a section of the quick reference (\"Help\")",
     .details = "1 at-variables, 2 bang macros, 3 the head of _html.txt, 4 everything else.",
     .example = "kiv-cli reference 2",
     .arguments = kReferenceArguments, .start = Start::nothing, .run = RunReference},
    {.name = "encode",
     .about = "Bring the sources of a site to UTF-8 or to Windows-1252",
     .details = "Page list, template, what they put in, _alt.txt and the news of DIR and of its group are "
         "changed, with what they declare of the character set; byte order marks go. What "
         "Windows-1252 lacks becomes a reference. Names of files stay. undo-encode takes it back.",
     .example = "kiv-cli encode ~/sites/museum --to utf-8 --dry-run\n"
                "kiv-cli encode ~/sites/museum --to utf-8",
     .arguments = kOneDirectory, .options = kEncodeOptions, .run = RunEncode},
    {.name = "undo-encode",
     .about = "Take back what encode did",
     .details = "The sources of DIR get the very bytes that they had before the last run there. One that "
         "was changed since stays.",
     .example = "kiv-cli undo-encode ~/sites/museum",
     .arguments = kOneDirectory, .run = RunUndoEncode},
    {.name = "feed",
     .about = "Write files for feed readers: rss.xml (RSS 2.0) and atom.xml",
     .details = "They hold the news of DIR and of its group, where there are none the pages by date, "
         "thirty at most. Pages with @NOINDEX are left out. What was not made so is never written over.",
     .example = "kiv-cli feed ~/sites/museum --base https://host.example/museum/",
     .arguments = kOneDirectory, .options = kBaseOptions, .run = RunFeed},
    {.name = "sitemap-xml",
     .about = "Write sitemap.xml, which tells search engines of the pages",
     .details = "Every page of DIR and of its group but those with @NOINDEX and redirects, each with the "
         "time of its last change. What was not made so is never written over.",
     .example = "kiv-cli sitemap-xml ~/sites/museum --base https://host.example/museum/",
     .arguments = kOneDirectory, .options = kBaseOptions, .run = RunSiteMapXml},
    {.name = "upload",
     .about = "Send what has changed to the server, by the command of the upload list",
     .details = "Runs the command that c:\\utils\\ftplist.txt has for DIR: for each changed file where it "
         "holds @@, else once, with the names of the files on its standard input. What has arrived is "
         "remembered, so that an upload that failed goes on with what is left.",
     .example = "kiv-cli upload ~/sites/museum --dry-run\n"
                "kiv-cli upload ~/sites/museum",
     .arguments = kOneDirectory, .options = kUploadOptions, .starts_programs = true,
     .run = RunUpload},
    {.name = "fix-names",
     .about = "Make the names of all files safe for the web (\"Fix names\")",
     .details = "My Photo (1).JPG becomes my-photo--1-.jpg: small letters, and hyphens for what "
         "has no place in a web address. Nothing is ever overwritten: the run stops at the first "
         "name that is taken. undo-renames takes it back.",
     .example = "kiv-cli fix-names ~/pictures --dry-run\n"
                "kiv-cli fix-names ~/pictures --json > names.json",
     .arguments = kOneDirectory, .options = kDryRun, .renames = true, .run = RunFixNames},
    {.name = "thumb-names",
     .about = "Mark all pictures as thumbnails (\"add \"_t.gif\"\")",
     .details = "Photo.jpg becomes Photo_t.jpg, and so do all *.gif and *.jpg files that are not "
         "named so already. Nothing is ever overwritten: the run stops at the first name that is "
         "taken.",
     .example = "kiv-cli thumb-names ~/sites/museum/images",
     .arguments = kOneDirectory, .options = kDryRun, .renames = true, .run = RunThumbNames},
    {.name = "rename",
     .about = "Replace text in the names of all files (\"Rename files\")",
     .details = "Every FIND in a name becomes REPLACEMENT, in the extension, too; capitals "
         "matter. Nothing is ever overwritten: the run stops at the first name that is taken.",
     .example = "kiv-cli rename ~/pictures DSC boat\n"
                "kiv-cli rename -- ~/pictures -old ''",
     .arguments = kRenameArguments, .options = kDryRun, .renames = true, .run = RunRename},
    {.name = "undo-renames",
     .about = "Take back what fix-names, thumb-names or rename did",
     .details = "Puts the names back that the files of DIR had before the last run there, also "
         "one that was cut short. With --report it takes back an earlier run: FILE is what the "
         "renamer printed with --json in the same DIR. The last rename is undone first. Nothing "
         "is ever overwritten: a file whose old name is taken keeps the new one, the others get "
         "theirs back, and the error names the first. Started again, it tries what is left.",
     .example = "kiv-cli undo-renames ~/pictures\n"
                "kiv-cli undo-renames ~/pictures --report names.json",
     .arguments = kOneDirectory, .options = kUndoOptions, .renames = true, .run = RunUndoRenames},
    {.name = "news",
     .about = "Add a news item to a site (\"New News\")",
     .details = "Writes the article to txt\\NAME.txt of the site and enters it in the site's "
         "page list. The sites stand in c:\\utils\\kivnews.ini. Date and newspaper that are not "
         "given are read from NAME. The text files are UTF-8.",
     .example = "kiv-cli news --site 2 --name pr040504 --text bridge.txt",
     .options = kNewsOptions, .run = RunNews},
};
// clang-format on

} // namespace

std::span<const CallRow> Calls()
{
    return kCalls;
}

std::span<const OptionRow> GlobalOptions()
{
    return kGlobalOptions;
}

void GivenValues::Set(std::string_view name, const std::string& value)
{
    values_.insert_or_assign(std::string(name), value);
}

std::string GivenValues::Native(std::string_view name, std::string_view otherwise) const
{
    const auto found = values_.find(name);
    return found == values_.end() ? std::string(otherwise) : found->second;
}

std::string GivenValues::Text(std::string_view name) const
{
    return FromUtf8(Native(name));
}

} // namespace kiv
