#include "platform/reporter.h"

namespace kiv {

void Reporter::reportmsg(std::string_view text, const Place& where, std::string_view hint)
{
    Keep(text, where, hint).was_shown = true;
    Show(text);
}

void Reporter::Note(std::string_view text, const Place& where, std::string_view hint)
{
    Keep(text, where, hint).is_noted = true;
}

void Reporter::Withhold(std::string_view text, const Place& where)
{
    Keep(text, where);
}

Warning& Reporter::Keep(std::string_view text, const Place& where, std::string_view hint)
{
    return warnings_.emplace_back(Warning{std::string(text), where, std::string(hint)});
}

} // namespace kiv
