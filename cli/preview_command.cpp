// The command that shows a site in the browser while it is worked on.
#include "cli/build_teller.h"
#include "cli/commands.h"
#include "cli/shown_path.h"
#include "cli/shown_text.h"
#include "platform/drives.h"
#include "platform/file_errors.h"
#include "platform/run_error.h"
#include "preview/json_text.h"
#include "preview/preview_start.h"
#include "shell/workspace.h"
#include "text/text.h"
#include "text/windows1252.h"

#include <ostream>
#include <string>
#include <vector>

namespace kiv {

namespace {

/// A drive path from what was typed.
std::string FolderOf(CallDesk& desk, const std::string& given)
{
    std::string folder = given.empty() ? "" : desk.output.drives.FromNative(given);
    if (folder.empty())
        Refuse("show", FromUtf8(given), kNoSuchFolder);
    return folder;
}

PreviewWish WishOf(CallDesk& desk, const GivenValues& given)
{
    PreviewWish wish{.directory = desk.output.drives.CurrentDirectory(),
                     .records_folder = desk.workspace.RecordsFolder};
    if (given.Has("--root"))
        wish.root = FolderOf(desk, given.Native("--root"));
    if (given.Has("--port"))
        wish.port = NumericHead(given.Text("--port"));
    return wish;
}

/// Tells of builds as `watch` does, and shows what they have made.
class PreviewTeller : public WatchFace {
  public:
    PreviewTeller(CallDesk& desk, const GivenValues& given)
        : desk_(desk), given_(given), wish_(WishOf(desk, given)), teller_(desk, given),
          loop_(desk.output.drives, desk.workspace.machine(),
                {wish_.directory, wish_.records_folder, desk.workspace.RenamesAreReported}, *this,
                desk.output.stop)
    {
    }

    /// False when it was stopped before the first build was done.
    bool Run() { return loop_.Run(); }

    Reporter& Begin() override
    {
        if (preview_.session)
            preview_.session->BuildBegins();
        reporter_ = &teller_.Begin();
        return *reporter_;
    }

    void Build(Workspace& workspace) override { teller_.Build(workspace); }

    void Built(const BuildRecord& record) override
    {
        if (!record.was_stopped)
            Show(record);
        std::vector<std::string> written;
        for (const WrittenFile& file : record.written)
            written.push_back(file.path);
        if (preview_.session)
            preview_.session->BuildEnds(*reporter_, record.error, written);
        teller_.Built(record);
    }

    void Refused(const RunError& error) override { teller_.Refused(error); }
    void IsBack() override { teller_.IsBack(); }
    void Waits() override { teller_.Waits(); }

  private:
    void Show(const BuildRecord& record)
    {
        const bool is_first = !preview_.session;
        if (!ShowBuilt(preview_, wish_, desk_.workspace.machine(), {record.written, !record.error},
                       [this](std::function<void()> task) { loop_.Post(std::move(task)); }))
            return;
        TellAddress();
        if (is_first && given_.Has("--open"))
            OpenBrowser(preview_.session->Address());
    }

    void TellAddress() const
    {
        const std::string address = preview_.session->Address();
        const CallOutput& output = desk_.output;
        if (output.is_json)
            output.out << "{\"address\": " << JsonText(address)
                       << ", \"root\": " << JsonText(preview_.root) << "}\n";
        else
            output.out << address << '\n';
        output.out.flush();
        TellRoot();
    }

    void TellRoot() const
    {
        const CallOutput& output = desk_.output;
        if (!output.is_json && (preview_.is_above || output.terminal != nullptr))
            output.err << "kiv: showing " << ShownUtf8Line(preview_.root)
                       << (preview_.is_above && !wish_.root
                               ? ", which the site's addresses stay within"
                               : "")
                       << (output.terminal != nullptr ? "; Ctrl+C ends it" : "") << '\n'
                       << std::flush;
    }

    void OpenBrowser(const std::string& address)
    {
        try {
            desk_.workspace.machine().programs.Start(BrowserLaunch(address));
        } catch (const RunError& error) {
            teller_.Refused(error); // the address is there to be opened by hand
        }
    }

    CallDesk& desk_;
    const GivenValues& given_;
    const PreviewWish wish_;
    BuildTeller teller_;
    Reporter* reporter_ = nullptr; // of the build in work
    WatchLoop loop_;
    StartedPreview preview_; // ends first: its thread posts to the loop
};

} // namespace

std::string PortFault(const std::string& port)
{
    constexpr int kLast = 65'535;
    const bool is_number = port.find_first_not_of("0123456789") == npos;
    if (is_number && NumericHead(port) <= kLast)
        return {};
    return "a port is a number from 0 to 65535";
}

void RunPreview(CallDesk& desk, const GivenValues& given)
{
    desk.report.was_stopped = !PreviewTeller(desk, given).Run();
    desk.output.drives.Refresh(); // what the last build wrote has been told
}

} // namespace kiv
