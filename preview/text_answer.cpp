#include "preview/text_answer.h"

#include <utility>

namespace kiv {

namespace {

std::string_view RefusalText(int status)
{
    switch (status) {
    case 400:
        return "This is no request for a page.\n";
    case 403:
        return "Only pages of this preview may ask for this.\n";
    case 405:
        return "This can only be looked at.\n";
    case 413:
    case 431:
        return "This request is too long.\n";
    case 421:
        return "The preview answers to localhost, 127.0.0.1 and [::1] alone.\n";
    default:
        return "There is no such thing.\n";
    }
}

HttpAnswer PlainAnswer(int status, std::string_view words)
{
    return TextAnswer(status, "text/plain; charset=utf-8", std::string(words));
}

} // namespace

HttpAnswer TextAnswer(int status, std::string_view type, std::string body)
{
    HttpAnswer answer;
    answer.status = status;
    answer.fields = {
        {"Content-Type", std::string(type)},
        {"Cache-Control", "no-store"}, // what is reloaded must be what is there
        {"X-Content-Type-Options", "nosniff"},
        {"X-Frame-Options", "SAMEORIGIN"},
        {"Cross-Origin-Resource-Policy", "same-origin"},
    };
    answer.body = std::move(body);
    return answer;
}

HttpAnswer FaultAnswer(NativeFault fault)
{
    switch (fault) {
    case NativeFault::too_many:
        return PlainAnswer(503, "Too many files are open on this machine just now. Load the page "
                                "again, or end programs that have them open.\n");
    case NativeFault::no_file:
        return PlainAnswer(403, "This is no plain file, so it has no content to be sent.\n");
    case NativeFault::refused:
        return PlainAnswer(403, "You may not read this here: look at its permissions.\n");
    default:
        return RefusalAnswer(404);
    }
}

HttpAnswer RefusalAnswer(int status)
{
    HttpAnswer answer = PlainAnswer(status, RefusalText(status));
    if (status == 405)
        answer.fields.emplace_back("Allow", "GET, HEAD");
    return answer;
}

} // namespace kiv
