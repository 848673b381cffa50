#include "docs/manual/generator/search_index.h"

namespace kiv::manual {

namespace {

/// A string of the script. Chapters are ASCII and a section is one line, so little needs a mark.
std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c == '\t' ? ' ' : c;
    }
    return quoted + "\"";
}

} // namespace

std::string SearchIndexScript(const std::vector<ManualPage>& pages)
{
    std::string script = "const kivSections = [\n";
    for (const ManualPage& page : pages)
        for (const PageSection& section : page.sections) {
            std::string_view before = "[";
            for (const std::string* const part :
                 {&page.name, &page.title, &section.id, &section.heading, &section.text}) {
                script.append(before).append(Quoted(*part));
                before = ",";
            }
            script += "],\n";
        }
    return script + "];\n";
}

} // namespace kiv::manual
