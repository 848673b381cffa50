// The commands that change the encoding of a site's sources, and the one that takes that back.
#include "cli/commands.h"
#include "cli/report.h"
#include "cli/shown_path.h"
#include "shell/encoding_words.h"
#include "shell/encodings.h"
#include "shell/workspace.h"
#include "text/joined_text.h"

namespace kiv {

namespace {

constexpr std::string_view kUtf8Word = "utf-8";
constexpr std::string_view kWindowsWord = "1252";

std::string ChangesText(NativePaths& paths, const EncodingResult& result)
{
    const std::string shell = ShellFolder(paths, "");
    std::string text;
    for (const EncodingChange& change : result.changes)
        Append(text, {"  ", SeenFrom(shell, NativeOrDrive(paths, change.path)),
                      EncodingChangeWords(change), "\n"});
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
