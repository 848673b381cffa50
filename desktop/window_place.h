// The places of windows from one run to the next.
#pragma once

#include <QObject>

class QWidget;

namespace kiv {

/// Puts a window where it was when it was last closed, and notes its place when it is closed. The
/// settings know it by its object name.
class WindowPlace : public QObject {
    Q_OBJECT

  public:
    /// Belongs to the window from then on.
    explicit WindowPlace(QWidget* window);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* window_;
};

} // namespace kiv
