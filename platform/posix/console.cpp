#include "platform/console.h"

#include <cstdlib>
#include <poll.h>
#include <unistd.h>

namespace kiv {

namespace {

/// A terminal shows UTF-8 as it is.
class PosixConsole : public Console {
  public:
    bool HasLine() const override { return isatty(STDERR_FILENO) != 0; }
    bool OutIsTerminal() const override { return isatty(STDOUT_FILENO) != 0; }
    bool OutIsRead() const override
    {
        // These two are told without being asked for.
        pollfd out{.fd = STDOUT_FILENO, .events = 0, .revents = 0};
        return ::poll(&out, 1, 0) <= 0 || (out.revents & (POLLERR | POLLHUP)) == 0;
    }
};

} // namespace

std::unique_ptr<Console> OpenConsole()
{
    return std::make_unique<PosixConsole>();
}

std::vector<std::string> ProgramArguments(int count, char** arguments)
{
    return {arguments + 1, arguments + count};
}

std::optional<std::string> ProcessVariable(const char* name)
{
    const char* const value = std::getenv(name); // NOLINT(concurrency-mt-unsafe)
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace kiv
