// "Choose directory": lists of drives, folders and files, each showing what is chosen in the one
// before it.
#pragma once

#include "desktop/side_window.h"
#include "platform/run_error.h"

#include <optional>
#include <string>

class QComboBox;
class QLabel;
class QListWidget;
class QTreeWidget;

namespace kiv {

class DirectoryWindow : public SideWindow {
    Q_OBJECT

  public:
    DirectoryWindow(CommandDesk& desk, QWidget* parent);

  protected:
    /// The working directory.
    void Fill() override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    /// Shows a folder, or tells why not and shows anew the one that is shown.
    void ShowFolder(const std::string& folder);
    /// The error when the folder cannot be listed; then everything stays as it is.
    std::optional<RunError> TryToShow(const std::string& folder);
    void PressChoose();

    std::string folder_; // the one shown, an absolute path
    QComboBox* drives_ = nullptr;
    QTreeWidget* folders_ = nullptr;
    QListWidget* files_ = nullptr;
    QLabel* shown_ = nullptr;
};

} // namespace kiv
