// Message boxes: one button "OK", text that can be selected and copied. The title of a message is
// "kiv", that of an error says that it is one.
#pragma once

#include "platform/run_error.h"

#include <string_view>

class QWidget;

namespace kiv {

/// Shows a text and waits for the user. The box stands over the active window; when none is active,
/// over `parent`.
void ShowBox(QWidget* parent, std::string_view text);

/// The same for a fatal error, with an icon and a title that says so. Its place and what can be
/// done stand below.
void ShowErrorBox(QWidget* parent, const RunError& error);

/// The text of a fatal error and, each in a line of its own, its place and what can be done.
std::string ErrorText(const RunError& error);

} // namespace kiv
