// The command that adds a news item to a site.
#include "cli/call_definitions.h"
#include "shell/utilities.h"
#include "shell/workspace.h"
#include "text/windows1252.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

namespace kiv {

namespace {

struct NewsOptions {
    std::string site;
    std::string name;
    std::string date;
    std::string title;
    std::string newspaper;
    std::string byline;
    std::string subhead;
    std::string lead;
    std::string text;
    bool single_spaced = false;
    bool as_is = false;
    // An option that is given counts even when it is empty.
    bool has_date = false;
    bool has_newspaper = false;
    bool has_lead = false;
};

/// The preset's number; 0, which is none, for a number that no preset can have. Nothing when the
/// text is no whole number.
std::optional<std::size_t> SiteNumber(std::string_view text)
{
    const bool negative = text.starts_with('-');
    if (negative)
        text.remove_prefix(1);
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos)
        return std::nullopt;
    constexpr std::size_t kAny = 1000; // far above the number of presets
    std::size_t number = 0;
    for (const char digit : text)
        number = std::min(number * 10 + static_cast<std::size_t>(digit - '0'), kAny);
    return negative ? 0 : number;
}

void RunNews(CallDesk& desk, const NewsOptions& options)
{
    Workspace& workspace = desk.workspace;
    Files& files = workspace.machine().files;
    NativePaths& native_paths = workspace.machine().native_paths;
    NewsItem item;
    item.text = files.ReadFile(native_paths.FromNative(options.text));
    if (options.has_lead)
        item.lead = files.ReadFile(native_paths.FromNative(options.lead));
    NewsSettings settings = ReadNewsSettings(files);
    item.site = SiteNumber(options.site).value_or(0);
    item.file_name = FromUtf8(options.name);
    FillFromName(item, settings);
    if (options.has_date)
        item.date = FromUtf8(options.date);
    if (options.has_newspaper)
        item.newspaper = FromUtf8(options.newspaper);
    item.title = FromUtf8(options.title);
    item.byline = FromUtf8(options.byline);
    item.subhead = FromUtf8(options.subhead);
    item.single_spaced = options.single_spaced;
    item.as_is = options.as_is;
    WriteNews(workspace, item, std::move(settings));
}

} // namespace

void AddNewsCommand(CLI::App& app, Call& call)
{
    const auto options = std::make_shared<NewsOptions>();
    CLI::App* const command = AddCommand(app, "news", [&app, &call, options] {
        if (!SiteNumber(options->site))
            throw CLI::ValidationError("--site takes a number, not " + options->site);
        const CLI::App* const news = app.get_subcommand("news");
        options->has_date = news->count("--date") > 0;
        options->has_newspaper = news->count("--newspaper") > 0;
        options->has_lead = news->count("--lead") > 0;
        call.run = [options](CallDesk& desk) { RunNews(desk, *options); };
    });
    AddValue(*command, "--site", options->site, "N", "Number of the site, from 1")->required();
    AddValue(*command, "--name", options->name, "NAME", "Name of the .txt file, without .txt")
        ->required();
    AddValue(*command, "--date", options->date, "D", "Date of the item (default: read from NAME)");
    AddValue(*command, "--title", options->title, "T", "Title of the item");
    AddValue(*command, "--newspaper", options->newspaper, "P",
             "Newspaper (default: read from NAME)");
    AddValue(*command, "--byline", options->byline, "B", "Who wrote it");
    AddValue(*command, "--subhead", options->subhead, "S", "Subhead");
    AddValue(*command, "--lead", options->lead, "FILE",
             "A lead sentence, a text file; set in bold");
    AddValue(*command, "--text", options->text, "FILE", "The article, a text file")->required();
    AddSwitch(*command, "--single-spaced", options->single_spaced,
              "Each line of the article is a paragraph");
    AddSwitch(*command, "--as-is", options->as_is, "The article is HTML already");
}

} // namespace kiv
