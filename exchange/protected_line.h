// Lines that stand for themselves: what a build would act on in a line of text, and how the line is
// written so that it comes out as it was.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// A variable with nothing in it: it breaks up what a build would act on, and is gone by the time
/// the line is written.
inline constexpr std::string_view kNothing = "@@8";

/// How to write a line of a page's text so that a build gives it back; nothing when there is no way
/// and the line must be included as it is.
std::optional<std::string> ProtectedLine(std::string_view line);

/// The same for a part of a line that does not begin it.
std::optional<std::string> ProtectedPart(std::string_view part);

/// The text of a line with what it must begin with when a build would act on its beginning.
std::string ProtectedStart(std::string_view line);

} // namespace kiv
