// Between this program's Windows-1252 text and the UTF-16 of Windows.
#pragma once

#include <string>
#include <string_view>

namespace kiv {

std::wstring WideText(std::string_view text);
/// Characters that the code page lacks become references ("&#20013;").
std::string FromWide(std::wstring_view wide);

/// A name in exact form and the name itself.
std::wstring WideFromExact(std::string_view exact);
std::string ExactFromWide(std::wstring_view wide);

std::wstring WideFromUtf8(std::string_view utf8);
std::string Utf8FromWide(std::wstring_view wide);

} // namespace kiv
