#include "blocks/reports.h"

#include <string>

namespace kiv {

std::string_view reportmsgf(Reporter& reporter, std::string_view message)
{
    reporter.reportmsg(message);
    return {};
}

bool bigoops(Reporter& reporter, std::string_view message)
{
    reportmsgf(reporter, std::string("BIG OOPS! ").append(message));
    return true;
}

} // namespace kiv
