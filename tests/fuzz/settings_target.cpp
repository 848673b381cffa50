// Settings and lists of the user: a window starts with them, a section is built, a news item is
// written.
#include "platform/picture_loader.h"
#include "platform/programs.h"
#include "shell/workspace.h"
#include "tests/fuzz/fail.h"
#include "tests/fuzz/scene.h"
#include "tests/fuzz/targets.h"
#include "tests/support/recorders.h"

namespace {

using namespace kiv::fuzz;

/// The start of a window, which takes its folder from the settings.
class Window {
  public:
    explicit Window(Desk& desk)
        : programs_(nullptr),
          pictures_(desk.drives), machine_{desk.drives, desk.drives, clock_,   clipboard_,
                                           programs_,   reporter_,   pictures_},
          workspace(machine_)
    {
        desk.drives.ChangeDirectory("C:\\");
        workspace.StartWindow(std::nullopt);
    }

  private:
    kiv::FrozenClock clock_{{2004, 3, 5, 14, 7, 9}};
    kiv::HeldClipboard clipboard_;
    kiv::ProgramList programs_;
    kiv::test::RecordingReporter reporter_;
    kiv::HeaderPictureLoader pictures_;
    kiv::Machine machine_;

  public:
    kiv::Workspace workspace;
};

/// A folder that is stored as the default is the one in which the next window opens.
void StartTwice(Desk& desk)
{
    Window window(desk);
    const std::string folder = window.workspace.WorkDir;
    if (window.workspace.Run([&] { window.workspace.StoreDirectory(); }))
        return;
    Expect(Window(desk).workspace.WorkDir == folder, "the next window opens elsewhere");
}

} // namespace

void kiv::fuzz::FuzzSettings(const std::uint8_t* data, std::size_t size)
{
    Desk desk;
    desk.drives.Put("site/_html.txt", "@FILE = index\n@TITLE = Start\n<a href=\"@KEL\">x</a>\n");
    desk.drives.Put("site/_template.txt", "<!--BODY HERE-->\n");
    desk.drives.Put("temp/_html.txt", ";inserthere1\r\n;inserthere2\r\n");
    desk.drives.Put("article.txt", "An article.\n");
    LayOut(desk, ReadScene(data, size));
    StartTwice(desk);
    desk.Call({"build", {{"DIR", "C:\\site"}}});
    desk.Call({"news", {{"--site", "1"}, {"--name", "pr030504"}, {"--text", "C:\\article.txt"}}});
}
