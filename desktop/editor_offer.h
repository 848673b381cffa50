// The offer of an editor where the usual one cannot be.
#pragma once

#include "platform/files.h"

#include <optional>
#include <string>

class QWidget;

namespace kiv {

/// When no editor is set and the usual one is missing: asks which of the machine's editors to use,
/// or another command. Nothing when an editor is set or the user wants none. On Windows nothing is
/// asked: there the usual editor can be installed.
std::optional<std::string> AskForEditor(QWidget* parent, Files& files);

} // namespace kiv
