// How long a frame of the list of pages takes: a thousand pages in a group of a hundred folders,
// while one types into the filter and while one scrolls. A frame is what lies between a key and the
// painted window.
#include "desktop/main_window.h"
#include "platform/drives.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <QSettings>
#include <QTemporaryDir>
#include <QTreeView>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

namespace {

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;

constexpr int kFolders = 100;
constexpr int kPagesOfAFolder = 10;

/// Writes the group below a folder that is there.
void WriteGroup(const fs::path& root)
{
    std::ofstream group(root / "_group.txt");
    for (int folder = 0; folder < kFolders; ++folder) {
        const std::string name = "section" + std::to_string(folder);
        group << name << "\r\n";
        fs::create_directory(root / name);
        std::ofstream(root / name / "_template.txt") << "<!--BODY HERE-->\r\n";
        std::ofstream list(root / name / "_html.txt");
        for (int page = 0; page < kPagesOfAFolder; ++page)
            list << "@FILE = page" << page << "\r\n@TITLE = What page " << page << " of section "
                 << folder << " tells\r\ntext\r\n";
    }
}

/// The window on that group.
class Desk {
  public:
    Desk()
    {
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder_.path());
        fs::create_directory(root_ / "site");
        fs::create_directory(root_ / "utils");
        std::ofstream(root_ / "utils" / "kiv_editpad.txt") << "pad\r\n";
        WriteGroup(root_ / "site");
        files_ = kiv::MakeDriveFiles({{'C', root_.string()}});
        pictures_ = std::make_unique<kiv::HeaderPictureLoader>(*files_);
        window_ = std::make_unique<kiv::MainWindow>(
            kiv::Surroundings{*files_, clock_, programs_, *pictures_});
        window_->show();
        window_->Start("C:\\site");
    }
    QTreeView& List() { return *window_->findChild<QTreeView*>(u"Pages"_s); }
    QLineEdit& Filter() { return *window_->findChild<QLineEdit*>(u"FilterPages"_s); }
    void Paint()
    {
        QCoreApplication::processEvents();
        window_->repaint();
    }

  private:
    QTemporaryDir folder_;
    fs::path root_ = folder_.path().toStdString();
    std::unique_ptr<kiv::Drives> files_;
    kiv::SystemClock clock_;
    kiv::ProgramList programs_;
    std::unique_ptr<kiv::HeaderPictureLoader> pictures_;
    std::unique_ptr<kiv::MainWindow> window_;
};

/// The frame that took most of a processor, as a figure of its own: a mean hides the one that one
/// sees stumble. Other programs count for nothing.
class WorstFrame {
  public:
    explicit WorstFrame(benchmark::State& state) : state_(state) {}
    WorstFrame(const WorstFrame&) = delete;
    WorstFrame& operator=(const WorstFrame&) = delete;
    ~WorstFrame() { state_.counters["worst_cpu_ms"] = worst_; }

    template <typename Frame>
    void Take(const Frame& frame)
    {
        constexpr double kMilliseconds = 1000;
        const std::clock_t begin = std::clock();
        frame();
        const auto ticks = static_cast<double>(std::clock() - begin);
        worst_ = std::max(worst_, kMilliseconds * ticks / CLOCKS_PER_SEC);
    }

  private:
    benchmark::State& state_;
    double worst_ = 0;
};

void Filter(benchmark::State& state)
{
    Desk desk;
    desk.Paint(); // the first one is no key's
    WorstFrame worst(state);
    const QString typed = u"page 7 of section 42"_s;
    qsizetype length = 0;
    while (state.KeepRunning()) {
        length = length % typed.size() + 1;
        worst.Take([&] {
            desk.Filter().setText(typed.first(length));
            desk.Paint();
        });
    }
}

void Scroll(benchmark::State& state)
{
    Desk desk;
    desk.Paint();
    WorstFrame worst(state);
    QScrollBar& bar = *desk.List().verticalScrollBar();
    while (state.KeepRunning()) {
        worst.Take([&] {
            bar.setValue(bar.value() >= bar.maximum() ? 0 : bar.value() + bar.pageStep());
            desk.Paint();
        });
    }
}

void ReadAgain(benchmark::State& state)
{
    Desk desk;
    auto* const window = qobject_cast<QWidget*>(desk.List().window());
    auto* const action = window->findChild<QAction*>(u"mnu_readagain"_s);
    while (state.KeepRunning()) {
        action->trigger();
        desk.Paint();
    }
}

BENCHMARK(Filter)->Unit(benchmark::kMillisecond);
BENCHMARK(Scroll)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadAgain)->Unit(benchmark::kMillisecond);

} // namespace

int main(int count, char** arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
