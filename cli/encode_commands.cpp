// The commands that change the encoding of a site's sources, and the one that takes that back.
#include "cli/commands.h"
#include "cli/report.h"
#include "cli/shown_path.h"
#include "shell/encodings.h"
#include "shell/workspace.h"
#include "text/joined_text.h"

namespace kiv {

namespace {

constexpr std::string_view kUtf8Word = "utf-8";
constexpr std::string_view kWindowsWord = "1252";

/// What becomes of a source, in words.
std::string Words(const EncodingChange& change)
{
    if (change.is_taken_back)
        return ": as it was before";
    std::string words;
    const auto add = [&](const std::string& more) {
        Append(words, {words.empty() ? ": " : ", ", more});
    };
    if (change.references > 0)
        add(std::to_string(change.references) +
            (change.references == 1 ? " reference" : " references"));
    if (change.lost_mark)
        add("without its byte order mark");
    if (change.declarations > 0)
        add("declares it");
    return words;
}

std::string ChangesText(NativePaths& paths, const EncodingResult& result)
{
    const std::string shell = ShellFolder(paths, "");
    std::string text;
    for (const EncodingChange& change : result.changes)
        Append(text,
               {"  ", SeenFrom(shell, NativeOrDrive(paths, change.path)), Words(change), "\n"});
    return text;
}

} // namespace

Choices EncodingWords()
{
    return {kWindowsWord, kUtf8Word};
}

void RunEncode(CallDesk& desk, const GivenValues& given)
{
    const Encoding to = given.Native("--to") == kUtf8Word ? Encoding::utf8 : Encoding::windows1252;
    const bool looks = given.Has("--dry-run") || given.Has("--check");
    const EncodingResult result =
        EncodeSite(desk.workspace, to, looks ? EncodingWork::dry_run : EncodingWork::change);
    desk.report.guide = ChangesText(desk.workspace.machine().native_paths, result);
    desk.report.has_failed = given.Has("--check") && result.changes.size() + result.left > 0;
}

void RunUndoEncode(CallDesk& desk, const GivenValues& /*given*/)
{
    UndoEncoding(desk.workspace);
}

} // namespace kiv
