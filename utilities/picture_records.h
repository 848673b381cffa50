// The tables of the picture list: the captions of "_alt.txt" and the measured pictures.
#pragma once

#include "platform/fixed_table.h"
#include "platform/machine.h"
#include "platform/picture_loader.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kiv {

/// One line of "_alt.txt".
struct AltEntry {
    std::string file;
    std::string alt;   // double quotes as "&quot;"
    std::string thumb; // `file` with "_t" before its first "."
    std::string credit;
    std::string caption;
};

/// The entries of "_alt.txt" in rows 1 to 3000.
class AltTable {
  public:
    /// Throws RunError: `subscript` for a line of one or three fields and for row 3001,
    /// `invalid_argument` for a file name without ".".
    /// `bytes` are those of the file.
    void Read(const Files& files, std::string_view bytes);

    /// The first entry whose file or thumbnail has exactly this name; without one, an empty entry.
    const AltEntry& Find(const std::string& name) const;

  private:
    void Add(std::string_view line);

    FixedTable<AltEntry, 1, 3000> entries_{
        "line of _alt.txt", "_alt.txt has room for 3000 entries: take out those of pictures that "
                            "are gone, or split the folder in two."};
    int count_ = 0;
    std::unordered_map<std::string, int> rows_; // the first row of each name
};

struct PictureRecord {
    std::string file; // as listed
    PictureSize size;
    std::string alt;       // as tags have it
    std::string base;      // `file` up to its first "."
    std::string own_alt;   // from "_alt.txt"; empty where it says no more than `base`
    std::string main_base; // `base` without one "_t" at its end
    std::string credit;
    std::string caption;
};

/// Rows 1 to 3000.
using PictureTable = FixedTable<PictureRecord, 1, 3000>;

/// The name of a picture's thumbnail: "_t" before its first ".", which must be there.
std::string ThumbnailNameOf(std::string_view file);

/// Whether a file name is that of a thumbnail: it holds "_t.", or "_T." and no small letter.
bool IsThumbnail(std::string_view file);

/// The "*.jpg" and "*.gif" files of the current directory, whatever is in them, sorted by name,
/// ignoring case.
std::vector<std::string> PictureFiles(Machine& machine);

/// Fills in a record but for its size.
void DescribePicture(PictureRecord& record, const std::string& file, const AltTable& alts);

} // namespace kiv
