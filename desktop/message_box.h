// Message boxes: title "kiv", one button "OK", text that can be selected and copied.
#pragma once

#include "platform/run_error.h"

#include <string_view>

class QWidget;

namespace kiv {

/// Shows a text and waits for the user. The box stands over the active window; when none is active,
/// over `parent`.
void ShowBox(QWidget* parent, std::string_view text);

/// The text of a fatal error and, each in a line of its own, its place and what can be done.
std::string ErrorText(const RunError& error);

} // namespace kiv
