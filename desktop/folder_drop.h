// Folders that are dropped on a window.
#pragma once

#include <QObject>

#include <functional>
#include <string>

class QWidget;

namespace kiv {

/// Takes a folder or file that is dropped anywhere on a window, before any field of it does.
class FolderDrop : public QObject {
    Q_OBJECT

  public:
    /// Belongs to the window from then on. `on_drop` gets the native path (UTF-8).
    FolderDrop(QWidget* window, std::function<void(const std::string& native)> on_drop);

  signals:
    void Dropped(const QString& path);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* window_;
    std::function<void(const std::string& native)> on_drop_;
};

} // namespace kiv
