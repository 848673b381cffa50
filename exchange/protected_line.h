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

/// A line of a list that is longer is nothing that anybody edits: it cannot be said.
inline constexpr std::size_t kLongestSaidLine = 20000;

/// The characters that names of at-variables begin with, and "<style>", which is replaced as they
/// are.
inline constexpr std::string_view kAtVariableStarts = "@<";

/// How to write a line of a page's text so that a build gives it back; nothing when there is no way
/// and the line must be included as it is.
std::optional<std::string> ProtectedLine(std::string_view line);

/// The same for a part of a line that does not begin it.
std::optional<std::string> ProtectedPart(std::string_view part);

/// Whether a build acts on the beginning of such a line when its variables are in place already, so
/// that nothing in front of it helps.
bool CannotBegin(std::string_view line);

/// The text of a line with what it must begin with when a build would act on its beginning.
std::string ProtectedStart(std::string_view line);

} // namespace kiv
