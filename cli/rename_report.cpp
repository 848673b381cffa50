#include "cli/rename_report.h"

#include "platform/run_error.h"
#include "text/windows1252.h"

#include <nlohmann/json.hpp>

namespace kiv {

namespace {

using Json = nlohmann::json;

bool IsPair(const Json& pair)
{
    return pair.is_array() && pair.size() == 2 && pair[0].is_string() && pair[1].is_string();
}

} // namespace

Renames RenamesOfReport(std::string_view json, const std::string& path)
{
    const auto refuse = [&]() -> RunError {
        return {ErrorKind::invalid_argument, "no report of a renamer", path};
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
