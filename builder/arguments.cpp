#include "builder/arguments.h"

#include "platform/run_error.h"
#include "text/text.h"

namespace kiv {

namespace {

/// How constructs with several fields are written.
constexpr std::string_view kForms[] = {
    "!!pop[name|page|width|height]",
    "!!showhide[id|words]",
    "!!swap[id|page|picture|other picture|width|height|alt]",
    "!!flv[server|file|width|height]",
    "!!flash[file|width|height]",
    "@DBINSERT:table|field|field",
    "@DBUPDATE:table|key|field|field",
    "@KILLRECORD:table|field",
    "@SENDEMAIL:subject|from|to|message",
    "@SSENDEMAIL:subject|from|to|message",
};

/// How the construct is written whose name is `owner`, such as "!!pop" or "?!1".
std::string FormOf(std::string_view owner)
{
    for (const std::string_view form : kForms)
        if (StartsWithNoCase(form, owner))
            return std::string(form);
    if (owner.starts_with("?!"))
        return std::string(owner) + "[group|page]";
    if (owner.starts_with("??"))
        return std::string(owner) + "[page|text]";
    return std::string(owner) + "[field|field]";
}

} // namespace

BracketUse CutBracketUse(std::string_view before, std::string_view rest, std::string_view name,
                         BuildMessages& messages)
{
    const std::size_t head = name.size() + 1; // with the "["
    const std::string_view arguments = FromChar(rest, head + 1);
    const std::size_t close = arguments.find(']');
    if (close == npos) {
        messages.ShowBuildMessage(std::string(kNoBracketWarning).append(arguments));
        return {before, rest, rest.size(), name, arguments, false};
    }
    return {before, rest, head + close + 1, name, arguments.substr(0, close), true};
}

Fields::Fields(std::string_view arguments, std::string_view owner)
    : fields_(Split(arguments, '|')), owner_(owner)
{
}

std::string_view Fields::operator[](std::size_t n) const
{
    if (n < 1 || n > fields_.size())
        throw RunError(ErrorKind::subscript,
                       "field " + std::to_string(n) + " of " + std::string(owner_) + " is missing",
                       {}, "Write it as \"" + FormOf(owner_) + "\".");
    return fields_[n - 1];
}

void Fields::FillEmpty(std::string_view value)
{
    for (std::string_view& field : fields_)
        if (field.empty())
            field = value;
}

} // namespace kiv
