#include "utilities/picture_lists.h"

#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "utilities/kept_captions.h"
#include "utilities/picture_records.h"
#include "utilities/picture_sections.h"

#include <memory>
#include <optional>
#include <vector>

namespace kiv {

namespace {

/// The captions as they are written down; none when there are none yet.
using AltText = std::optional<std::string>;

AltText ReadAltText(Files& files)
{
    return files.FileExists(kAltFile) ? AltText(files.ReadFile(kAltFile)) : std::nullopt;
}

/// The captions may have been written by hand: they take the place of those that were read, and of
/// no others.
void WriteAltText(Files& files, const AltText& old, const std::string& text)
{
    if (old)
        files.ReplaceSource(kAltFile, *old, text);
    else
        files.WriteNewSource(kAltFile, text);
}

/// Measures and describes the pictures of the current directory. Returns how many there are.
int ReadPictures(Machine& machine, const AltText& alt_text, const std::vector<std::string>& names,
                 PictureTable& pictures)
{
    AltTable alts;
    if (alt_text)
        alts.Read(machine.files, *alt_text);
    const int all = static_cast<int>(names.size());
    const std::string folder = WithSeparator(machine.files.CurrentDirectory());
    int count = 0;
    for (const std::string& name : names) {
        machine.reporter.Status(name);
        PictureRecord& record = pictures[++count];
        record.size = machine.pictures.Size(folder + name);
        DescribePicture(record, name, alts);
        machine.reporter.Step(count, all);
    }
    return count;
}

void WritePictureFiles(Files& files, const AltText& old, const PictureSections& sections)
{
    WriteAltText(files, old, Joined({sections.new_alt_file, kCrLf}));
    files.WriteFile(kPictureListFile, PictureListText(sections));
    if (!sections.pair.empty()) {
        files.WriteFile(kBangListFile, BangListText(sections));
        files.WriteFile(kBangTableFile4, BangTableText(sections, 4, true));
        files.WriteFile(kBangTableFile2, BangTableText(sections, 2, false));
        files.WriteFile(kBangTableFile3, BangTableText(sections, 3, false));
    }
    if (!sections.include.empty())
        files.WriteFile(kPicturePagesFile, Joined({sections.include, kCrLf}));
}

void SizePicturesHere(Machine& machine, const std::string& editor_command)
{
    Files& files = machine.files;
    const std::unique_ptr<FolderLock> lock = files.LockFolder(files.CurrentDirectory());
    const AltText alt_text = ReadAltText(files);
    PictureTable pictures(
        "picture", "A picture list has room for 3000 pictures: move some into another folder.");
    const std::vector<std::string> names = PictureFiles(machine);
    const int count = ReadPictures(machine, alt_text, names, pictures);
    const std::string folder_name = ThisDirNameOf(files.CurrentDirectory());
    KeepLostLines(machine, LostLines(alt_text.value_or(""), names));
    TellOfOtherFormats(machine);
    WritePictureFiles(files, alt_text, EmitPictures(pictures, count, folder_name));
    machine.reporter.Status("sizer done. piclist.txt created.");
    for (const std::string_view file : {kAltFile, kPictureListFile})
        machine.programs.Start({.command = editor_command, .file = std::string(file), .line = 1});
}

} // namespace

void run_picture_sizer(Machine& machine, std::string_view folder, const std::string& editor_command)
{
    Files& files = machine.files;
    if (!folder.empty() && !files.FolderExists(folder)) {
        machine.reporter.reportmsg("There is no Images subdirectory. Aborting");
        return;
    }
    const std::string working_directory = files.CurrentDirectory();
    if (!folder.empty())
        files.ChangeDirectory(folder);
    try {
        SizePicturesHere(machine, editor_command);
    } catch (...) {
        files.ChangeDirectory(working_directory);
        throw;
    }
    files.ChangeDirectory(working_directory);
}

} // namespace kiv
