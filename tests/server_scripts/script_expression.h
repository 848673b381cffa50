// Expressions of server-side script: whether a run of tokens is one.
#pragma once

#include "tests/server_scripts/script_tokens.h"

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::test {

/// What is wrong with a line, thrown at the token where it shows.
class ScriptFault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Reads the tokens of one line from the left. Every Take throws ScriptFault when what it wants is
/// not there.
class TokenReader {
  public:
    explicit TokenReader(const std::vector<Token>& tokens) : tokens_(tokens) {}

    bool AtEnd() const { return at_ == tokens_.size(); }

    /// What has been taken is tokens 0 to Position() - 1.
    std::size_t Position() const { return at_; }

    /// Whether the next token is this word or sign; a literal text never is.
    bool IsNext(std::string_view value) const;

    /// Takes the next token if it is this word or sign.
    bool TakeIf(std::string_view value);
    void Take(std::string_view value);

    /// A name of the script's own, no word of the language.
    std::string TakeName();

    /// A name with what follows it: members and arguments, "conn.Fields("a").value".
    std::string TakeDesignator();
    void TakeExpression();
    void TakeExpressions();
    void TakeEnd();

  private:
    bool IsNextOneOf(const std::vector<std::string_view>& values) const;
    void TakeOperand();
    void TakeArguments();
    [[noreturn]] void Complain(const std::string& wanted) const;

    const std::vector<Token>& tokens_;
    std::size_t at_ = 0;
};

} // namespace kiv::test
