// Keys and clicks while a command runs.
#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace kiv {

/// As long as it is on, keys and clicks go nowhere but to one button, and Escape does what that
/// button does. Message boxes get theirs.
class WorkGuard : public QObject {
    Q_OBJECT

  public:
    WorkGuard(QWidget* button, std::function<void()> on_escape, QObject* parent);
    void SetOn(bool on);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* button_;
    std::function<void()> on_escape_;
};

} // namespace kiv
