#include "platform/process.h"

namespace kiv {

void PrepareProcess()
{
    // Windows ends no process for a stream or a file, and gives no file a stream's number.
}

} // namespace kiv
