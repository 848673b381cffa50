#include "utilities/picture_records.h"

#include "platform/drive_path.h"
#include "platform/folder_work.h"
#include "platform/reporter.h"
#include "platform/run_error.h"
#include "platform/site_files.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <utility>

namespace kiv {

void AltTable::Read(const Files& files, std::string_view bytes)
{
    int line_number = 0;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view line = TakeLine(rest);
        ++line_number;
        if (line.empty() || line.starts_with(';'))
            continue;
        try {
            Add(line);
        } catch (RunError& error) {
            const std::string file = AbsolutePath(kAltFile, files.CurrentDirectory());
            error.where = Place{file, line_number, {}};
            throw;
        }
    }
}

void AltTable::Add(std::string_view line)
{
    const std::vector<std::string_view> fields = Split(line, '|');
    if (fields.size() == 1 || fields.size() == 3)
        throw RunError(ErrorKind::subscript, "a line of _alt.txt needs two fields or four", {},
                       "Write it as \"file|text\" or as \"file|text|credit|caption\".");
    AltEntry& entry = entries_[++count_];
    entry.file = fields[0];
    entry.alt = QuoteEscape(fields[1]);
    if (fields.size() > 2) {
        entry.credit = fields[2];
        entry.caption = fields[3];
    }
    if (!Contains(entry.file, "."))
        throw RunError(
            ErrorKind::invalid_argument, "the file name \"" + entry.file + "\" has no \".\"", {},
            "Write the name of the picture with its extension, as in \"bridge.jpg|text\".");
    entry.thumb = ThumbnailNameOf(entry.file);
    rows_.try_emplace(entry.file, count_);
    rows_.try_emplace(entry.thumb, count_);
}

const AltEntry& AltTable::Find(const std::string& name) const
{
    static const AltEntry kNone{};
    const auto row = rows_.find(name);
    return row == rows_.end() ? kNone : entries_[row->second];
}

std::string ThumbnailNameOf(std::string_view file)
{
    return std::string(file).insert(file.find('.'), "_t");
}

bool IsThumbnail(std::string_view file)
{
    return Contains(file, "_t.") || (Contains(file, "_T.") && UpperCase(file) == file);
}

std::vector<std::string> PictureFiles(Machine& machine)
{
    using Keyed = std::pair<std::string, std::string>; // the name in upper case, the name
    std::vector<Keyed> keyed;
    for (const std::string_view pattern : {"*.jpg", "*.gif"})
        for (FileName& name : FilesToWorkOn(machine, pattern))
            keyed.emplace_back(UpperCase(name.text), std::move(name.text));
    std::sort(keyed.begin(), keyed.end());
    std::vector<std::string> names;
    names.reserve(keyed.size());
    for (Keyed& entry : keyed)
        names.push_back(std::move(entry.second));
    return names;
}

void DescribePicture(PictureRecord& record, const std::string& file, const AltTable& alts)
{
    const AltEntry& entry = alts.Find(file);
    record.file = file;
    record.alt = entry.alt;
    record.own_alt = entry.alt;
    record.credit = entry.credit;
    record.caption = entry.caption;
    record.base = Before(file, '.');
    record.main_base = record.base;
    if (record.main_base.ends_with("_t"))
        record.main_base.resize(record.main_base.size() - 2);
    if (record.alt.empty())
        record.alt = record.base;
    // Compared before "_t" is cut off below: the own text "cat" of cat_t.jpg is kept.
    if (record.base == record.alt)
        record.own_alt.clear();
    if (record.alt.ends_with("_t"))
        record.alt.resize(record.alt.size() - 2);
}

} // namespace kiv
