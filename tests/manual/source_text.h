// The program's sources as text: the words and messages that stand in them.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// The code of a source file without its comments.
std::string CodeOf(const std::filesystem::path& file);

/// The codes of all .cpp and .h files of the project's folders, each by itself.
std::vector<std::string> CodesOf(const std::vector<std::string>& folders);

/// The string literals of a code, escapes decoded; literals that stand side by side are one.
std::vector<std::string> Literals(std::string_view code);

/// The literals behind every `opening`, which holds one open bracket, up to where that is closed.
std::vector<std::string> LiteralsBehind(std::string_view code, std::string_view opening);

} // namespace kiv::test
