// The choice of an editor.
#pragma once

#include <optional>
#include <string>

class QWidget;

namespace kiv {

class Workspace;

/// Asks which of the machine's editors to use, or another command. The one that is set stands
/// there already. Nothing when the user wants none of them.
std::optional<std::string> AskForEditor(QWidget* parent, Workspace& workspace);

} // namespace kiv
