#include "builder/arguments.h"

#include "platform/run_error.h"
#include "text/text.h"

namespace kiv {

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
                       "field " + std::to_string(n) + " of " + std::string(owner_) + " is missing");
    return fields_[n - 1];
}

void Fields::FillEmpty(std::string_view value)
{
    for (std::string_view& field : fields_)
        if (field.empty())
            field = value;
}

} // namespace kiv
