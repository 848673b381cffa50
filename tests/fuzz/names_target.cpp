// Names of files, renamed and put back; a journal of a run that was cut short, a report.
#include "platform/exact_names.h"
#include "platform/site_files.h"
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"
#include "text/windows1252.h"

#include <algorithm>
#include <map>

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

/// Whether the names of a journal are spelled as the program itself would spell them.
bool IsPlain(const std::string& journal)
{
    const Words lines = Parts(journal, '\n');
    for (std::size_t i = 2; i < lines.size(); ++i)
        for (const std::string& name : Parts(lines[i].substr(0, lines[i].find('\r')), '\t'))
            if (name.find('\\') != name.npos || kiv::ExactName(kiv::NativeName(name)) != name)
                return false;
    return true;
}

/// A run that the dry run foretells, also what is left of one that was cut short.
Report Rename(Desk& desk, const Command& command, bool is_foretold)
{
    const Tree before = desk.drives.Tree("site");
    Command dry = command;
    dry.given.emplace_back("--dry-run", "");
    const Report foretold = desk.Call(dry);
    Expect(desk.drives.Tree("site") == before, "a dry run renames");
    const Report done = desk.Call(command);
    if (is_foretold)
        Expect(done.renamed == foretold.renamed && done.error_text == foretold.error_text,
               "the dry run foretells another run");
    return done;
}

/// A run in a folder where none was cut short: it is undone whole.
void RenameAndUndo(Desk& desk, const Command& command)
{
    const Tree before = NamedFiles(desk);
    const Report done = Rename(desk, command, true);
    const Report undone = desk.Call(kUndo);
    Expect(undone.error.empty() || done.renamed.empty(), "the renames cannot be undone");
    Expect(NamedFiles(desk) == before, "the old names have not come back");
}

} // namespace

void kiv::fuzz::FuzzNames(const std::uint8_t* data, std::size_t size)
{
    const Scene scene = ReadScene(data, size);
    Desk desk;
    LayOutNames(desk, scene);
    const std::vector<std::string> contents = Contents(desk);
    const std::string journal = "C:\\site\\" + std::string(kiv::kRenameJournalFile);
    if (desk.drives.FileExists(kReport))
        desk.Call({"undo-renames", {{"DIR", "C:\\site"}, {"--report", std::string(kReport)}}});
    else if (scene.line.starts_with("undo-renames"))
        desk.Call(kUndo);
    else if (desk.drives.FileExists(journal))
        Rename(desk, RenamerOf(scene.line), IsPlain(desk.drives.ReadFile(journal)));
    else
        RenameAndUndo(desk, RenamerOf(scene.line));
    Expect(Contents(desk) == contents, "a file is lost");
}
