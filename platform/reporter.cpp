#include "platform/reporter.h"

namespace kiv {

void Reporter::reportmsg(std::string_view text, const Place& where)
{
    Keep(text, where).was_shown = true;
    Show(text);
}

void Reporter::Note(std::string_view text, const Place& where)
{
    Keep(text, where).is_noted = true;
}

void Reporter::Withhold(std::string_view text, const Place& where)
{
    Keep(text, where);
}

Warning& Reporter::Keep(std::string_view text, const Place& where)
{
    return warnings_.emplace_back(Warning{std::string(text), where});
}

} // namespace kiv
