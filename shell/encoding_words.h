// What becomes of a source that gets another encoding, in words.
#pragma once

#include <string>

namespace kiv {

struct EncodingChange;

/// ": 2 references, declares it" or "": to stand behind the name of the source.
std::string EncodingChangeWords(const EncodingChange& change);

} // namespace kiv
