#include "platform/file_errors.h"

#include <system_error>

namespace kiv {

std::string SystemWords(int error)
{
    return std::system_category().message(error);
}

} // namespace kiv
