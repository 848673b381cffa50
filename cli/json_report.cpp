#include "cli/json_report.h"

#include "cli/changes.h"
#include "cli/report.h"
#include "cli/shown_text.h"
#include "platform/run_error.h"
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
                {"where", ToUtf8(error.where.Text())},
                {"hint", ToUtf8(error.hint)}};
}

Json WrittenList(const RunReport& report)
{
    Json list = Json::array();
    for (std::size_t i = 0; i < report.written.size(); ++i)
        list.push_back(Json{{"path", ToUtf8(report.written[i].path)},
                            {"native", OnlyUtf8(report.native[i])},
                            {"changed", report.written[i].changed}});
    return list;
}

Json MemberList(const RunReport& report)
{
    Json list = Json::array();
    for (const MemberReport& member : *report.members) {
        const ChangeCount count = CountChanges(member.Of(report.written));
        list.push_back(Json{{"folder", ToUtf8(member.folder)},
                            {"status", ToUtf8(member.status)},
                            {"written", count.written},
                            {"changed", count.changed},
                            {"warnings", member.warnings}});
    }
    return list;
}

Json WarningObject(const Warning& warning)
{
    return Json{{"text", ToUtf8(warning.text)},
                {"file", TextOrNull(warning.where.file)},
                {"line", warning.where.line > 0 ? Json(warning.where.line) : Json(nullptr)},
                {"page", TextOrNull(warning.where.page)}};
}

Json PlaceObject(const ToldPlace& place)
{
    return Json{{"file", ToUtf8(place.file)},
                {"native", OnlyUtf8(place.native)},
                {"first", place.first},
                {"last", place.last}};
}

Json StepObject(const ToldStep& step, bool has_texts)
{
    const auto text = [&](const std::string& of) {
        return has_texts ? Json(ToUtf8(of)) : Json(nullptr);
    };
    return Json{{"name", ToUtf8(step.name)},
                {"text", ToUtf8(step.text)},
                {"before", text(step.before)},
                {"after", text(step.after)},
                {"from", step.from ? PlaceObject(*step.from) : Json(nullptr)}};
}

Json LineObject(const ToldLine& line)
{
    Json sources = Json::array();
    for (const ToldPlace& source : line.sources)
        sources.push_back(PlaceObject(source));
    Json steps = Json::array();
    for (const ToldStep& step : line.steps)
        steps.push_back(StepObject(step, !line.is_brief));
    return Json{{"page", TextOrNull(line.page)},
                {"line", line.line > 0 ? Json(line.line) : Json(nullptr)},
                {"text", ToUtf8(line.text)},
                {"sources", std::move(sources)},
                {"reason", TextOrNull(line.reason)},
                {"steps", std::move(steps)}};
}

Json FindingObject(const ReportedFinding& reported)
{
    const Finding& finding = reported.finding;
    return Json{
        {"severity", std::string(SeverityName(finding.severity))},
        {"name", std::string(finding.name)},
        {"text", ToUtf8(finding.text)},
        {"file", TextOrNull(finding.where.file)},
        {"native", reported.native.empty() ? Json(nullptr) : Json(OnlyUtf8(reported.native))},
        {"line", finding.where.line > 0 ? Json(finding.where.line) : Json(nullptr)},
        {"page", TextOrNull(finding.where.page)},
        {"suggestion", TextOrNull(finding.suggestion)}};
}

Json LinkObject(const ReportedLink& reported)
{
    const KeptPlace& where = reported.link.where;
    return Json{{"address", ToUtf8(reported.link.address)},
                {"file", TextOrNull(where.file)},
                {"native", reported.native.empty() ? Json(nullptr) : Json(reported.native)},
                {"line", where.line > 0 ? Json(where.line) : Json(nullptr)},
                {"page", TextOrNull(where.page)}};
}

Json AdoptedPages(const Adoption& adoption)
{
    Json pages = Json::array();
    for (const AdoptedPage& page : adoption.pages) {
        const bool differs = page.comparison.likeness == Likeness::different;
        pages.push_back({{"page", ToUtf8(page.name)},
                         {"section", ToUtf8(page.section)},
                         {"way", std::string(page.way)},
                         {"result", LikenessWords(page.comparison)},
                         {"same", !differs},
                         {"line", differs ? Json(page.comparison.line) : Json(nullptr)},
                         {"was", differs ? Json(ToUtf8(page.comparison.was)) : Json(nullptr)},
                         {"is", differs ? Json(ToUtf8(page.comparison.is)) : Json(nullptr)},
                         {"why", TextOrNull(page.why)}});
    }
    return pages;
}

