#include "tests/fuzz/desk.h"

#include "cli/arguments.h"
#include "platform/drive_path.h"
#include "platform/site_files.h"
#include "platform/stop_request.h"
#include "tests/fuzz/fail.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sstream>

namespace kiv::fuzz {

namespace {

/// The program's own records get a folder on the drive.
std::optional<std::string> Variable(std::string_view name)
{
    return name == "XDG_STATE_HOME" ? std::optional<std::string>("/c/state") : std::nullopt;
}

const CallRow* RowOf(std::string_view command)
{
    for (const CallRow& row : Calls())
        if (row.name == command)
            return &row;
    Fail("there is no such command");
}

/// What a run may write and take away again.
bool IsTemporary(std::string_view file)
{
    return EqualsNoCase(file, kScratchFile) || EqualsNoCase(file, kUploadBatchFile);
}

} // namespace

void Fail(std::string_view what)
{
    std::fprintf(stderr, "%.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

Desk::Desk()
{
    drives.PutFolder("site");
    drives.PutFolder("utils");
}

Desk::Printed Desk::Run(const std::function<int(const CliSurroundings& around)>& run)
{
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    // Each call is a process of its own, which begins where it was started.
    drives.ChangeDirectory("C:\\");
    // A command that goes on does so for one page.
    StopRequest stop;
    stop.Ask();
    const int code = run({in, out, err, false, Variable, false, &drives, {}, &stop});
    Expect(code >= 0 && code <= 3, "an exit code that there is not");
    return {code, out.str(), err.str()};
}

Desk::Printed Desk::CallBare(const std::vector<std::string>& arguments)
{
    return Run([&](const CliSurroundings& around) { return RunCli(arguments, around); });
}

Report Desk::Call(const Command& command)
{
    kiv::Call call{RowOf(command.name), {}};
    call.given.Set("--json", "");
    call.given.Set("--now", "2004-03-05T14:07:09");
    for (const auto& [name, value] : command.given)
        call.given.Set(name, value.substr(0, value.find('\0'))); // where an argument ends
    const Printed printed =
        Run([&](const CliSurroundings& around) { return RunCall(call, around); });
    Expect(printed.err.empty(), "something was printed beside the report");
    Report report = ReadReport(printed.out, printed.code);
    for (const std::string& file : report.files)
        Expect(IsTemporary(file) || drives.FileExists(file),
               "the report names a file that is not there");
    return report;
}

std::string NativeBelow(std::string_view name)
{
    std::string native = HasDrive(name) ? ToUtf8(FromChar(name, 4)) : "site/" + ToUtf8(name);
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

} // namespace kiv::fuzz
