#include "cli/no_memory.h"
#include "cli/run_cli.h"
#include "platform/console.h"
#include "platform/process.h"

#include <iostream>

int main(int count, char** arguments)
{
    kiv::PrepareProcess();
    kiv::EndWellWithoutMemory(count, arguments);
    // With buffers of their own the streams also tell when reading fails.
    std::ios::sync_with_stdio(false);
    const auto console = kiv::OpenConsole();
    const kiv::CliSurroundings around{.in = std::cin,
                                      .out = std::cout,
                                      .err = std::cerr,
                                      .err_is_terminal = console->HasLine(),
                                      .variable = kiv::ProcessVariable,
                                      .out_is_terminal = console->OutIsTerminal(),
                                      .out_is_read = [&] { return console->OutIsRead(); }};
    return kiv::RunCli(kiv::ProgramArguments(count, arguments), around);
}