Json AdoptionObject(const Adoption& adoption)
{
    Json left_out = Json::array();
    for (const LeftOut& each : adoption.left_out)
        left_out.push_back({{"name", ToUtf8(each.name)}, {"why", ToUtf8(each.why)}});
    return Json{{"folder", ToUtf8(adoption.folder)},
                {"target", ToUtf8(adoption.target)},
                {"order", std::string(OrderWords(adoption.ordered_by))},
                {"sections", Texts(adoption.sections)},
                {"pages", AdoptedPages(adoption)},
                {"left_out", std::move(left_out)}};
}

/// A report as it may be shown on a terminal: the library writes these as they are.
std::string WithoutOrders(const std::string& json)
{
    std::string shown;
    shown.reserve(json.size());
    for (std::size_t at = 0; at < json.size(); ++at) {
        const auto next = static_cast<unsigned char>(at + 1 < json.size() ? json[at + 1] : 0);
        if (json[at] == '\x7F') {
            shown.append("\\u007f");
        } else if (json[at] == '\xC2' && next >= 0x80 && next <= 0x9F) {
            constexpr std::string_view kDigits = "0123456789abcdef";
            shown.append("\\u00").push_back(kDigits[next >> 4U]);
            shown.push_back(kDigits[next & 0xFU]);
            ++at;
        } else {
            shown.push_back(json[at]);
        }
    }
    return shown;
}

bool IsPair(const Json& pair)
{
    return pair.is_array() && pair.size() == 2 && pair[0].is_string() && pair[1].is_string();
}

} // namespace

void PrintJson(std::ostream& out, const RunReport& report, JsonForm form)
{
    Json warnings = Json::array();
    for (const Warning& warning : report.warnings)
        warnings.push_back(WarningObject(warning));
    Json object = {
        {"status", ToUtf8(report.status)},
        {"messages", Texts(report.messages)},
        {"error", report.error ? ErrorObject(*report.error) : Json(nullptr)},
        {"files", Texts(report.files)},
        {"written", WrittenList(report)},
        {"launched", Texts(report.launched)},
        {"warnings", warnings},
    };
    if (report.members)
        object["members"] = MemberList(report);
    if (report.renamed)
        object["renamed"] = Pairs(*report.renamed);
    if (report.stories) {
        Json lines = Json::array();
        for (const ToldLine& line : report.stories->lines)
            lines.push_back(LineObject(line));
        object["lines"] = std::move(lines);
        if (report.stories->left_out > 0)
            object["left_out"] = report.stories->left_out;
    }
    if (report.findings) {
        Json findings = Json::array();
        for (const ReportedFinding& finding : *report.findings)
            findings.push_back(FindingObject(finding));
        object["findings"] = std::move(findings);
        object["switched_off"] = report.switched_off;
    }
    if (report.external) {
        Json external = Json::array();
        for (const ReportedLink& link : *report.external)
            external.push_back(LinkObject(link));
        object["external"] = std::move(external);
    }
    if (report.adoption)
        object["adoption"] = AdoptionObject(*report.adoption);
    if (report.result)
        object["result"] = ToUtf8(*report.result);
    if (report.was_stopped)
        object["stopped"] = true;
    out << WithoutOrders(object.dump(form == JsonForm::line ? -1 : 2)) << '\n';
}

Renames RenamesOfReport(std::string_view json, const std::string& path)
{
    const auto refuse = [&]() -> RunError {
        return {ErrorKind::invalid_argument,
                "this is not a JSON report of fix-names, thumb-names or rename",
                {path}};
    };
    const Json report = Json::parse(json, nullptr, false);
    if (!report.is_object() || !report.contains("renamed") || !report["renamed"].is_array())
        throw refuse();
    Renames renames;
    for (const Json& pair : report["renamed"]) {
        if (!IsPair(pair))
            throw refuse();
        renames.push_back({FromUtf8(pair[0].get_ref<const std::string&>()),
                           FromUtf8(pair[1].get_ref<const std::string&>())});
    }
    return renames;
}

} // namespace kiv
