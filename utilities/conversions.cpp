#include "utilities/conversions.h"

#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "utilities/text_conversions.h"

#include <memory>

namespace kiv {

/// What a conversion works with besides its text.
struct ConversionRun {
    Machine& machine;
    const ConversionWindow& window;
    std::string_view recipient;

    /// The conversions that split a text of any line-ending style have always done so through this
    /// file. It is not read back: it holds the bytes at hand.
    void WriteScratchFile(std::string_view text) const
    {
        const auto lock = LockScratchFile();
        machine.files.WriteFile(kScratchFile, text);
    }
    void WriteAndDeleteScratchFile(std::string_view text) const
    {
        const auto lock = LockScratchFile();
        machine.files.WriteFile(kScratchFile, text);
        machine.files.DeleteFile(kScratchFile);
    }

  private:
    /// Two conversions at once do not meet in the file.
    std::unique_ptr<FolderLock> LockScratchFile() const
    {
        return machine.files.LockFolder(FolderOf(kScratchFile));
    }
};

namespace {

using Result = std::optional<std::string>;

Result ConvertEmail(const ConversionRun& run, std::string_view text)
{
    std::string html = EmailToHtml(text, run.window.boxes);
    run.WriteAndDeleteScratchFile(text);
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

constexpr std::array<ConversionMode, 7> kModes = {{
    {"", "Convert to html", ConvertEmail},
    {"rs", "Write to rs", ConvertRs},
    {"js", "Write to js", ConvertJs},
    {"getnames", "Extract Name fields", ConvertGetNames},
    {"cleanquotes", "Clean Quotes, etc.", ConvertCleanQuotes},
    {"newsgrabber", "News Grabber", ConvertNews},
    {"tabtopipe", "Tabs to Pipes", ConvertTabs},
}};

/// The row of a mode. A word that is none stands for the default conversion.
const ConversionMode& RowOf(std::string_view mode)
{
    for (const ConversionMode& row : kModes)
        if (row.mode == mode)
            return row;
    return kModes[0];
}

} // namespace

std::span<const ConversionMode> ConversionModes()
{
    return kModes;
}

void SetMode(ConversionWindow& window, std::string_view mode)
{
    window.mode = mode;
    window.caption = RowOf(mode).title;
    window.label = window.caption;
    window.boxes = {};
}

std::optional<std::string> Convert(Machine& machine, const ConversionWindow& window,
                                   std::string_view recipient, std::string_view text)
{
    return RowOf(window.mode).convert({machine, window, recipient}, text);
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
