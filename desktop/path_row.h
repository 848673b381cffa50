// The head of the main window: the working directory, which is typed there as well, and its native
// path where that differs.
#pragma once

#include <QWidget>

#include <functional>
#include <string>

class QLabel;

namespace kiv {

class PathField;
class Workspace;

class PathRow : public QWidget {
    Q_OBJECT

  public:
    PathRow(Workspace& workspace, QWidget* parent);

    /// Shows the directory that the workspace is in now.
    void Refresh();

    /// Called with what was typed (UTF-8) when Enter is pressed.
    std::function<void(const std::string& typed)> on_go;

  private:
    Workspace& workspace_;
    PathField* path_;
    QLabel* native_;
};

} // namespace kiv
