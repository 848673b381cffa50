#include "inspect/check_list.h"

#include "inspect/finding_table.h"
#include "inspect/site_view.h"
#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "text/joined_text.h"
#include "text/nearest.h"
#include "text/text.h"

#include <algorithm>

namespace kiv {

namespace {

constexpr std::string_view kForm = "write \"NAME: reason\" or \"NAME TEXT: reason\"";

/// The place of the colon behind which the reason stands: the first that a blank or the line's end
/// follows, so that a text may be an address.
std::size_t ReasonColon(std::string_view line)
{
    for (std::size_t at = line.find(':'); at != npos; at = line.find(':', at + 1))
        if (at + 1 == line.size() || line[at + 1] == ' ')
            return at;
    return npos;
}

/// The file as one says it in the folder of the list.
std::string_view FileWords(std::string_view file, std::string_view list)
{
    const std::string folder = WithSeparator(FolderOf(list));
    return StartsWithNoCase(file, folder) ? file.substr(folder.size()) : file;
}

bool Fits(std::string_view text, const Finding& finding, std::string_view file)
{
    return text.empty() || ContainsNoCase(file, text) || ContainsNoCase(finding.where.page, text) ||
           ContainsNoCase(finding.text, text);
}

} // namespace

CheckList::CheckList(const SiteView& site) : path(site.folder + std::string(kCheckFile))
{
    try {
        if (site.files.FileExists(path))
            Read(site.files.ReadFile(path));
    } catch (const RunError& error) {
        faults.push_back({0, error.text, error.hint});
    }
}

void CheckList::Read(std::string_view bytes)
{
    for (int number = 1; !bytes.empty(); ++number)
        TakeLine(kiv::TakeLine(bytes), number);
}

void CheckList::TakeLine(std::string_view line, int number)
{
    line = Trim(line);
    if (line.empty() || line.starts_with(';'))
        return;
    const std::size_t colon = ReasonColon(line);
    if (colon == npos)
        return faults.push_back(
            {number, "this line is not a name with a reason behind a colon", std::string(kForm)});
    const std::string_view name = Before(line.substr(0, colon), ' ');
    const std::vector<std::string_view> known = FindingNames();
    if (std::ranges::find(known, name) == known.end()) {
        const std::string_view near = Nearest(name, known);
        return faults.push_back(
            {number, Joined({"no finding is called \"", name, "\""}), DidYouMean(near)});
    }
    if (Trim(line.substr(colon + 1)).empty())
        return faults.push_back({number,
                                 "there is no reason behind the colon, so nothing is switched off",
                                 std::string(kForm)});
    const std::string_view text = Trim(line.substr(name.size(), colon - name.size()));
    lines.push_back({number, std::string(name), std::string(text)});
}

bool CheckList::Names(std::string_view finding) const
{
    return std::ranges::find(lines, finding, &CheckLine::name) != lines.end();
}

bool CheckList::SwitchesOff(const Finding& finding)
{
    const std::string_view file = FileWords(finding.where.file, path);
    bool is_off = false;
    for (CheckLine& line : lines) {
        const bool fits = line.name == finding.name && Fits(line.text, finding, file);
        line.is_used = line.is_used || fits;
        is_off = is_off || fits;
    }
    return is_off;
}

} // namespace kiv
