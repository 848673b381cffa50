#include "cli/build_teller.h"
#include "cli/commands.h"
#include "cli/shown_path.h"
#include "cli/shown_text.h"
#include "shell/workspace.h"

#include <ostream>

namespace kiv {

void RunWatch(CallDesk& desk, const GivenValues& given)
{
    Workspace& workspace = desk.workspace;
    const CallOutput& output = desk.output;
    const std::string& directory = output.drives.CurrentDirectory();
    if (!output.is_json)
        output.err << "kiv: watching " << ShownUtf8Line(NativeOrDrive(output.drives, directory))
                   << (output.terminal != nullptr ? "; Ctrl+C ends it\n" : "\n") << std::flush;
    BuildTeller teller(desk, given);
    WatchLoop loop(output.drives, workspace.machine(),
                   {directory, workspace.RecordsFolder, workspace.RenamesAreReported}, teller,
                   output.stop);
    desk.report.was_stopped = !loop.Run();
    output.drives.Refresh(); // what the last build wrote has been told
}

} // namespace kiv
