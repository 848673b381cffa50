#include "platform/run_error.h"

namespace kiv {

std::string_view KindName(ErrorKind kind)
{
    switch (kind) {
    case ErrorKind::subscript:
        return "subscript";
    case ErrorKind::file:
        return "file";
    case ErrorKind::end_of_file:
        return "end-of-file";
    case ErrorKind::invalid_argument:
        return "invalid-argument";
    case ErrorKind::overflow:
        return "overflow";
    case ErrorKind::division:
        return "division";
    case ErrorKind::picture:
        return "picture";
    case ErrorKind::memory:
        return "memory";
    }
    return "";
}

} // namespace kiv
