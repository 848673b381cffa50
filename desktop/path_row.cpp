#include "desktop/path_row.h"

#include "desktop/controls.h"
#include "desktop/path_field.h"
#include "desktop/qt_text.h"
#include "shell/typed_folder.h"
#include "shell/workspace.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QShortcut>

namespace kiv {

namespace {

constexpr int kPathColumns = 42; // of a shortened path, and a little
constexpr ControlWords kWorkingPath = {
    "Text2", "Current directory:", "The current directory; type another one, Enter goes there"};

/// A path that does not fit shows its end, by which it is known.
class PathLabel : public QLabel {
  public:
    using QLabel::QLabel;

  protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        QPainter painter(this);
        painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(text(), Qt::ElideLeft, width()));
    }
};

QLabel* MakeNativeLabel(QWidget* parent)
{
    auto* const label = new PathLabel(parent);
    label->setObjectName(QStringLiteral("NativePath"));
    label->setAccessibleDescription(QStringLiteral("The same path as other programs have it"));
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

} // namespace

PathRow::PathRow(Workspace& workspace, QWidget* parent)
    : QWidget(parent), workspace_(workspace), path_(new PathField(kWorkingPath, this)),
      native_(MakeNativeLabel(this))
{
    auto* const label = new QLabel(ToQt(kWorkingPath.caption), this);
    label->setObjectName(QStringLiteral("Label1"));
    path_->setAccessibleName(label->text());
    path_->setMinimumWidth(fontMetrics().averageCharWidth() * kPathColumns);
    path_->complete = [this](const std::string& typed) {
        return CompletionsOf(workspace_.machine(), typed);
    };
    path_->on_go = [this](const std::string& typed) { on_go(typed); };
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(label);
    row->addWidget(path_, 1);
    row->addWidget(native_, 1);
    setFocusProxy(path_);
    new QShortcut(Qt::CTRL | Qt::Key_L, this, [this] { path_->setFocus(Qt::ShortcutFocusReason); });
}

void PathRow::Refresh()
{
    const std::string& path = workspace_.WorkDir;
    const Machine& machine = workspace_.machine();
    path_->ShowPath(workspace_.ShownDirectory(), path, NativeToCopy(machine, path));
    path_->setToolTip(ToTip(path));
    path_->setAccessibleDescription(ToQt(path));
    const QString native = ToQtNative(NativeBeside(machine, path));
    native_->setText(native);
    native_->setToolTip(native);
    native_->setVisible(!native.isEmpty());
}

} // namespace kiv
