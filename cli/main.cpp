#include "cli/no_memory.h"
#include "cli/run_cli.h"
#include "platform/console.h"
#include "platform/process.h"

#include <cstdlib>
#include <iostream>
#include <memory>

namespace {

int Run(int count, char** arguments, std::unique_ptr<kiv::Drives>& drives)
{
    // With buffers of their own the streams also tell when reading fails.
    std::ios::sync_with_stdio(false);
    const auto console = kiv::OpenConsole();
    const kiv::CliSurroundings around{.in = std::cin,
                                      .out = std::cout,
                                      .err = std::cerr,
                                      .err_is_terminal = console->HasLine(),
                                      .variable = kiv::ProcessVariable,
                                      .out_is_terminal = console->OutIsTerminal(),
                                      .out_is_read = [&] { return console->OutIsRead(); },
                                      .kept_drives = &drives};
    return kiv::RunCli(kiv::ProgramArguments(count, arguments), around);
}

} // namespace

int main(int count, char** arguments)
{
    kiv::PrepareProcess();
    kiv::EndWellWithoutMemory(count, arguments);
    // What the drives know of a thousand files is given back by the process's end, which does not
    // go from one to the next.
    std::unique_ptr<kiv::Drives> drives;
    std::exit(Run(count, arguments, drives));
}
