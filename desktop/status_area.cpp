#include "desktop/status_area.h"

#include "desktop/controls.h"
#include "desktop/qt_text.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>

namespace kiv {

namespace {

constexpr std::string_view kFirstStatus = "Change directory or \"do it\"";
constexpr qint64 kRepaintEvery = 40; // milliseconds
constexpr int kBarHeight = 5;

constexpr ControlWords kStop = {"StopWork", "Stop",
                                "End the command as soon as the file in work is finished (Escape)"};

/// What comes and goes moves nothing else.
void RetainSize(QWidget& widget)
{
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
    widget.hide();
}

QLabel* MakeStatusLabel(const QString& name, QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

StatusArea::StatusArea(QWidget* parent)
    : QWidget(parent), status_label_(MakeStatusLabel(QStringLiteral("Label2"), this)),
      pass_label_(MakeStatusLabel(QStringLiteral("PassStatus"), this)),
      new_year_label_(MakeStatusLabel(QStringLiteral("Label4"), this)),
      bar_(new QProgressBar(this)), stop_(new QToolButton(this)), status_(kFirstStatus)
{
    // A long text is cut, not the window widened.
    status_label_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    status_label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    QFont bold = new_year_label_->font();
    bold.setBold(true);
    new_year_label_->setFont(bold);
    new_year_label_->setToolTip(
        QStringLiteral("The New Year switch is on: builds include the lines between @@EOY marks"));

    bar_->setObjectName(QStringLiteral("ProgressBar"));
    bar_->setAccessibleName(QStringLiteral("Progress of the command"));
    bar_->setTextVisible(false);
    bar_->setFixedHeight(kBarHeight);

    Describe(*stop_, kStop);
    stop_->setText(ToQt(kStop.caption));
    stop_->setFocusPolicy(Qt::StrongFocus);
    RetainSize(*bar_);
    RetainSize(*stop_);
    PlaceAll();
    ShowPending();
}

void StatusArea::PlaceAll()
{
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(status_label_, 0, 0);
    grid->addWidget(pass_label_, 0, 1);
    grid->addWidget(new_year_label_, 0, 2);
    grid->addWidget(bar_, 1, 0, 1, 3);
    grid->addWidget(stop_, 0, 3, 2, 1);
    grid->setColumnStretch(0, 1);
}

void StatusArea::Begin()
{
    is_running_ = true;
    waits_ = false;
    has_told_ = false;
    done_ = 0;
    all_ = 0;
    since_repaint_.start();
}

void StatusArea::End()
{
    is_running_ = false;
    ShowPending();
}

void StatusArea::Repaint()
{
    ShowPending();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    since_repaint_.restart();
}

void StatusArea::ShowNewYear(std::string_view text)
{
    new_year_label_->setText(ToQt(text));
}

void StatusArea::Status(std::string_view text)
{
    status_ = text;
    has_told_ = true;
    Changed();
}

void StatusArea::PassStatus(std::string_view text)
{
    pass_ = text;
    ShowPending();
    Changed();
}

void StatusArea::Step(int done, int all)
{
    done_ = done;
    all_ = all;
    Changed();
}

void StatusArea::Wait(int done, int all)
{
    waits_ = true;
    Step(done, all);
}

void StatusArea::Changed()
{
    if (!is_running_) {
        ShowPending();
        return;
    }
    if (since_repaint_.elapsed() < kRepaintEvery)
        return;
    if (on_work)
        on_work();
    ShowPending();
    QCoreApplication::processEvents();
    since_repaint_.restart();
}

void StatusArea::Note(std::string_view text)
{
    status_ = text;
    ShowPending();
}

void StatusArea::ShowPending()
{
    const QString status = ToQt(status_);
    status_label_->setText(status);
    status_label_->setToolTip(ToTip(status_));
    pass_label_->setText(ToQt(pass_));
    const bool can_stop = is_running_ && (all_ > 0 || waits_);
    bar_->setVisible(can_stop);
    stop_->setVisible(can_stop);
    if (can_stop) {
        bar_->setRange(0, all_);
        bar_->setValue(done_);
    }
}

} // namespace kiv
