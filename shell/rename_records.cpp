#include "shell/rename_records.h"

#include "platform/drive_path.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace kiv {

namespace {

// The first line; the folder stands in the second, and each further line has two names.
constexpr std::string_view kHead = "kiv renames 1";
constexpr char kBetween = '\t';

/// The letters of a file name that stand for a folder (FNV-1a); two folders have different ones
/// but by the rarest chance, which the second line of the record finds out.
std::string KeyOf(std::string_view folder)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : UpperCase(folder)) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001B3U;
    }
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string key;
    for (int place = 60; place >= 0; place -= 4)
        key.push_back(kDigits[(hash >> static_cast<unsigned>(place)) & 0xFU]);
    return key;
}

constexpr std::array<std::string_view, 4> kMarks = {"\\", "\t", "\r", "\n"};
constexpr std::array<std::string_view, 4> kEscapes = {"\\\\", "\\t", "\\r", "\\n"};

/// A name on one line: line ends and tabs are allowed in names.
std::string Escaped(std::string_view name)
{
    std::string text(name);
    for (std::size_t i = 0; i < kMarks.size(); ++i)
        ReplaceEach(text, kMarks[i], kEscapes[i]);
    return text;
}

std::string Unescaped(std::string_view text)
{
    std::string name;
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::size_t mark = 0;
        while (mark < kEscapes.size() && text.substr(at, 2) != kEscapes[mark])
            ++mark;
        if (mark == kEscapes.size()) {
            name.push_back(text[at]);
        } else {
            name.append(kMarks[mark]);
            ++at;
        }
    }
    return name;
}

std::string RecordText(std::string_view folder, const Renames& renames)
{
    std::string text = Joined({kHead, kCrLf, Escaped(folder), kCrLf});
    for (const Rename& rename : renames)
        Append(text,
               {Escaped(rename.from), std::string_view(&kBetween, 1), Escaped(rename.to), kCrLf});
    return text;
}

/// Makes a folder and those above it that are missing.
void MakeFolders(Files& files, const std::string& folder)
{
    std::vector<std::string> missing;
    for (std::string_view at = folder; !NameOf(at).empty() && !files.FolderExists(at);
         at = FolderOf(at))
        missing.emplace_back(at);
    std::reverse(missing.begin(), missing.end());
    for (const std::string& each : missing)
        files.MakeFolder(each);
}

} // namespace

RenameRecord::RenameRecord(Machine& machine, const std::string& records_folder) : machine_(machine)
{
    Files& files = machine.files;
    const std::string& folder = files.CurrentDirectory();
    folder_ = FromUtf8(machine.native_paths.ToNative(folder));
    journal_ = WithSeparator(folder).append(kRenameJournalFile);
    if (!records_folder.empty())
        record_ = Joined({WithSeparator(records_folder), KeyOf(folder_), ".txt"});
    if (files.FileExists(journal_))
        state_ = State::begun;
    else if (!record_.empty() && files.FileExists(record_))
        state_ = State::done;
    if (state_ != State::none)
        Read(state_ == State::begun ? journal_ : record_);
}

void RenameRecord::Read(const std::string& path)
{
    const std::string bytes = machine_.files.ReadFile(path);
    std::string_view rest = bytes;
    const auto check = [&](bool is_record) {
        if (!is_record)
            throw RunError(ErrorKind::file,
                           "cannot read " + path +
                               ": it is no record of renames. Delete it if the names in " +
                               folder_ + " are as they should be");
    };
    check(!rest.empty() && TakeLine(rest) == kHead);
    // A folder that has moved takes its journal along.
    check(!rest.empty() && (Unescaped(TakeLine(rest)) == folder_ || state_ == State::begun));
    while (!rest.empty()) {
        const std::vector<std::string_view> names = Split(TakeLine(rest), kBetween);
        check(names.size() == 2);
        renames_.push_back({Unescaped(names[0]), Unescaped(names[1])});
    }
}

void RenameRecord::Begin(const Renames& renames)
{
    const std::string text = RecordText(folder_, renames);
    machine_.files.WriteRecord(journal_, text);
    state_ = State::begun;
    renames_ = renames;
    if (!record_.empty())
        RecordForLater(text);
}

void RenameRecord::RecordForLater(const std::string& text)
{
    Files& files = machine_.files;
    try {
        MakeFolders(files, std::string(FolderOf(record_)));
        files.WriteRecord(record_, text);
    } catch (const RunError& error) {
        machine_.reporter.reportmsg(
            "The old names are not kept for \"undo-renames\", which will need the report of this "
            "run: " +
            error.text);
    }
}

void RenameRecord::Finish()
{
    machine_.files.DeleteFile(journal_);
    state_ = State::done;
}

void RenameRecord::Forget()
{
    // The record first: without the journal it would be taken for that of a whole run.
    if (!record_.empty() && machine_.files.FolderExists(FolderOf(record_)))
        machine_.files.DeleteFile(record_);
    machine_.files.DeleteFile(journal_);
    state_ = State::none;
    renames_.clear();
}

void TellOfUnfinishedRenames(Machine& machine)
{
    const std::string& folder = machine.files.CurrentDirectory();
    if (!machine.files.FileExists(WithSeparator(folder).append(kRenameJournalFile)))
        return;
    machine.reporter.reportmsg(
        Joined({"A renaming in ", folder,
                " was cut short, so some files may still have their old names. Start it again to "
                "finish it, or take it back with \"kiv-cli undo-renames\"."}));
}

} // namespace kiv
