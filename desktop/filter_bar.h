// A field above a list that keeps of it what holds the text typed, and how much that is.
#pragma once

#include <QWidget>

#include <functional>

class QHBoxLayout;
class QLabel;
class QLineEdit;

namespace kiv {

struct ControlWords;

class FilterBar : public QWidget {
    Q_OBJECT

  public:
    FilterBar(const ControlWords& words, QWidget* parent);

    QLineEdit& Field() { return *field_; }
    /// Puts a control at the right end.
    void Add(QWidget* control);
    /// "Pages: 300", or "Pages: 2 of 300". `noun` is "Pages".
    void ShowCount(const QString& noun, int shown, int all);

    /// Called with the text at each change.
    std::function<void(const QString& text)> on_text;
    /// Called when Enter or the down arrow leads to the list.
    std::function<void()> on_leave;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QHBoxLayout* row_;
    QLineEdit* field_;
    QLabel* count_;
};

} // namespace kiv
