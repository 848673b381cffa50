// "Choose directory": a path to type, and lists of drives, folders and files, each showing what is
// chosen in the one before it. What is selected is what the buttons take.
#pragma once

#include "desktop/side_window.h"
#include "platform/run_error.h"

#include <optional>
#include <string>

class QComboBox;
class QFormLayout;
class QLabel;
class QLayout;
class QListWidget;
class QTreeWidget;

namespace kiv {

class PathField;

class DirectoryWindow : public SideWindow {
    Q_OBJECT

  public:
    DirectoryWindow(CommandDesk& desk, QWidget* parent);

  protected:
    /// The working directory.
    void Fill() override;

  private:
    QLayout* MakeLists();
    QLayout* MakeButtons();
    /// Goes into a folder, or tells why not and shows anew the one that is shown.
    void ShowFolder(const std::string& folder);
    /// The error when the folder cannot be listed; then everything stays as it is.
    std::optional<RunError> TryToShow(const std::string& folder);
    /// The folder (an absolute path) is the one that the buttons take.
    void Select(const std::string& folder);
    void GoToPath(const std::string& typed);
    void PressChoose();
    void PressLowerCase();

    std::string folder_;   // that the list of folders shows, an absolute path
    std::string selected_; // in that list, an absolute path
    PathField* path_ = nullptr;
    QComboBox* drives_ = nullptr;
    QTreeWidget* folders_ = nullptr;
    QListWidget* files_ = nullptr;
    QFormLayout* head_ = nullptr;
    QLabel* native_ = nullptr;
};

} // namespace kiv
