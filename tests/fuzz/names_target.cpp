// Names of files, renamed and put back; a journal of a run that was cut short, a report.
#include "platform/site_files.h"
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "text/windows1252.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

using namespace kiv::fuzz;
using Words = std::vector<std::string>;
using Tree = std::map<std::string, std::string>;

constexpr std::string_view kReport = "C:\\report.json";
const Command kUndo{"undo-renames", {{"DIR", "C:\\site"}}};

/// The renamer of a scene; its line is cut at tabs: the command, what is found, what it becomes.
Command RenamerOf(const std::string& line)
{
    Words fields = Parts(line, '\t');
    fields.resize(3);
    if (fields[0] == "thumb-names" || fields[0] == "fix-names")
        return {fields[0], {{"DIR", "C:\\site"}}};
    return {"rename",
            {{"DIR", "C:\\site"},
             {"FIND", kiv::ToUtf8(fields[1])},
             {"REPLACEMENT", kiv::ToUtf8(fields[2])}}};
}

/// Lays the files down. Each holds the name it has at first; the names are any bytes.
void LayOutNames(Desk& desk, const Scene& scene)
{
    for (const SceneFile& file : scene.files) {
        if (file.name == kReport)
            desk.drives.Put("report.json", file.bytes);
        else if (file.name.starts_with(kiv::kRenameJournalFile))
            desk.drives.Put("site/" + std::string(kiv::kRenameJournalFile), file.bytes);
        else
            desk.drives.Put("site/" + file.name, file.name);
    }
}

Tree NamedFiles(const Desk& desk)
{
    Tree tree = desk.drives.Tree("site");
    tree.erase(std::string(kiv::kRenameJournalFile));
    return tree;
}

/// The contents of all files, without their names.
std::vector<std::string> Contents(const Desk& desk)
{
    std::vector<std::string> contents;
    for (const auto& [name, bytes] : NamedFiles(desk))
        contents.push_back(bytes);
    std::sort(contents.begin(), contents.end());
    return contents;
}

/// Whether two of the names are one when case is ignored.
bool AreAlike(const Tree& files)
{
    std::set<std::string> upper;
    return !std::all_of(files.begin(), files.end(), [&](const auto& file) {
        return upper.insert(kiv::UpperCase(kiv::FromUtf8(file.first))).second;
    });
}

/// A run in a folder where none was cut short: the dry run foretells it, and it is undone whole.
void RenameAndUndo(Desk& desk, const Command& command)
{
    const Tree before = NamedFiles(desk);
    Command dry = command;
    dry.given.emplace_back("--dry-run", "");
    const Report foretold = desk.Call(dry);
    Expect(NamedFiles(desk) == before, "a dry run renames");
    const Report done = desk.Call(command);
    // How long a name may be is known to the disk alone.
    if (!done.error_text.ends_with("file name too long"))
        Expect(done.renamed == foretold.renamed && done.error == foretold.error,
               "the dry run foretells another run");
    if (AreAlike(before)) // "A" may keep "a" from coming back, as if it were new
        return;
    const Report undone = desk.Call(kUndo);
    Expect(undone.error.empty() || done.renamed.empty(), "the renames cannot be undone");
    Expect(NamedFiles(desk) == before, "the old names have not come back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Scene scene = ReadScene(data, size);
    Desk desk;
    LayOutNames(desk, scene);
    const std::vector<std::string> contents = Contents(desk);
    const bool cut_short =
        desk.drives.FileExists("C:\\site\\" + std::string(kiv::kRenameJournalFile));
    if (desk.drives.FileExists(kReport))
        desk.Call({"undo-renames", {{"DIR", "C:\\site"}, {"--report", std::string(kReport)}}});
    else if (scene.line.starts_with("undo-renames"))
        desk.Call(kUndo);
    else if (cut_short)
        desk.Call(RenamerOf(scene.line));
    else
        RenameAndUndo(desk, RenamerOf(scene.line));
    Expect(Contents(desk) == contents, "a file is lost");
    return 0;
}
