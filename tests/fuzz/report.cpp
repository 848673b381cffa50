#include "tests/fuzz/report.h"

#include "platform/run_error.h"
#include "tests/fuzz/fail.h"
#include "text/windows1252.h"

#include <nlohmann/json.hpp>

namespace kiv::fuzz {

namespace {

using Json = nlohmann::json;

const Json& Field(const Json& object, const char* name)
{
    const auto found = object.find(name);
    if (found == object.end())
        Fail(std::string("the report has no \"") + name + '"');
    return *found;
}

std::string Text(const Json& value)
{
    Expect(value.is_string(), "the report has something else where a text should be");
    return FromUtf8(value.get_ref<const std::string&>());
}

std::vector<std::string> Texts(const Json& list)
{
    Expect(list.is_array(), "the report has something else where a list should be");
    std::vector<std::string> texts;
    for (const Json& text : list)
        texts.push_back(Text(text));
    return texts;
}

bool IsKind(const std::string& name)
{
    for (int kind = 0; kind <= static_cast<int>(ErrorKind::memory); ++kind)
        if (KindName(static_cast<ErrorKind>(kind)) == name)
            return true;
    return false;
}

void TakeError(const Json& error, Report& report)
{
    if (error.is_null())
        return;
    Expect(error.is_object(), "the report's error is no object");
    report.error = Text(Field(error, "kind"));
    Expect(IsKind(report.error), "the report has an error of a kind that there is not");
    report.error_text = Text(Field(error, "text"));
    Expect(!report.error_text.empty(), "the report's error says nothing");
    Text(Field(error, "where"));
}

void CheckWritten(const Json& written, const std::vector<std::string>& files)
{
    Expect(written.is_array() && written.size() == files.size(),
           "the report tells of other files than were written");
    for (std::size_t i = 0; i < files.size(); ++i) {
        Expect(Text(Field(written[i], "path")) == files[i], "a written file has another path");
        Expect(!Text(Field(written[i], "native")).empty() &&
                   Field(written[i], "changed").is_boolean(),
               "a written file lacks what became of it");
    }
}

void CheckWarning(const Json& warning)
{
    Expect(warning.is_object() && !Text(Field(warning, "text")).empty(),
           "the report has a warning that says nothing");
    for (const char* const name : {"file", "page"}) {
        const Json& place = Field(warning, name);
        Expect(place.is_null() || !Text(place).empty(), "a warning's place is empty");
    }
    const Json& line = Field(warning, "line");
    Expect(line.is_null() || (line.is_number_integer() && line > 0), "a warning's line is none");
}

std::vector<std::pair<std::string, std::string>> Pairs(const Json& list)
{
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const Json& pair : list) {
        Expect(pair.is_array() && pair.size() == 2, "the report has a rename without two names");
        pairs.emplace_back(Text(pair[0]), Text(pair[1]));
    }
    return pairs;
}

std::vector<std::pair<int, std::string>> Lines(const Json& list)
{
    std::vector<std::pair<int, std::string>> lines;
    for (const Json& line : list) {
        const Json& number = Field(line, "line");
        const bool is_written = number.is_number_integer() && number > 0;
        Expect(is_written || number.is_null(), "a told line's number is none");
        Expect(is_written == Field(line, "reason").is_null(), "a told line lacks its reason");
        Expect(Field(line, "steps").is_array() && Field(line, "sources").is_array(),
               "a told line has no story");
        lines.emplace_back(is_written ? number.get<int>() : 0, Text(Field(line, "text")));
    }
    return lines;
}

std::vector<std::string> Findings(const Json& list)
{
    std::vector<std::string> names;
    for (const Json& finding : list) {
        const std::string severity = Text(Field(finding, "severity"));
        Expect(severity == "error" || severity == "warning" || severity == "note",
               "a finding has a severity that there is not");
        Expect(!Text(Field(finding, "text")).empty(), "a finding says nothing");
        const Json& line = Field(finding, "line");
        Expect(line.is_null() || (line.is_number_integer() && line > 0),
               "a finding's line is none");
        Expect(line.is_null() || Field(finding, "file").is_string(), "a line without its file");
        Field(finding, "native");
        Field(finding, "page");
        Field(finding, "suggestion");
        names.push_back(Text(Field(finding, "name")));
    }
    return names;
}

} // namespace

Report ReadReport(std::string_view json, int exit_code)
{
    const Json object = Json::parse(json, nullptr, false);
    Expect(object.is_object(), "the report is no JSON object");
    Report report;
    Text(Field(object, "status"));
    Texts(Field(object, "messages"));
    Texts(Field(object, "launched"));
    TakeError(Field(object, "error"), report);
    constexpr int kWarned = 3; // of "--strict"
    Expect(report.error.empty() == (exit_code == 0 || exit_code == kWarned),
           "report and exit code say different things");
    report.files = Texts(Field(object, "files"));
    CheckWritten(Field(object, "written"), report.files);
    for (const Json& warning : Field(object, "warnings"))
        CheckWarning(warning);
    if (object.contains("renamed"))
        report.renamed = Pairs(object["renamed"]);
    if (object.contains("lines"))
        report.lines = Lines(object["lines"]);
    if (object.contains("findings"))
        report.findings = Findings(object["findings"]);
    if (object.contains("result"))
        report.result = Text(object["result"]);
    return report;
}

} // namespace kiv::fuzz
