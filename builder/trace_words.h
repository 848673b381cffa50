// The words of the trace: what a step did, as a person would say it.
#pragma once

#include "builder/definitions.h"

#include <string>
#include <string_view>

namespace kiv {

struct Build;
struct BracketUse;
class Fields;
class Tracer;

/// Why nothing of a line that is merged reaches its page.
inline constexpr std::string_view kRedirectTold = "a redirect page has no text of its own";

/// A text in quotation marks, cut when it is long.
std::string Quoted(std::string_view text);
/// A value as it goes into the line, cut when it is long; "nothing" for none.
std::string Shortened(std::string_view value);

/// "macro 3, !!3[".
std::string NumberWords(Family family, int slot);
/// "defines macro 3, !!3[".
std::string DefinitionWords(Family family, int slot);
/// "gives the page its title"; `word` is the directive's.
std::string FieldWords(PageField field, std::string_view word);

/// Where a numbered definition stands: "macro 3 of _html.txt:2", or that there is none.
std::string VariableWords(Tracer& tracer, Family family, int digit);
/// `filled with "a", "b"`.
std::string FilledWords(const BracketUse& use);

/// What "=1=" and its kin found: "kept, page 2 of 3 is not the first".
std::string PositionWords(char code, bool keep, int page, int pages);
/// "this is the pass for ASP".
std::string ThisPassWords(const Build& build);
/// What a line's pass says: "kept, this is the pass for ASP".
std::string PassWords(const Build& build, bool keep);

} // namespace kiv
