#include "platform/reporter.h"

namespace kiv {

void Reporter::reportmsg(std::string_view text, const Place& where)
{
    Keep(text, where, true);
    Show(text);
}

void Reporter::Withhold(std::string_view text, const Place& where)
{
    Keep(text, where, false);
}

void Reporter::Keep(std::string_view text, const Place& where, bool is_shown)
{
    warnings_.push_back({std::string(text), where, is_shown});
    Take(warnings_.back());
}

} // namespace kiv
