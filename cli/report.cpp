#include "cli/report.h"

#include "text/windows1252.h"

#include <nlohmann/json.hpp>

#include <ostream>

namespace kiv {

namespace {

using Json = nlohmann::ordered_json;

Json Texts(const std::vector<std::string>& texts)
{
    Json list = Json::array();
    for (const std::string& text : texts)
        list.push_back(ToUtf8(text));
    return list;
}

Json Pairs(const Renames& renames)
{
    Json pairs = Json::array();
    for (const Rename& rename : renames)
        pairs.push_back(Json::array({ToUtf8(rename.from), ToUtf8(rename.to)}));
    return pairs;
}

Json TextOrNull(const std::string& text)
{
    return text.empty() ? Json(nullptr) : Json(ToUtf8(text));
}

Json ErrorObject(const RunError& error)
{
    return Json{{"kind", std::string(KindName(error.kind))},
                {"text", ToUtf8(error.text)},
                {"where", ToUtf8(error.where)}};
}

Json WarningObject(const Warning& warning)
{
    return Json{{"text", ToUtf8(warning.text)},
                {"file", TextOrNull(warning.file)},
                {"line", warning.line > 0 ? Json(warning.line) : Json(nullptr)},
                {"page", TextOrNull(warning.page)}};
}

std::string InBrackets(const std::string& place)
{
    return place.empty() ? std::string() : " (" + ToUtf8(place) + ")";
}

} // namespace

void PrintJson(std::ostream& out, const RunReport& report)
{
    Json warnings = Json::array();
    for (const Warning& warning : report.warnings)
        warnings.push_back(WarningObject(warning));
    Json object = {
        {"status", ToUtf8(report.status)},
        {"messages", Texts(report.messages)},
        {"error", report.error ? ErrorObject(*report.error) : Json(nullptr)},
        {"files", Texts(report.files)},
        {"launched", Texts(report.launched)},
        {"warnings", warnings},
    };
    if (report.renamed)
        object["renamed"] = Pairs(*report.renamed);
    if (report.result)
        object["result"] = ToUtf8(*report.result);
    out << object.dump(2) << '\n';
}

void PrintPlain(std::ostream& out, std::ostream& err, const RunReport& report, bool verbose)
{
    if (verbose)
        for (const Warning& warning : report.warnings)
            if (!warning.was_shown)
                err << "kiv: " << ToUtf8(warning.text) << InBrackets(warning.PlaceText()) << '\n';
    if (report.error)
        err << "kiv: error: " << ToUtf8(report.error->text) << InBrackets(report.error->where)
            << '\n';
    if (report.dry_run && report.renamed)
        for (const Rename& rename : *report.renamed)
            out << ToUtf8(rename.from) << " -> " << ToUtf8(rename.to) << '\n';
    if (report.result)
        out << ToUtf8(*report.result);
    else if (!report.status.empty())
        out << ToUtf8(report.status) << '\n';
}

} // namespace kiv
