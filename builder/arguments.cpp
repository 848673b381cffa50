#include "builder/arguments.h"

#include "platform/run_error.h"
#include "text/text.h"

namespace kiv {

BracketUse CutBracketUse(std::string_view line, std::size_t position, std::size_t size,
                         BuildMessages& messages)
{
    const std::string_view prefix = line.substr(0, position);
    const std::string_view rest = FromChar(line, position + size + 1);
    const std::size_t close = rest.find(']');
    if (close == npos) {
        messages.ShowBuildMessage("Missing closed bracket: " + std::string(rest));
        return {prefix, rest, {}, false};
    }
    return {prefix, rest.substr(0, close), rest.substr(close + 1), true};
}

std::size_t ReplaceUse(std::string& line, const BracketUse& use, std::string_view text)
{
    const std::size_t at = use.prefix.size();
    const std::size_t size = line.size() - at - use.after.size();
    if (line.compare(at, size, text) == 0)
        return npos;
    line.replace(at, size, text);
    return at;
}

Fields::Fields(std::string_view arguments, std::string_view owner)
    : fields_(Split(arguments, '|')), owner_(owner)
{
}

std::string_view Fields::operator[](std::size_t n) const
{
    if (n < 1 || n > fields_.size())
        throw RunError(ErrorKind::subscript,
                       "field " + std::to_string(n) + " of " + owner_ + " is missing");
    return fields_[n - 1];
}

void Fields::FillEmpty(std::string_view value)
{
    for (std::string_view& field : fields_)
        if (field.empty())
            field = value;
}

} // namespace kiv
