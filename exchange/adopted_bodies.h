// The text of pages as a page list has it.
#pragma once

#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The files of a section that its page list includes, by their names as seen from its folder.
class IncludedFiles {
  public:
    /// `parts`: the folder for what several pages have; `texts`: that for what is one page's.
    IncludedFiles(std::string parts, std::string texts)
        : parts_(std::move(parts)), texts_(std::move(texts))
    {
    }

    /// Adds a file of one page's and gives its name, "_text\about-1.txt". A content that is there
    /// already is not added again.
    std::string AddText(std::string_view page, std::string content);
    /// Adds a part that several pages have: "_parts\head1.txt".
    std::string AddPart(std::string_view name, std::string content);

    const std::map<std::string, std::string>& Files() const { return files_; }

  private:
    std::string parts_;
    std::string texts_;
    std::map<std::string, std::string> files_;
    std::map<std::string, std::string> names_; // of texts, by content
    std::set<std::string> taken_;              // names of texts in lower case
};

/// Source lines that give back some lines of a page. What cannot be said in a list stands in files
/// that are included as they are.
std::vector<std::string> SayLines(std::span<const std::string_view> lines, std::string_view page,
                                  IncludedFiles& files);

/// The source line that gives back a text as it is, but for the line end behind it.
std::string SayAsItIs(std::string_view text, std::string_view page, IncludedFiles& files);

/// Lines, each with its end.
template <typename Lines>
std::string WithEnds(const Lines& lines)
{
    std::string text;
    for (const std::string_view line : lines)
        text.append(line).append("\r\n");
    return text;
}

} // namespace kiv
