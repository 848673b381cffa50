#include "desktop/status_area.h"

#include "desktop/qt_text.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace kiv {

namespace {

constexpr std::string_view kFirstStatus = "Change directory or \"do it\"";
constexpr qint64 kRepaintEvery = 40; // milliseconds
constexpr int kBarHeight = 5;

QLabel* MakeLabel(const QString& name, QWidget* parent)
{
    auto* const label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

} // namespace

StatusArea::StatusArea(QWidget* parent)
    : QWidget(parent), status_label_(MakeLabel(QStringLiteral("Label2"), this)),
      pass_label_(MakeLabel(QStringLiteral("PassStatus"), this)),
      new_year_label_(MakeLabel(QStringLiteral("Label4"), this)), bar_(new QProgressBar(this)),
      status_(kFirstStatus)
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
    QSizePolicy policy = bar_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    bar_->setSizePolicy(policy);
    bar_->hide();

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const row = new QHBoxLayout;
    row->addWidget(status_label_, 1);
    row->addWidget(pass_label_);
    row->addWidget(new_year_label_);
    column->addLayout(row);
    column->addWidget(bar_);
    ShowPending();
}

void StatusArea::Begin()
{
    is_running_ = true;
    done_ = 0;
    all_ = 0;
    since_repaint_.start();
}

void StatusArea::End()
{
    is_running_ = false;
    all_ = 0;
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
    Repaint();
}

void StatusArea::ShowPending()
{
    const QString status = ToQt(status_);
    status_label_->setText(status);
    status_label_->setToolTip(ToTip(status_));
    pass_label_->setText(ToQt(pass_));
    bar_->setVisible(all_ > 0);
    if (all_ > 0) {
        bar_->setRange(0, all_);
        bar_->setValue(done_);
    }
}

} // namespace kiv
