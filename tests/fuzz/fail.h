#pragma once

#include <string_view>

namespace kiv::fuzz {

/// Ends the process with these words: libFuzzer keeps the input that led here.
[[noreturn]] void Fail(std::string_view what);

/// The same unless `holds`.
inline void Expect(bool holds, std::string_view what)
{
    if (!holds)
        Fail(what);
}

} // namespace kiv::fuzz
