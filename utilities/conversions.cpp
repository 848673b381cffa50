#include "utilities/conversions.h"

#include "platform/site_files.h"
#include "utilities/text_conversions.h"

namespace kiv {

namespace {

/// What a conversion works with besides its text.
struct ConversionRun {
    Machine& machine;
    const ConversionWindow& window;
    std::string_view recipient;

    /// The conversions that split a text of any line-ending style have always done so through this
    /// file. It is not read back: it holds the bytes at hand.
    void WriteScratchFile(std::string_view text) const
    {
        machine.files.WriteFile(kScratchFile, text);
    }
};

using Result = std::optional<std::string>;

Result ConvertEmail(const ConversionRun& run, std::string_view text)
{
    std::string html = EmailToHtml(text, run.window.boxes);
    run.WriteScratchFile(text);
    run.machine.files.DeleteFile(kScratchFile);
    return html;
}

Result ConvertRs(const ConversionRun&, std::string_view text)
{
    return TabsToRs(text);
}

Result ConvertJs(const ConversionRun&, std::string_view text)
{
    return LinesToJs(text);
}

Result ConvertGetNames(const ConversionRun& run, std::string_view text)
{
    return FieldNamesToScript(text, run.recipient);
}

Result ConvertCleanQuotes(const ConversionRun& run, std::string_view text)
{
    std::string cleaned = CleanQuotes(text, run.window.boxes.keep_smart_quotes);
    run.WriteScratchFile(text);
    return cleaned;
}

Result ConvertNews(const ConversionRun& run, std::string_view text)
{
    if (IsNewsLine(text))
        return NewsLineToEntry(text);
    run.machine.reporter.reportmsg("First line doesn't start '!!'");
    return std::nullopt;
}

Result ConvertTabs(const ConversionRun& run, std::string_view text)
{
    const std::string rows = WithoutLineFeeds(text);
    run.WriteScratchFile(rows);
    return TabsToPipes(rows, run.window.text_field);
}

using Conversion = Result (*)(const ConversionRun& run, std::string_view text);

constexpr std::array<ConversionMode, 7> kModes = {{
    {"", "Convert to html"},
    {"rs", "Write to rs"},
    {"js", "Write to js"},
    {"getnames", "Extract Name fields"},
    {"cleanquotes", "Clean Quotes, etc."},
    {"newsgrabber", "News Grabber"},
    {"tabtopipe", "Tabs to Pipes"},
}};

/// The conversion of each mode, in the order of `kModes`.
constexpr std::array<Conversion, kModes.size()> kConversions = {
    ConvertEmail,       ConvertRs,   ConvertJs,   ConvertGetNames,
    ConvertCleanQuotes, ConvertNews, ConvertTabs,
};

/// The place of a mode in the table. A word that is none stands for the default conversion.
std::size_t ModeIndex(std::string_view mode)
{
    for (std::size_t i = 0; i < kModes.size(); ++i)
        if (kModes[i].mode == mode)
            return i;
    return 0;
}

} // namespace

std::span<const ConversionMode> ConversionModes()
{
    return kModes;
}

void SetMode(ConversionWindow& window, std::string_view mode)
{
    window.mode = mode;
    window.caption = kModes[ModeIndex(mode)].title;
    window.label = window.caption;
    window.boxes = {};
}

std::optional<std::string> Convert(Machine& machine, const ConversionWindow& window,
                                   std::string_view recipient, std::string_view text)
{
    return kConversions[ModeIndex(window.mode)]({machine, window, recipient}, text);
}

void DoConversion(Machine& machine, ConversionWindow& window, std::string_view recipient)
{
    const Result result = Convert(machine, window, recipient, machine.clipboard.Text());
    if (result)
        machine.clipboard.SetText(*result);
    window.caption = "Prepare for Web Use";
    window.label.clear();
    window.boxes.links_list = false;
    window.boxes.single_spaced = false;
}

} // namespace kiv
